#include "project/node_adder.h"

#include "project/solution_fixture.h"

namespace {

using namespace project_test;

/// Answers the same to every question and remembers the last one.
class TestPrompt : public Prompt {
public:
    bool ask(const QString& title, const QString& heading, const QString& text) override {
        EXPECT_FALSE(title.isNull() && !heading.startsWith(u"File exists"));
        question = (title + u'|' + heading + u'|' + text).toStdString();
        ++questions;
        return answer;
    }
    bool answer = true;
    int questions = 0;
    std::string question;
};

class Adding : public SolutionTest {
protected:
    Adding() {
        newSolution("s");
        project = newProject("p");
    }
    std::string inDirectory(const char* name) { return (directory.path() + u'/' + q(name)).toStdString(); }
    ProjectElement* add(ProjectElement* target, const std::string& path, bool quiet = false) {
        return NodeAdder(engine, q("Debug"), prompt, macroNames).addExistingFile(*target, q(path), quiet);
    }
    static std::string stored(ProjectElement* file) {
        return file ? file->attributes.value(keys::fileName).toStdString() : "none";
    }

    TestPrompt prompt;
    QStringList macroNames;
    ProjectElement* project;
};

TEST_F(Adding, StoresTheShortestName) {
    macros.systemMacros.insert(q("Sys"), directory.path() + q("/sys"));
    macros.globalMacros.insert(q("Usr"), directory.path() + q("/sys/usr/"));
    macroNames = {q("None"), q("Usr"), q("Sys")};
    struct Row {
        std::string path;
        const char* stored;
    };
    const Row rows[] = {
        {inDirectory("a.c"), "a.c"},
        {inDirectory("src/../b.c"), "b.c"},
        {"rel/c.c", "rel/c.c"},
        {inDirectory("sys/d.c"), "$(Sys)/d.c"},
        {inDirectory("sys/x/e.c"), "$(Sys)/x/e.c"},
        {inDirectory("sys/usr/f.c"), "$(Usr)/f.c"},
        {inDirectory("sysother/g.c"), "sysother/g.c"},
    };
    for (const Row& row : rows) EXPECT_EQ(stored(add(project, row.path)), row.stored);
    EXPECT_EQ(prompt.questions, 0);
}

TEST_F(Adding, AsksBeforeAFileIsThereTwice) {
    ProjectElement* const folder = engine.addFolder(project, q("f"), QString());
    ProjectElement* const other = engine.addFolder(project, q("g"), QString());
    engine.addFile(folder, q("./src/A.c"));
    const std::string path = inDirectory("src/a.c");
    EXPECT_EQ(add(other, path, true), nullptr);
    EXPECT_EQ(prompt.questions, 0);
    prompt.answer = false;
    EXPECT_EQ(add(other, path), nullptr);
    EXPECT_EQ(prompt.question,
              "Project System|File already in project|The file " + path +
                  " is already in the project.\n\nDo you wish to duplicate this file in the project?");
    prompt.answer = true;
    EXPECT_EQ(stored(add(other, path)), "src/a.c");

    add(project, "rel/c.c");
    EXPECT_EQ(add(project, "rel/c.c", true), nullptr);

    NodeAdder adder(engine, q("Debug"), prompt);
    EXPECT_TRUE(adder.addExistingFile(*project, q(inDirectory("n.c")), true));
    EXPECT_FALSE(adder.addExistingFile(*folder, q(inDirectory("n.c")), true));
}

TEST_F(Adding, PutsFilesToUse) {
    write("map.xml", "<!DOCTYPE Board_Memory_Definition_File><root/>");
    write("place.xml", "<!DOCTYPE Linker_Placement_File><root/>");
    write("regs.xml", "<!DOCTYPE Register_Definition_File><root/>");
    struct Row {
        const char* projectType;
        const char* file;
        const char* lowerType;  ///< null where nothing is asked
        const char* values;
    };
    const Row rows[] = {
        {"Executable", "a.c", nullptr, ""},
        {"Library", "x.ld", nullptr, ""},
        {"Executable", "map.xml", "memory map", "linker_memory_map_file=map.xml "},
        {"Executable", "regs.xml", "register definitions", "debug_register_definition_file=regs.xml "},
        {"Externally Built Executable", "x.ld", "linker script",
         "link_linker_script_file=x.ld link_use_linker_script_file=Yes "},
        {"Executable", "place.xml", "section placement",
         "link_use_linker_script_file=No linker_section_placement_file=place.xml "},
    };
    for (const Row& row : rows) {
        for (const bool answer : {false, true}) {
            ProjectElement* const target = newProject(row.file);
            set(target, "Common", "project_type", row.projectType);
            prompt = {};
            prompt.answer = answer;
            ProjectElement* const file = add(target, inDirectory(row.file));
            ASSERT_TRUE(file);
            EXPECT_EQ(prompt.questions, row.lowerType ? 1 : 0) << row.file;
            std::string values;
            if (const ProjectElement* const debug = target->configurations.value(q("Debug")))
                for (const auto& [key, value] : debug->attributes)
                    if (key != keys::name) values += key.toStdString() + "=" + value.toStdString() + " ";
            EXPECT_EQ(values, answer ? row.values : "") << row.file;
            if (!row.lowerType) continue;
            const std::string type = engine.fileType(file, q("Debug")).toStdString();
            const std::string lower = row.lowerType;
            EXPECT_EQ(prompt.question, "Project System|" + type + " File Detected|The file " +
                                           inDirectory(row.file) + " is a " + lower +
                                           " file.\n\nDo you want to use this " + lower +
                                           " for the current build configuration?");
        }
    }
}

TEST_F(Adding, PastesFiles) {
    ProjectElement* const other =
        engine.newProject(engine.solution(), q("o"), directory.filePath(q("o")), QString());
    ProjectElement* const source = engine.addFile(other, q("src/a.c"));
    set(source, "Debug", "build_quietly", "No");
    NodeAdder adder(engine, q("Debug"), prompt);
    ProjectElement* const neighbour = engine.addFile(engine.addFolder(project, q("f"), QString()), q("n.c"));
    ProjectElement* const copy = adder.pasteNode(*source, directory.filePath(q("o")), *neighbour);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->parentElement(), neighbour->parentElement());
    EXPECT_EQ(stored(copy), "o/src/a.c");
    EXPECT_EQ(local(copy, "Debug", "build_quietly"), "No");
    EXPECT_TRUE(copy->modified);
    prompt.answer = false;
    EXPECT_EQ(adder.pasteNode(*source, directory.filePath(q("o")), *project), nullptr);
    EXPECT_EQ(prompt.question,
              "|File exists in project|The file 'a.c' exists in the project.\n\nContinue and add the "
              "file to the project?");
    prompt.answer = true;
    EXPECT_EQ(adder.pasteNode(*source, directory.filePath(q("o")), *project)->parentElement(), project);
}

TEST_F(Adding, PastesUnderANewName) {
    NodeAdder adder(engine, q("Debug"), prompt);
    std::string names;
    for (int i = 0; i < 4; ++i)
        names += adder.pasteNode(*project, QString(), *engine.solution())->elementName().toStdString() + ", ";
    EXPECT_EQ(names, "Copy of p, Copy (2) p, Copy (3) p, Copy (4) p, ");
    EXPECT_TRUE(engine.findProject(engine.solution(), q("Copy (2) p")));
    ProjectElement* const folder = engine.addFolder(project, q("f"), QString());
    EXPECT_EQ(adder.pasteNode(*folder, QString(), *folder)->elementName(), u"f");
}

}  // namespace
