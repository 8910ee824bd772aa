// Runs the built program in build directories, some of which CMake makes on the spot.
#include "xml/document.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace {

QString q(const char* text) {
    return QString::fromUtf8(text);
}

struct Result {
    int status;
    std::string output;
    std::string errors;
};

class ManifestImport : public testing::Test {
protected:
    void write(const char* name, const QByteArray& text) {
        QFile file(directory.filePath(q(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QByteArray read(const char* name) {
        QFile file(directory.filePath(q(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    Result run(const QStringList& words = {}) { return run(q(MANIFEST_IMPORT), words); }
    Result run(const QString& program, const QStringList& words) {
        QProcess process;
        process.setWorkingDirectory(directory.path());
        process.start(program, words);
        EXPECT_TRUE(process.waitForFinished(120000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
    }
    /// Lets CMake write the manifest of a source directory.
    void configure(const QString& source) {
        const Result result = run(q(SOURCE_DIR "/scripts/write-manifest"), {source, directory.path()});
        ASSERT_EQ(result.status, 0) << result.errors;
    }

    QTemporaryDir directory;
};

const char* const workedExample =
    "rule C_COMPILER__app_Debug\n  command = cc\n"
    "rule C_EXECUTABLE_LINKER__app_Debug\n  command = ld\n"
    "build app.dir/main.c.o: C_COMPILER__app_Debug ../main.c || order_app\n"
    "  DEFINES = -DDEBUG -DNAME=\\\"ab\\\"\n"
    "  INCLUDES = -Iinc -isystem \"C$:/sys inc\"\n"
    "  FLAGS = -g -imacros cfg.h\n"
    "  DEP_FILE = o\\m.d\n"
    "build order_app: phony\n"
    "build app.elf: C_EXECUTABLE_LINKER__app_Debug app.dir/main.c.o\n"
    "  LINK_LIBRARIES = -lm\n"
    "  POST_BUILD = :\n"
    "  TARGET_FILE = app.elf\n"
    "build app: phony app.elf\n"
    "build all: phony app\n"
    "default all\n";

TEST_F(ManifestImport, TheWorkedExampleByteForByte) {
    write("build.ninja", workedExample);
    const Result result = run({q("all")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.errors, "");
    EXPECT_EQ(read("build.qxProject").toStdString(),
              R"(<!DOCTYPE Kestrelhaus_Project_File>
<solution Name="build" target="8" version="2">
  <project Name="all">
    <configuration
      Name="Common"
      project_dependencies="app"
      project_directory=""
      project_type="" />
  </project>
  <project Name="app" hidden="Yes">
    <configuration
      Name="Common"
      project_dependencies="app.elf"
      project_directory=""
      project_type="" />
  </project>
  <project Name="app.elf">
    <configuration
      Name="Common"
      build_output_file_name="app.elf"
      link_dependent_projects="No"
      linker_additional_options="-lm"
      linker_map_file="No"
      project_dependencies="order_app"
      project_directory=""
      project_type="Externally Built Executable" />
    <folder Name="C_COMPILER__app_Debug">
      <file file_name="../main.c">
        <configuration
          Name="Common"
          build_dependency_file_name="$(ProjectDir)/o\m.d"
          build_object_file_name="app.dir/main.c.o"
          c_only_additional_options="-DDEBUG;-DNAME=\\&quot;ab\\&quot;;-Iinc;-isystem;&quot;C:/sys inc&quot;;-g;-imacros;cfg.h"
          c_preprocessor_definitions="DEBUG;NAME=\\&quot;ab\\&quot;"
          c_system_include_directories="C:/sys inc"
          c_user_include_directories="inc"
          code_completion_options="-imacros;cfg.h" />
      </file>
    </folder>
  </project>
  <project Name="order_app" hidden="Yes">
    <configuration Name="Common" project_directory="" project_type="" />
  </project>
</solution>
)");
}

TEST_F(ManifestImport, AManifestThatCannotBeReadLeavesTheLastSolution) {
    const QByteArray binary = QByteArray::fromHex("7f454c46000102ff0a0d");
    const QByteArray cases[] = {
        "build a: nosuch\n",     "build a", "rule r\n", "\tx = 1\n", "include nosuch.ninja\n",
        "include build.ninja\n", binary,
    };
    write("build.qxProject", "kept");
    for (const QByteArray& text : cases) {
        write("build.ninja", text);
        const Result result = run();
        EXPECT_EQ(result.status, 1) << text.constData();
        EXPECT_EQ(result.output + result.errors, "") << text.constData();
    }
    QFile::remove(directory.filePath(q("build.ninja")));
    EXPECT_EQ(run().status, 1);
    QDir(directory.path()).mkdir(q("build.ninja"));
    EXPECT_EQ(run().status, 1);
    EXPECT_EQ(read("build.qxProject"), "kept");
}

TEST_F(ManifestImport, TheEngineSpeaksOnStandardError) {
    write("build.ninja", "build a: phony a\n");
    Result result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "ninja: warning: phony target 'a' names itself as an input; ignoring [-w phonycycle=warn]\n");
    EXPECT_NE(read("build.qxProject").indexOf("<project Name=\"a\""), -1) << "without its input it is a root";
    write("build.ninja", "ninja_required_version = 2\n");
    result = run();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              "ninja: fatal: ninja version (1.8.2) incompatible with build file ninja_required_version "
              "version (2).\n");
}

TEST_F(ManifestImport, AnEmptyManifestAndAnOutputThatCannotBeWritten) {
    write("build.ninja", "");
    EXPECT_EQ(run().status, 0);
    EXPECT_EQ(
        read("build.qxProject"),
        "<!DOCTYPE Kestrelhaus_Project_File>\n<solution Name=\"build\" target=\"8\" version=\"2\" />\n");
    QFile::remove(directory.filePath(q("build.qxProject")));
    QDir(directory.path()).mkdir(q("build.qxProject"));
    const Result result = run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.errors, "");
}

TEST_F(ManifestImport, Utf8ReachesTheFileByteForByte) {
    write("build.ninja", "build \xc3\xa4\xe2\x82\xac: phony\n");
    EXPECT_EQ(run().status, 0);
    EXPECT_NE(read("build.qxProject").indexOf("Name=\"&#xc3;&#xa4;&#xe2;&#x82;&#xac;\""), -1);
}

/// All values of one attribute in a solution, list values taken apart.
QSet<QString> valuesOf(const xml::XMLNode* root, const char* attribute) {
    QSet<QString> values;
    std::vector<const xml::XMLNode*> pending{root};
    while (!pending.empty()) {
        const xml::XMLNode* const node = pending.back();
        pending.pop_back();
        for (const xml::XMLNode* child = node->firstChild(); child; child = child->nextSibling())
            pending.push_back(child);
        for (const QString& value : QString::fromUtf8(xml::asElement(node)->attribute(attribute)).split(u';'))
            values.insert(value);
    }
    return values;
}

/// What the pattern's first group finds in a manifest.
QSet<QString> found(const QString& manifest, const char* pattern) {
    QSet<QString> result;
    auto match = QRegularExpression(q(pattern), QRegularExpression::MultilineOption).globalMatch(manifest);
    while (match.hasNext()) result.insert(match.next().captured(1));
    return result;
}

class CMakeProject : public ManifestImport, public testing::WithParamInterface<const char*> {};

TEST_P(CMakeProject, EverythingThatTheManifestNamesIsInTheSolution) {
    configure(q(GetParam()));
    EXPECT_EQ(run({q("all")}).status, 0);
    const QByteArray solution = read("build.qxProject");
    EXPECT_EQ(run({q("all")}).status, 0);
    EXPECT_EQ(read("build.qxProject"), solution) << "a second run writes the same bytes";

    xml::XMLDocument document;
    ASSERT_TRUE(document.parseText(solution));
    const auto holds = [&](const char* attribute, const QSet<QString>& wanted) {
        EXPECT_FALSE(wanted.isEmpty()) << attribute;
        const QSet<QString> missing = wanted - valuesOf(document.root(), attribute);
        EXPECT_TRUE(missing.isEmpty()) << attribute << ": " << missing.values().join(u' ').toStdString();
    };
    // Options in these projects have no blanks inside, so that a pattern can tell them apart.
    const QString manifest = QString::fromUtf8(read("build.ninja")).replace(q("$ "), q("\x01"));
    const QStringList options = found(manifest, R"(^  (?:DEFINES|INCLUDES|FLAGS) =(.*)$)").values();
    const QString flags = options.join(q(" \n")) + u' ';
    holds("Name", found(manifest, R"(^build (\S+).*: \w*(?:EXECUTABLE|STATIC_LIBRARY)_LINKER)"));
    holds("build_object_file_name", found(manifest, R"(^build (\S+): \w*_COMPILER)"));
    QSet<QString> sources;
    for (QString source : found(manifest, R"(^build \S+: \w*_COMPILER\S* (\S+))"))
        sources.insert(source.replace(q("\x01"), q(" ")));
    holds("file_name", sources);
    holds("c_user_include_directories", found(flags, R"( -I([^"\s]+))"));
    holds("c_preprocessor_definitions", found(flags, R"( -D([^"\s]+)(?=\s))"));
}

INSTANTIATE_TEST_SUITE_P(Examples, CMakeProject,
                         testing::Values(SOURCE_DIR "/examples/firmware", "/usr/src/googletest"));

}  // namespace
