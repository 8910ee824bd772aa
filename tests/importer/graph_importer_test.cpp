#include "importer/graph_importer.h"

#include "importer/import.h"
#include "importer/my_project_system.h"
#include "manifest/manifest_parser.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace importer;
using project::commonConfiguration;
using project::ProjectElement;

QString q(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Reads one text, whatever file is asked for.
class TextReader : public manifest::FileReader {
public:
    explicit TextReader(std::string text) : text_(std::move(text)) {}
    Status readFile(const std::string&, std::string* contents, std::string*) override {
        *contents = text_;
        return Status::Okay;
    }

private:
    std::string text_;
};

const std::string rules = [] {
    std::string text;
    for (const char* name : {"C_COMPILER__a", "CXX_COMPILER__a", "ASM_COMPILER__a", "C_EXECUTABLE_LINKER__a",
                             "C_STATIC_LIBRARY_LINKER__a", "CUSTOM_COMMAND", "my_CUSTOM_COMMAND_x", "Phony",
                             "phony2", "C_SHARED_LIBRARY_LINKER__a"})
        text += std::string("rule ") + name + "\n  command = x\n";
    return text;
}();

class GraphImport : public testing::Test {
protected:
    GraphImport() { project::projectSystem = &engine; }
    ~GraphImport() override { project::projectSystem = nullptr; }

    void import(const std::string& text, const Targets& targets = {}) {
        TextReader reader(rules + text);
        std::string error;
        manifest::ManifestParser parser(&state, &reader);
        ASSERT_TRUE(parser.load("build.ninja", &error, nullptr)) << error;
        solution = engine.newSolution(q("build"), directory.path());
        GraphImporter graph(engine, targets, solution);
        for (const manifest::Node* root : state.defaultNodes(&error)) graph.importNode(root);
    }

    ProjectElement* project(const char* name) { return engine.findProject(solution, q(name)); }
    std::string value(ProjectElement* node, const char* key) {
        const auto* const propertyClass = engine.schema().find(q(key));
        const QString text = engine.localPropertyValue(node, propertyClass, commonConfiguration);
        return text.isNull() ? "(none)" : text.toStdString();
    }

    /// One line a project: its name, "-" when hidden, its type in brackets, and its dependencies.
    std::string projects() {
        std::string result;
        for (ProjectElement* child = solution->firstChildElement(); child;
             child = child->nextSiblingElement()) {
            const std::string dependencies = value(child, "project_dependencies");
            result += child->elementName().toStdString() +
                      (child->attributes.value(u"hidden") == u"Yes" ? "-" : "") + "[" +
                      value(child, "project_type") + "]" +
                      (dependencies == "(none)" ? "" : " " + dependencies) + "\n";
        }
        return result;
    }

    /// The folders of a project with their files, and the files of its own.
    std::string files(const char* name) {
        std::string result;
        ProjectElement* const owner = project(name);
        for (ProjectElement* child = owner->firstChildElement(); child; child = child->nextSiblingElement()) {
            if (child->isFile()) result += child->attributes.value(u"file_name").toStdString() + " ";
            if (!child->isFolder()) continue;
            result += child->elementName().toStdString() + "( ";
            for (ProjectElement* file = child->firstChildElement(); file; file = file->nextSiblingElement())
                result += file->attributes.value(u"file_name").toStdString() + " ";
            result += ") ";
        }
        return result;
    }

    QTemporaryDir directory;
    MyProjectSystem engine;
    manifest::State state;
    ProjectElement* solution = nullptr;
};

TEST_F(GraphImport, AnExecutableWithItsAliases) {
    import(
        "build app.dir/main.c.o: C_COMPILER__a ../main.c || order_app\n"
        "  DEFINES = -DFOO=1\n"
        "  FLAGS = -g\n"
        "  INCLUDES = -Iinc\n"
        "  DEP_FILE = o\\m.d\n"
        "build order_app: phony\n"
        "build app.elf: C_EXECUTABLE_LINKER__a app.dir/main.c.o\n"
        "  LINK_LIBRARIES = -lm  lib/x.a\n"
        "  LINK_PATH = -Llib\n"
        "  POST_BUILD = cd out && tool app\n"
        "  TARGET_FILE = app.elf\n"
        "build app: phony app.elf\n"
        "build all: phony app\n"
        "default all\n",
        {{"all"}, {}});
    EXPECT_EQ(projects(),
              "all[] app\n"
              "app-[] app.elf\n"
              "app.elf[Externally Built Executable] order_app\n"
              "order_app-[]\n");
    EXPECT_EQ(files("app.elf"), "C_COMPILER__a( ../main.c ) ");
    ProjectElement* const executable = project("app.elf");
    EXPECT_EQ(value(executable, "build_output_file_name"), "app.elf");
    EXPECT_EQ(value(executable, "linker_additional_options"), "-Llib;-lm;;lib/x.a");
    EXPECT_EQ(value(executable, "link_dependent_projects"), "No");
    EXPECT_EQ(value(executable, "linker_map_file"), "No");
    EXPECT_EQ(value(executable, "linker_post_build_command"), "tool app");
    EXPECT_EQ(value(executable, "linker_post_build_command_wd"), "out");
    ProjectElement* const file =
        engine.findFile(engine.findFolder(executable, q("C_COMPILER__a")), q("../main.c"));
    EXPECT_EQ(value(file, "build_object_file_name"), "app.dir/main.c.o");
    EXPECT_EQ(value(file, "c_only_additional_options"), "-DFOO=1;-Iinc;-g");
    EXPECT_EQ(value(file, "c_preprocessor_definitions"), "FOO=1");
    EXPECT_EQ(value(file, "c_user_include_directories"), "inc");
    EXPECT_EQ(value(file, "c_system_include_directories"), "");
    EXPECT_EQ(value(file, "code_completion_options"), "");
    EXPECT_EQ(value(file, "build_dependency_file_name"), "$(ProjectDir)/o\\m.d");
}

TEST_F(GraphImport, WhatIsHidden) {
    const char* const text =
        "build e: C_EXECUTABLE_LINKER__a\nbuild l: C_STATIC_LIBRARY_LINKER__a\n"
        "build c: CUSTOM_COMMAND\n  COMMAND = cd w && make\nbuild p: phony\n";
    import(text, {{"c"}, { "l" }});
    EXPECT_EQ(projects(),
              "e[Externally Built Executable]\nl-[Externally Built Library]\nc[Combining]\np-[]\n");
    EXPECT_EQ(value(project("c"), "combine_command"), "make");
    EXPECT_EQ(value(project("c"), "combine_command_wd"), "w");
    EXPECT_EQ(value(project("c"), "combine_output_filepath"), "c");
    EXPECT_EQ(value(project("c"), "combine_set_readonly"), "Don't");
    EXPECT_EQ(value(project("c"), "project_inhibit_indexing"), "Yes");
    EXPECT_EQ(value(project("c"), "build_dependency_file_name"), "(none)");
    EXPECT_EQ(value(project("e"), "linker_post_build_command"), "(none)");
    EXPECT_EQ(value(project("l"), "build_output_file_name"), "l");
}

TEST_F(GraphImport, RulesAreRecognisedByTheirWords) {
    import(
        "build a: my_CUSTOM_COMMAND_x\nbuild b: Phony p1\nbuild c: phony2 p2\n"
        "build p1: phony\nbuild p2: phony\nbuild s.so: C_SHARED_LIBRARY_LINKER__a p3\nbuild p3: phony\n"
        "build top: phony s.so b\n"
        "build i.o: ASM_COMPILER__a i.s\nbuild j.o: CXX_COMPILER__a j.cc\nbuild e: C_EXECUTABLE_LINKER__a "
        "i.o j.o\n"
        "default a c top e\n");
    EXPECT_EQ(projects(),
              "a-[Combining]\np2-[]\ntop-[] p3;p1\np3-[]\np1-[]\ne[Externally Built Executable]\n");
    EXPECT_EQ(files("e"), "ASM_COMPILER__a( i.s ) CXX_COMPILER__a( j.cc ) ");
    const auto file = [&](const char* folder, const char* name) {
        return engine.findFile(engine.findFolder(project("e"), q(folder)), q(name));
    };
    EXPECT_EQ(value(file("ASM_COMPILER__a", "i.s"), "asm_additional_options"), "");
    EXPECT_EQ(value(file("CXX_COMPILER__a", "j.cc"), "cpp_only_additional_options"), "");
    EXPECT_EQ(value(file("CXX_COMPILER__a", "j.cc"), "c_only_additional_options"), "(none)");
    EXPECT_EQ(value(file("CXX_COMPILER__a", "j.cc"), "build_dependency_file_name"), "$(ProjectDir)/");
}

TEST_F(GraphImport, ObjectsOfACustomCommandAreProjects) {
    import(
        "build o.o: C_COMPILER__a o.c gen\nbuild gen: phony\n"
        "build out: CUSTOM_COMMAND gen.h x.trigger dep o.o | imp.txt || ord.cfg\n  depfile = o.d\n");
    EXPECT_EQ(projects(), "out-[Combining] o.o\no.o[Externally Built Object file] gen\ngen-[]\n");
    EXPECT_EQ(files("out"), "gen.h o.o imp.txt ord.cfg ");
    EXPECT_EQ(files("o.o"), "C_COMPILER__a( o.c ) ");
    EXPECT_EQ(value(project("out"), "build_dependency_file_name"), "o.d");
    ProjectElement* const file =
        engine.findFile(engine.findFolder(project("o.o"), q("C_COMPILER__a")), q("o.c"));
    EXPECT_EQ(value(file, "build_object_file_name"), "o.o");
}

TEST_F(GraphImport, AnObjectThatIsARootIsAProject) {
    import(
        "build o.o: C_COMPILER__a o.c\nbuild n.o: C_COMPILER__a\nbuild s: Phony r.o\nbuild r.o: "
        "C_COMPILER__a r.c\n");
    EXPECT_EQ(projects(),
              "o.o[Externally Built Object file]\nn.o[Externally Built Object file]\n"
              "r.o[Externally Built Object file]\n");
    EXPECT_EQ(files("o.o"), "C_COMPILER__a( o.c ) ");
    EXPECT_EQ(files("n.o"), "C_COMPILER__a( ) ");
}

TEST_F(GraphImport, SharedNodesAreHandledOnce) {
    import(
        "build o.o: C_COMPILER__a o.c\nbuild l.a: C_STATIC_LIBRARY_LINKER__a l.o\nbuild l.o: C_COMPILER__a "
        "l.c\n"
        "build e1: C_EXECUTABLE_LINKER__a o.o | l.a\nbuild e2: C_EXECUTABLE_LINKER__a o.o l.a || l.a\n"
        "build p1: phony e1\nbuild p2: phony e1 e2 e1\n");
    EXPECT_EQ(projects(),
              "p1-[] e1\ne1[Externally Built Executable] l.a\nl.a[Externally Built Library]\n"
              "p2-[] e1;e2\ne2[Externally Built Executable] l.a\n");
    EXPECT_EQ(files("e1"), "C_COMPILER__a( o.c ) ");
    EXPECT_EQ(files("e2"), "") << "the object went to the project that reached it first";
}

TEST_F(GraphImport, AFurtherWayToAProduct) {
    import(
        "build e1 e2: C_EXECUTABLE_LINKER__a x\nbuild x: phony\n"
        "build c1 c2: CUSTOM_COMMAND\nbuild f: C_EXECUTABLE_LINKER__a\n  TARGET_FILE = e1\n"
        "build l1 l2: C_STATIC_LIBRARY_LINKER__a\n");
    EXPECT_EQ(projects(),
              "e1[Externally Built Executable] x\nx-[]\ne2-[] e1;x\nc1-[Combining]\nc2-[] c1\nf-[] e1\n"
              "l1[Externally Built Library]\nl2[Externally Built Library]\n");
    EXPECT_EQ(value(project("l2"), "build_output_file_name"), "l1");
    EXPECT_EQ(value(project("e2"), "build_output_file_name"), "(none)");
}

TEST_F(GraphImport, CyclesEndAtTheMemo) {
    import("build a: phony b\nbuild b: phony c\nbuild c: phony a\ndefault a\n");
    EXPECT_EQ(projects(), "a-[] b\nb-[] c\nc-[] a\n");
}

TEST_F(GraphImport, VariablesOfTheFileReachTheStatement) {
    import("LINK_LIBRARIES = -lfile\nbuild e: C_EXECUTABLE_LINKER__a\n");
    EXPECT_EQ(value(project("e"), "linker_additional_options"), "-lfile");
}

TEST_F(GraphImport, AChainOfAMillionAndListsOfAHundredThousand) {
    std::string text;
    for (int i = 0; i < 1000000; ++i)
        text +=
            "build n" + std::to_string(i) + ": C_SHARED_LIBRARY_LINKER__a n" + std::to_string(i + 1) + "\n";
    std::string phonies, files, objects;
    for (int i = 0; i < 100000; ++i) {
        const std::string number = std::to_string(i);
        text += "build p" + number + ": phony\n";
        phonies += " p" + number;
        files += " f" + number + ".h";
    }
    for (int i = 0; i < 20000; ++i) {
        const std::string number = std::to_string(i);
        text += "rule C_COMPILER__" + number + "\n  command = x\nbuild o" + number + ": C_COMPILER__" +
                number + " c\n";
        objects += " o" + number;
    }
    text += "build all: phony" + phonies + "\nbuild c: CUSTOM_COMMAND" + files +
            "\nbuild e: C_EXECUTABLE_LINKER__a" + objects + "\n";
    import(text);
    EXPECT_EQ(engine.solutionProjectNames().size(), 100003);
    EXPECT_EQ(value(project("all"), "project_dependencies").substr(0, 9), "p0;p1;p2;");
    EXPECT_EQ(engine.countFiles(project("c")), 100000);
    EXPECT_EQ(project("e")->folders.size(), 20000);
}

TEST_F(GraphImport, TheSolutionIsSavedEvenWithoutRoots) {
    const QByteArray manifestFile = QFile::encodeName(directory.filePath(q("build.ninja")));
    EXPECT_TRUE(importManifest(engine, state, manifestFile.constData(), {}));
    QFile file(directory.filePath(q("build.qxProject")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(
        file.readAll(),
        "<!DOCTYPE Kestrelhaus_Project_File>\n<solution Name=\"build\" target=\"8\" version=\"2\" />\n");
    EXPECT_EQ(engine.solution(), nullptr);
}

}  // namespace
