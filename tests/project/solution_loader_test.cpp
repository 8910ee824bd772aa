#include "project/solution_loader.h"

#include "project/solution_fixture.h"
#include "project/tree_walk.h"

#include <QFileInfo>

#include <cstdlib>
#include <vector>

namespace {

using namespace project_test;

const std::string header = "<!DOCTYPE Kestrelhaus_Project_File>\n";

/// Records what a load tells of itself.
class RecordingProgress : public Progress {
public:
    void begin(const QString& text, int weight) override {
        log += text.toStdString() + "," + std::to_string(weight) + "{";
    }
    void end() override { log += "}"; }
    void setProgress(int current, int total) override {
        log += std::to_string(current) + "/" + std::to_string(total) + " ";
    }
    void commandStarted(std::string_view commandLine) override {
        log += "$ " + std::string(commandLine) + ";";
    }
    void commandOutput(bool, std::string_view line) override { log += std::string(line) + ";"; }

    std::string log;
};

class Solutions : public SolutionTest {
protected:
    /// The error of a load: the file without its directory, the line when there is one, and the message.
    std::string errorOf(const char* name) {
        try {
            load(name);
        } catch (const SolutionLoadError& error) {
            EXPECT_EQ(engine.solution(), nullptr) << name;
            const std::string text = error.fileName().toStdString() +
                                     (error.hasPosition() ? ":" + std::to_string(error.line()) : "") + "|" +
                                     error.message().toStdString();
            return withoutDirectory(text);
        }
        return "none";
    }
    std::string withoutDirectory(std::string text) {
        const std::string prefix = directory.path().toStdString() + "/";
        for (std::size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix))
            text.erase(at, prefix.size());
        return text;
    }
};

TEST_F(Solutions, AreReadIntoTheTree) {
    writeSolution(
        "a.qxProject",
        "><project Name=\"p\"><configuration Name=\"Common\" project_type=\"Library\"/>"
        "<folder Name=\"f\"><file file_name=\"x/y.c\" odd=\"\"/></folder></project>"
        "<configuration Name=\"Debug\" hidden=\"Yes\" inherited_configurations=\"Base\"/></solution>");
    RecordingProgress progress;
    bool emitted = false;
    QObject::connect(&engine, &ProjectSystem::solutionLoaded, [&] { emitted = true; });
    load("a.qxProject", &progress);
    EXPECT_TRUE(emitted);
    EXPECT_EQ(shape(), "a(p(Common()f(y.c()))Debug())");
    EXPECT_EQ(progress.log, "Loading solution a.qxProject,2{1/2 2/2 }Mapping project information,0{1/1 }");
    ProjectElement* const project = engine.findProject(engine.solution(), q("p"));
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(get(project, "Common", "project_type"), "Library");
    EXPECT_EQ(project->folders.size(), 1);
    EXPECT_EQ(engine.inheritedConfigurations(engine.solution(), q("Debug")), QStringList(q("Base")));
    EXPECT_TRUE(engine.findElement(project, q("y.c"))->attributes.contains(u"odd"));
    EXPECT_FALSE(engine.isModified(engine.solution(), true));
    EXPECT_TRUE(engine.changeLog().isEmpty());
    EXPECT_EQ(engine.solutionFileName(), directory.filePath(q("a.qxProject")));
    EXPECT_EQ(project->attributes.size(), 1);
}

TEST_F(Solutions, AreWrittenBackByteForByte) {
    ProjectElement* const project = (newSolution(), newProject("app"));
    set(project, "Common", "c_preprocessor_definitions", "A=\"\xc3\xa4 <&>\";B");
    set(engine.addFile(project, q("a.c")), "Debug", "file_type", "C++");
    const std::string text = saved(true);
    load("demo.qxProject");
    EXPECT_EQ(saved(false), text);
    write("old.qxProject", header + "<solution Name=\"old\"/>");
    load("old.qxProject");
    EXPECT_FALSE(engine.isModified(engine.solution(), true));
    EXPECT_EQ(saved(false), header + "<solution Name=\"old\" target=\"8\" version=\"2\" />\n");
}

TEST_F(Solutions, AreRefusedWithTheseWords) {
    write("noname", "");
    write("type.qxProject", "<!DOCTYPE Other><solution/>");
    write("bare.qxProject", "<solution/>");
    write("empty.qxProject", header);
    write("root.qxProject", header + "<project/>");
    write("tags.qxProject", header + "<solution>\n<a>\n</b>");
    write("other.qxProject", header + "<solution target=\"9\"/>");
    write("unknown.qxProject", header + "<solution target=\"77\"/>");
    write("self.qxProject", header + "<solution><import file_name=\"./self.qxProject\"/></solution>");
    write("one.qxProject", header + "<solution><import file_name=\"two.qxProject\"/></solution>");
    write("two.qxProject", header + "<solution><import file_name=\"one.qxProject\"/></solution>");
    write("gone.qxProject", header + "<solution><import file_name=\"none.qxProject\"/></solution>");
    write("nothere.qxProject", header + "<solution load_command=\"/no/such a\"/>");
    write("fails.qxProject", header + "<solution load_command=\"true&amp;&amp;false && touch after\"/>");
    QDir(directory.path()).mkdir(q("dir.qxProject"));
    const std::pair<const char*, const char*> rows[] = {
        {"none.qxProject", "none.qxProject|none.qxProject does not exist"},
        {"dir.qxProject", "dir.qxProject|dir.qxProject cannot access"},
        {"noname", "noname|noname not a solution file"},
        {"type.qxProject", "type.qxProject|type.qxProject not a solution file"},
        {"bare.qxProject", "bare.qxProject|bare.qxProject not a solution file"},
        {"empty.qxProject", "empty.qxProject|empty.qxProject is a malformed solution file (bad XML)"},
        {"root.qxProject", "root.qxProject|root.qxProject is a malformed solution file (bad XML)"},
        {"tags.qxProject", "tags.qxProject:3|tagName mismatch"},
        {"other.qxProject", "other.qxProject|invalid solution target (MSP430)"},
        {"unknown.qxProject", "unknown.qxProject|invalid solution target (77)"},
        {"self.qxProject", "self.qxProject|self.qxProject solution already loaded"},
        {"one.qxProject", "one.qxProject|one.qxProject solution already loaded"},
        {"gone.qxProject", "none.qxProject|none.qxProject does not exist"},
        {"nothere.qxProject", "nothere.qxProject|solution load command \"/no/such\" not found"},
        {"fails.qxProject", "fails.qxProject|solution load command failed (1) "},
    };
    for (const auto& [name, error] : rows) EXPECT_EQ(errorOf(name), error) << name;
    EXPECT_FALSE(QFileInfo::exists(directory.filePath(q("after"))));
    load("other.qxProject", nullptr, false);
    EXPECT_EQ(engine.solution()->attributes.value(u"target"), u"9");
}

TEST_F(Solutions, LinkOthers) {
    write("lib.qxProject", header +
                               "<solution Name=\"lib\"><if KIND=\"x\"><project Name=\"$(KIND)\"/></if>"
                               "<project Name=\"l\"/></solution>");
    writeSolution("a.qxProject",
                  "><project Name=\"p\"/><import file_name=\"$(Dir)/lib.qxProject\" macros=\"KIND=x\" "
                  "can_modify_solution=\"No\"/><import file_name=\"lib.qxProject\"/></solution>");
    macros.setGlobalMacro(q("Dir"), directory.path());
    load("a.qxProject");
    EXPECT_EQ(shape(), "a(p()lib(x()l())lib(l()))");
    ProjectElement* const link = engine.solution()->firstChildElement()->nextSiblingElement();
    EXPECT_TRUE(link->isImport);
    EXPECT_FALSE(link->canModify);
    EXPECT_TRUE(link->nextSiblingElement()->canModify);
    EXPECT_EQ(link->attributes.value(u"file_name"), u"$(Dir)/lib.qxProject");
    EXPECT_EQ(link->attributes.value(u"version"), u"2");
    EXPECT_NE(engine.findProject(engine.solution(), q("x(lib)")), nullptr);
    EXPECT_EQ(saved(false), header +
                                "<solution Name=\"a\" target=\"8\" version=\"2\">\n"
                                "  <project Name=\"p\" />\n"
                                "  <import file_name=\"$(Dir)/lib.qxProject\" can_modify_solution=\"No\" />\n"
                                "  <import file_name=\"lib.qxProject\" />\n</solution>\n");
}

TEST_F(Solutions, AreLinkedAfterwards) {
    writeSolution("a.qxProject", "/>");
    writeSolution("b.qxProject", "><project Name=\"p\"/></solution>");
    writeSolution("c.qxProject", "><import file_name=\"a.qxProject\"/></solution>");
    load("a.qxProject");
    const QString linked = directory.filePath(q("b.qxProject"));
    ProjectElement* const link = engine.insertSolutionLink(engine.solution(), linked, nullptr, nullptr);
    EXPECT_EQ(link->attributes.value(u"file_name"), u"b.qxProject");
    EXPECT_FALSE(link->modified);
    EXPECT_TRUE(engine.solution()->modified);
    EXPECT_NE(engine.findProject(engine.solution(), q("p(b)")), nullptr);
    EXPECT_EQ(engine.insertSolutionLink(engine.solution(), linked, nullptr, nullptr), link);
    EXPECT_THROW(engine.insertSolutionLink(link, directory.filePath(q("c.qxProject")), nullptr, nullptr),
                 SolutionLoadError);
    EXPECT_EQ(shape(), "a(b(p()))");
}

TEST_F(Solutions, RunTheirCommandsAndSetTheEnvironment) {
    macros.setGlobalMacro(q("Word"), q("hello"));
    writeSolution("a.qxProject",
                  " load_command=\"sh -c &quot;echo $(Word) $$LOADED; pwd&quot; && touch made\""
                  " load_command_environment=\"LOADED=yes;;\"><configuration Name=\"Common\""
                  " environment_variables=\"ATELIS_TEST=$(SolutionName)=1\"/></solution>");
    RecordingProgress progress;
    load("a.qxProject", &progress);
    EXPECT_TRUE(QFileInfo::exists(directory.filePath(q("made"))));
    EXPECT_EQ(qgetenv("ATELIS_TEST"), "a=1");
    const std::string canonical = QFileInfo(directory.path()).canonicalFilePath().toStdString();
    EXPECT_NE(progress.log.find("Executing load commands,2{$ sh -c echo hello $LOADED; pwd;hello yes;" +
                                canonical + ";$ touch made;}"),
              std::string::npos)
        << progress.log;
    engine.runsLoadCommands = false;
    QFile::remove(directory.filePath(q("made")));
    load("a.qxProject");
    EXPECT_FALSE(QFileInfo::exists(directory.filePath(q("made"))));
}

TEST_F(Solutions, AsHandlersAreTold) {
    struct Handler : ProjectFileNotFoundErrorHandler {
        bool goOn(const QString& name) override {
            asked = name;
            return QFile(QStringLiteral("/dev/null")).copy(name);
        }
        QString asked;
    } handler;
    const QString name = directory.filePath(q("late.qxProject"));
    EXPECT_THROW(engine.loadSolution(name, &handler, nullptr, nullptr, true), SolutionLoadError);
    EXPECT_EQ(handler.asked, name);
}

TEST_F(Solutions, OfAnyDepthAndSizeAreBounded) {
    constexpr int depth = 200000;
    std::string text = "><folder Name=\"f\">";
    for (int i = 0; i < depth; ++i) text += "<project Name=\"p\">";
    for (int i = 0; i < depth; ++i) text += "</project>";
    writeSolution("deep.qxProject", text + "</folder></solution>");
    load("deep.qxProject");
    EXPECT_EQ(engine.countProjects(engine.solution()), depth);

    std::string nested = ">";
    for (int i = 0; i < 1000; ++i) nested += "<solution Name=\"s\"><project Name=\"p\"/>";
    for (int i = 0; i < 1000; ++i) nested += "</solution>";
    writeSolution("nested.qxProject", nested + "</solution>");
    EXPECT_EQ(errorOf("nested.qxProject"), "nested.qxProject|nested.qxProject nests solutions too deep");

    QDir(directory.path()).mkdir(q("next"));
    writeSolution("chain.qxProject", "><import file_name=\"next/../chain.qxProject\"/></solution>");
    EXPECT_EQ(errorOf("chain.qxProject"), "chain.qxProject|chain.qxProject solution already loaded");
}

/// Cut at any byte, a file loads as the parser's rules say, or gives one error.
TEST_F(Solutions, CutAnywhereDoNotHarm) {
    const std::string text = header +
                             "<solution Name=\"a\" version=\"2\" target=\"8\"><project Name=\"p\">"
                             "<configuration Name=\"Common\" c=\"&lt;\"/></project></solution>";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        write("cut.qxProject", text.substr(0, length));
        const std::string error = errorOf("cut.qxProject");
        EXPECT_EQ(error == "none", length == text.size()) << length << ": " << error;
    }
}

}  // namespace
