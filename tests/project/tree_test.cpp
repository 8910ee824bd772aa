#include "project/engine_fixture.h"

namespace {

using namespace project_test;

using Tree = EngineTest;

std::string name(ProjectElement* node) {
    return node->elementName().toStdString();
}

TEST_F(Tree, ANewSolutionHasNoConfigurationAndANewProjectHasCommon) {
    ProjectElement* const solution = newSolution();
    EXPECT_EQ(solution->firstChild(), nullptr);
    EXPECT_TRUE(solution->modified);
    EXPECT_EQ(solution->attributes.value(u"version"), q("2"));
    ProjectElement* const inside =
        engine.newProject(solution, q("p"), directory.filePath(q("sub/p")), q("Library"));
    EXPECT_EQ(local(inside, "Common", "project_directory"), "sub/p");
    EXPECT_EQ(local(inside, "Common", "project_type"), "Library");
    ProjectElement* const outside = engine.newProject(solution, q("o"), q("/elsewhere"), QString());
    EXPECT_EQ(local(outside, "Common", "project_directory"), "/elsewhere");
    EXPECT_TRUE(outside->configurations.value(u"Common")->attributes.contains(u"project_type"));
    EXPECT_EQ(engine.solutionProjectNames(), QStringList({q("o"), q("p")}));
}

TEST_F(Tree, AFolderIsFoundAgainAndKeepsItsFirstFilter) {
    newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const folder = engine.findOrAddFolder(project, q("Source"), q("c;cpp"));
    EXPECT_EQ(engine.findOrAddFolder(project, q("Source"), q("h")), folder);
    EXPECT_EQ(folder->configurations.value(u"Common")->attributes.value(u"filter"), q("c;cpp"));
    EXPECT_EQ(folder->configurations.size(), 1);
    EXPECT_TRUE(engine.findOrAddFolder(project, q("Plain"), QString())->configurations.isEmpty());
}

TEST_F(Tree, FilesGoWhereAFilterTakesTheirExtension) {
    struct Case {
        const char *filter, *file;
        bool taken;
    };
    const Case cases[] = {
        {"c;cpp", "a.CPP", true}, {"CPP", "a.cpp", false},     {"CPP", "a.CPP", false},  {"", "a.c", false},
        {"h,c", "dir/x.c", true}, {"c", "noextension", false}, {"gz", "a.tar.gz", true},
    };
    for (const Case& c : cases) {
        newSolution();
        ProjectElement* const project = newProject("p");
        engine.findOrAddFolder(project, q("Unfiltered"), QString());
        ProjectElement* const folder = engine.findOrAddFolder(project, q("F"), q(c.filter));
        ProjectElement* const file = engine.addFile(project, q(c.file));
        EXPECT_EQ(file->parentElement(), c.taken ? folder : project) << c.filter << " " << c.file;
        EXPECT_EQ(engine.addFile(folder, q("any.zzz"))->parentElement(), folder);
        engine.closeSolution();
    }
}

TEST_F(Tree, NamesOfNodes) {
    newSolution();
    ProjectElement* const project = newProject("p");
    const auto file = [&](const char* fileName) { return engine.addFile(project, q(fileName)); };
    EXPECT_EQ(name(file("src/a.c")), "a.c");
    EXPECT_EQ(name(file("src\\a.c")), "a.c");
    EXPECT_EQ(name(file("src/sub/..")), "src");
    ProjectElement* const named = file("a.c");
    engine.setElementAttribute(named, keys::name, q("x"));
    EXPECT_EQ(name(named), "x");
    engine.setElementAttribute(named, keys::name, q(""));
    EXPECT_EQ(name(named), "a.c");
    ProjectElement* const withMacro = file("$(Dir)/b.c");
    withMacro->resolvePaths(commonConfiguration);
    EXPECT_EQ(name(withMacro), "b.c");
    EXPECT_FALSE(withMacro->pathValid);
    EXPECT_EQ(name(engine.findOrAddFolder(project, QString(), QString())), "<NULL>");
}

TEST_F(Tree, PathsResolveAgainstTheProjectDirectory) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project =
        engine.newProject(solution, q("p"), directory.filePath(q("Q")), QString());
    struct Case {
        QString fileName, path;
        bool relative, inside;
    };
    const Case cases[] = {
        {q("sub/a.c"), directory.filePath(q("Q/sub/a.c")), true, true},
        {q("../a.c"), directory.filePath(q("a.c")), true, false},
        {directory.filePath(q("q/b.c")), directory.filePath(q("q/b.c")), false, true},
        {q("/elsewhere/c.c"), q("/elsewhere/c.c"), false, false},
    };
    for (const Case& c : cases) {
        ProjectElement* const file = engine.addFile(project, c.fileName);
        file->resolvePaths(commonConfiguration);
        EXPECT_EQ(file->path.normalised(), c.path);
        EXPECT_EQ(file->fileNameIsRelative, c.relative) << c.path.toStdString();
        EXPECT_EQ(file->insideProjectDirectory, c.inside) << c.path.toStdString();
        EXPECT_TRUE(file->pathValid);
    }
    EXPECT_EQ(engine.projectDirectoryOf(project), directory.filePath(q("Q")));
    EXPECT_EQ(engine.projectDirectoryOf(engine.addFile(project, q("x.c"))), directory.filePath(q("Q")));
    EXPECT_EQ(engine.projectDirectoryOf(nullptr), directory.path());
    EXPECT_TRUE(engine.projectDirectoryOf(engine.createConfiguration(project, q("D"))).isNull());
}

TEST_F(Tree, EditingTheProjectDirectoryMovesItsFiles) {
    newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const file = engine.addFile(engine.findOrAddFolder(project, q("f"), QString()), q("a.c"));
    file->resolvePaths(commonConfiguration);
    set(project, "Common", "project_directory", "unseen");
    file->resolvePaths(commonConfiguration);
    EXPECT_EQ(file->path.normalised(), directory.filePath(q("a.c")));
    int told = 0;
    QObject::connect(&engine, &ProjectSystem::projectChanged, [&](ProjectElement* changed) {
        EXPECT_EQ(changed, project);
        ++told;
    });
    ProjectDirectoryProjectPropertyValue(property("project_directory"), q("Debug"), project)
        .setValue(q("moved"));
    file->resolvePaths(commonConfiguration);
    EXPECT_EQ(file->path.normalised(), directory.filePath(q("moved/a.c")));
    EXPECT_EQ(told, 1);
}

TEST_F(Tree, ProjectsOfLinkedSolutionsHaveQualifiedNames) {
    ProjectElement* const root = newSolution("R");
    ProjectElement* const a = newLink(root, "A");
    ProjectElement* const b = newLink(a, "B");
    ProjectElement* const p = engine.newProject(b, q("p"), QString(), QString());
    EXPECT_EQ(engine.findProject(root, q("p(A,B)")), p);
    EXPECT_EQ(engine.findProject(a, q("p(B)")), p);
    EXPECT_EQ(engine.findProject(p, q("p")), p);
    EXPECT_EQ(engine.findProject(root, q("p")), nullptr);
    EXPECT_EQ(engine.solutionNames(), QStringList({q("A"), q("B"), q("R")}));
    ProjectElement* const own = newProject("own");
    EXPECT_EQ(engine.findProject(b, q("own")), own);
    EXPECT_EQ(engine.countProjects(root), 2);
    engine.removeElement(p);
    EXPECT_EQ(engine.findProject(root, q("p(A,B)")), nullptr);
    EXPECT_EQ(engine.findProject(b, q("p")), nullptr);
}

TEST_F(Tree, OfEqualNamesTheLastProjectInTreeOrderCounts) {
    ProjectElement* const root = newSolution("R");
    ProjectElement* const first = newLink(root, "A");
    ProjectElement* const second = newLink(root, "A");
    ProjectElement* const inSecond = engine.newProject(second, q("p"), QString(), QString());
    engine.newProject(first, q("p"), QString(), QString());
    EXPECT_EQ(engine.findProject(root, q("p(A)")), inSecond);
    newProject("q");
    ProjectElement* const later = newProject("q");
    EXPECT_EQ(engine.findProject(root, q("q")), later);
}

TEST_F(Tree, RenamingRefusesANameOfASibling) {
    newSolution();
    ProjectElement* const a = newProject("a");
    newProject("b");
    const auto refusal = engine.rename(a, q("b"));
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ(refusal->title, q("Rename error"));
    EXPECT_EQ(refusal->text, q("b is already in use"));
    EXPECT_FALSE(engine.rename(a, q("c")).has_value());
    EXPECT_EQ(engine.findProject(a, q("c")), a);
    EXPECT_EQ(engine.findProject(a, q("a")), nullptr);
}

TEST_F(Tree, RemovingAConfigurationReachesTheWholeSubtree) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const file = engine.addFile(engine.findOrAddFolder(project, q("f"), QString()), q("a.c"));
    engine.createConfiguration(solution, q("Debug"));
    set(project, "Debug", "c_user_include_directories", "x");
    set(file, "Debug", "c_user_include_directories", "x");
    set(file, "Release", "c_user_include_directories", "y");
    engine.removeConfiguration(solution, q("Debug"));
    EXPECT_FALSE(solution->configurations.contains(u"Debug"));
    EXPECT_FALSE(project->configurations.contains(u"Debug"));
    EXPECT_FALSE(file->configurations.contains(u"Debug"));
    EXPECT_TRUE(file->configurations.contains(u"Release"));
}

TEST_F(Tree, OfTwoConfigurationsOfOneNameTheOtherStays) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    ProjectElement* const first = engine.createConfiguration(project, q("Twice"));
    engine.removeElement(engine.createConfiguration(project, q("Twice")));
    EXPECT_EQ(project->configurations.value(u"Twice"), first);
    engine.removeElement(first);
    EXPECT_FALSE(project->configurations.contains(u"Twice"));
}

TEST_F(Tree, FindsElementsDepthFirst) {
    newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const outer = engine.findOrAddFolder(project, q("f"), QString());
    ProjectElement* const deep = engine.addFile(outer, q("x/a.c"));
    ProjectElement* const later = engine.addFile(project, q("y/a.c"));
    EXPECT_EQ(engine.findElement(project, q("a.c")), deep);
    EXPECT_EQ(engine.findFile(project, q("y/a.c")), later);
    EXPECT_EQ(engine.findFile(project, q("a.c")), nullptr);
    EXPECT_TRUE(engine.hasChildNamed(project, q("a.c")));
    EXPECT_EQ(engine.countFiles(project), 2);
    EXPECT_EQ(engine.countFiles(engine.solution()), 0) << "projects are not looked into";
}

TEST_F(Tree, FileTypes) {
    struct Case {
        const char *file, *content, *type;
    };
    const Case cases[] = {
        {"a.c", "", "C"},
        {"a.CXX", "", "C++"},
        {"a.hh", "", "Header"},
        {"a.s", "", "Assembly"},
        {"a.o", "", "Object file"},
        {"a.elf", "", "Executable"},
        {"a.a", "", "Library"},
        {"a.ld", "", "Linker Script"},
        {"a.txt", "", ""},
        {"a", "", ""},
        {"m.xml", "<?xml version=\"1.0\"?>\n<!DOCTYPE Board_Memory_Definition_File>\n<x/>", "Memory Map"},
        {"p.xml", "<!DOCTYPE Linker_Placement_File>", "Section Placement"},
        {"r.xml", "<!DOCTYPE Register_Definition_File SYSTEM>", "Register Definitions"},
        {"l.xml", "<?xml version='1.0'?>\n<!-- licence -->\n<!DOCTYPE Board_Memory_Definition_File>",
         "Memory Map"},
        {"o.xml", "<!DOCTYPE Something_Else>", ""},
        {"n.xml", "<x/>", ""},
    };
    newSolution();
    ProjectElement* const project = newProject("p");
    for (const Case& c : cases) {
        QFile file(directory.filePath(q(c.file)));
        file.open(QIODevice::WriteOnly);
        file.write(c.content);
        file.close();
        EXPECT_EQ(engine.fileType(engine.addFile(project, q(c.file)), q("Common")).toStdString(), c.type)
            << c.file;
    }
}

TEST_F(Tree, ARecognisedTypeStaysAndIsOverruledByProperties) {
    newSolution();
    ProjectElement* const file = engine.addFile(newProject("p"), q("a.c"));
    EXPECT_EQ(engine.fileType(file, q("Debug")), q("C"));
    set(file, "Debug", "c_files_are_cpp", "Yes");
    EXPECT_EQ(engine.fileType(file, q("Debug")), q("C++"));
    EXPECT_EQ(engine.fileType(file, q("Release")), q("C"));
    set(file, "Common", "file_type", "Assembly");
    EXPECT_EQ(engine.fileType(file, q("Debug")), q("Assembly"));
    set(file, "Common", "file_type", "Default");
    engine.setElementAttribute(file, keys::fileName, q("a.h"));
    EXPECT_EQ(engine.fileType(file, q("Release")), q("C"));
}

TEST_F(Tree, ADeepCopyIsATreeOfItsOwn) {
    newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const folder = engine.findOrAddFolder(project, q("f"), q("c"));
    engine.addFile(project, q("a.c"));
    const std::unique_ptr<ProjectElement> copy = project->deepCopy();
    engine.removeElement(project);
    EXPECT_EQ(name(copy.get()), "p");
    ProjectElement* const copiedFolder = engine.findFolder(copy.get(), q("f"));
    ASSERT_NE(copiedFolder, nullptr);
    EXPECT_NE(copiedFolder, folder);
    EXPECT_EQ(name(copiedFolder->lastChild() ? asProjectElement(copiedFolder->lastChild()) : copiedFolder),
              "a.c");
    EXPECT_TRUE(copy->configurations.contains(u"Common"));
}

TEST_F(Tree, AMillionLevelsAreWalkedCopiedAndDestroyed) {
    newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* deepest = project;
    for (int i = 0; i < 1000000; ++i) deepest = engine.findOrAddFolder(deepest, q("f"), QString());
    engine.addFile(deepest, q("a.c"));
    EXPECT_EQ(engine.countFiles(project), 1);
    EXPECT_EQ(project->deepCopy()->elementName(), q("p"));
}

}  // namespace
