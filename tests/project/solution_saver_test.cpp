#include "project/solution_saver.h"

#include "project/engine_fixture.h"

namespace {

using namespace project_test;

using SolutionSaver = EngineTest;

TEST_F(SolutionSaver, AnEmptySolution) {
    newSolution();
    EXPECT_EQ(saved(true),
              "<!DOCTYPE Kestrelhaus_Project_File>\n"
              "<solution Name=\"demo\" target=\"8\" version=\"2\" />\n");
}

TEST_F(SolutionSaver, TheFormOfASolution) {
    ProjectElement* const project = (newSolution(), newProject("app"));
    set(project, "Common", "c_preprocessor_definitions", "NDEBUG");
    ProjectElement* const file =
        engine.addFile(engine.findOrAddFolder(project, q("src"), q("c;h")), q("src/main.c"));
    set(file, "Common", "c_user_include_directories", "inc");
    EXPECT_EQ(saved(true),
              "<!DOCTYPE Kestrelhaus_Project_File>\n"
              "<solution Name=\"demo\" target=\"8\" version=\"2\">\n"
              "  <project Name=\"app\">\n"
              "    <configuration\n"
              "      Name=\"Common\"\n"
              "      c_preprocessor_definitions=\"NDEBUG\"\n"
              "      project_directory=\"\"\n"
              "      project_type=\"Executable\" />\n"
              "    <folder Name=\"src\">\n"
              "      <configuration Name=\"Common\" filter=\"c;h\" />\n"
              "      <file file_name=\"src/main.c\">\n"
              "        <configuration Name=\"Common\" c_user_include_directories=\"inc\" />\n"
              "      </file>\n"
              "    </folder>\n"
              "  </project>\n"
              "</solution>\n");
}

/// The order of the elements in a saved text, by tag and the first attribute's value.
std::string order(const std::string& text) {
    std::string result;
    for (std::size_t i = text.find("\n  "); i != std::string::npos; i = text.find("\n  ", i + 1)) {
        const std::string line = text.substr(i + 1, text.find('\n', i + 1) - i - 1);
        const std::size_t quote = line.find('"');
        if (line.find('<') == std::string::npos || quote == std::string::npos) continue;
        result += line.substr(quote + 1, line.find('"', quote + 1) - quote - 1) + " ";
    }
    return result;
}

TEST_F(SolutionSaver, SortedInGroupsByName) {
    ProjectElement* const solution = newSolution();
    newProject("z");
    ProjectElement* const project = newProject("p");
    project->configurations.value(u"Common")->attributes.remove(u"project_directory");
    project->configurations.value(u"Common")->attributes.remove(u"project_type");
    for (const char* name : {"dir/c.c", "b.c", "x/a.c"}) engine.addFile(project, q(name));
    engine.setElementAttribute(engine.addFile(project, q("a/zz.c")), keys::name, q("aa"));
    for (const char* name : {"f2", "F1"}) engine.findOrAddFolder(project, q(name), QString());
    engine.createConfiguration(project, q("A"));
    engine.createConfiguration(solution, q("Debug"));
    EXPECT_EQ(order(saved(true)), "Debug p A Common F1 f2 x/a.c aa b.c dir/c.c z ");
    EXPECT_EQ(order(saved(false)), "z p Common dir/c.c b.c x/a.c aa f2 F1 A Debug ");
}

TEST_F(SolutionSaver, LinksAndDynamicFolders) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const link = newLink(solution, "other");
    link->attributes.insert(keys::fileName, q("$(Dir)/other.qxProject"));
    link->attributes.insert(q("macros"), q("A=1"));
    link->canModify = false;
    engine.newProject(link, q("unseen"), QString(), QString());
    ProjectElement* const folder = engine.findOrAddFolder(newProject("p"), q("f"), q("c"));
    engine.setElementAttribute(folder, q("path"), q("src"));
    engine.setElementAttribute(folder, keys::fileName, q("kept"));
    engine.addFile(folder, q("found.c"));
    const std::string text = saved(true);
    EXPECT_NE(text.find("  <import file_name=\"$(Dir)/other.qxProject\" can_modify_solution=\"No\" />\n"),
              std::string::npos);
    EXPECT_NE(text.find("    <folder Name=\"f\" file_name=\"kept\" path=\"src\">\n"
                        "      <configuration Name=\"Common\" filter=\"c\" />\n"
                        "    </folder>\n"),
              std::string::npos);
    EXPECT_EQ(text.find("found.c"), std::string::npos);
    EXPECT_EQ(text.find("unseen"), std::string::npos);

    EXPECT_TRUE(engine.saveSolution(link, false)) << "a link is saved as a solution of its own";
    EXPECT_EQ(fileText(q("other.qxProject")).find("file_name"), std::string::npos);
    EXPECT_TRUE(link->isImport);
    EXPECT_TRUE(link->canModify) << "what was saved by itself can be changed";
    EXPECT_EQ(link->attributes.value(keys::fileName), q("$(Dir)/other.qxProject"));
}

TEST_F(SolutionSaver, NamesThatAreDerivedAreDropped) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    engine.setElementAttribute(engine.addFile(project, q("a.c")), keys::name, q(""));
    engine.setElementAttribute(engine.findOrAddFolder(project, q("f"), QString()), keys::fileName,
                               q("unity.c"));
    const std::string text = saved(false);
    EXPECT_NE(text.find("<file file_name=\"a.c\" />"), std::string::npos);
    EXPECT_NE(text.find("<folder Name=\"f\" />"), std::string::npos);
}

TEST_F(SolutionSaver, TextIsUtf8InReferences) {
    ProjectElement* const solution = newSolution();
    newProject("A&B \xc3\xa4 \xf0\x9f\x98\x80");
    EXPECT_NE(saved(false).find("Name=\"A&amp;B &#xc3;&#xa4; &#xf0;&#x9f;&#x98;&#x80;\""), std::string::npos);
    EXPECT_EQ(solution->attributes.value(keys::target), q("8"));
}

TEST_F(SolutionSaver, AnElementOfAnotherTagKeepsIt) {
    auto* const other = new ProjectElement(q("note"));
    other->attributes.insert(q("k"), q("v"));
    engine.appendChild(newSolution(), other);
    newProject("p");
    EXPECT_NE(saved(true).find("  <note k=\"v\" />\n"), std::string::npos);
}

TEST_F(SolutionSaver, SavingCleansTheSavedFilesNodes) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const link = newLink(solution, "other");
    link->modified = true;
    ProjectElement* const project = newProject("p");
    QString told;
    QObject::connect(&engine, &ProjectSystem::fileSaved, [&](const Path& path) { told = path.fileName(); });
    saved(false);
    EXPECT_EQ(told, q("demo.qxProject"));
    EXPECT_FALSE(solution->modified || project->modified);
    EXPECT_TRUE(link->modified);
    EXPECT_FALSE(engine.isModified(solution, false));
    EXPECT_TRUE(engine.isModified(solution, true));
    EXPECT_TRUE(solution->solution->lastModified.isValid());
}

TEST_F(SolutionSaver, AFileThatCannotBeWritten) {
    ProjectElement* const solution = newSolution();
    solution->path.setFile(directory.path());
    EXPECT_FALSE(engine.saveSolution(solution, true));
    EXPECT_EQ(engine.saveErrorText(), "couldn't write " + directory.path().toUtf8());
    EXPECT_TRUE(solution->modified);
}

struct Handler : ProjectFileSaveErrorHandler {
    int asked = 0;
    bool answer = false;
    ProjectElement* mended = nullptr;
    QString file;
    bool retry(ProjectElement* solution) override {
        ++asked;
        if (mended) solution->path.setFile(file);
        return answer;
    }
};

TEST_F(SolutionSaver, SavingAllWritesWhatChangedAndAsksOnce) {
    ProjectElement* const solution = newSolution("R");
    ProjectElement* const link = newLink(solution, "L");
    engine.saveAllSolutions(nullptr);
    EXPECT_TRUE(QFile::exists(directory.filePath(q("R.qxProject"))));
    EXPECT_FALSE(QFile::exists(directory.filePath(q("L.qxProject"))));
    link->modified = true;
    link->path.setFile(directory.path());
    EXPECT_THROW(engine.saveAllSolutions(nullptr), SolutionSaveError);
    Handler handler;
    EXPECT_THROW(engine.saveAllSolutions(&handler), SolutionSaveError);
    handler.answer = true;
    EXPECT_THROW(engine.saveAllSolutions(&handler), SolutionSaveError);
    handler.mended = link;
    handler.file = directory.filePath(q("L.qxProject"));
    engine.saveAllSolutions(&handler);
    EXPECT_EQ(handler.asked, 3);
    EXPECT_TRUE(QFile::exists(handler.file));
}

}  // namespace
