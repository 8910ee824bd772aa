#include "project/engine_fixture.h"

namespace {

using namespace project_test;

using EngineOperations = EngineTest;

TEST_F(EngineOperations, ClosingLeavesTheEngineAsItWasMade) {
    engine.closeSolution();
    ProjectElement* const project = (newSolution(), newProject("p"));
    set(project, "Debug", "build_quietly", "No");
    EXPECT_EQ(engine.solutionNames(), QStringList(q("demo")));
    EXPECT_EQ(engine.solutionFileName(), directory.filePath(q("demo.qxProject")));
    engine.closeSolution();
    EXPECT_EQ(engine.solution(), nullptr);
    EXPECT_TRUE(engine.changeLog().isEmpty());
    EXPECT_TRUE(engine.solutionNames().isEmpty());
    EXPECT_TRUE(engine.solutionProjectNames().isEmpty());
    EXPECT_TRUE(engine.solutionFileName().isEmpty());
}

TEST_F(EngineOperations, ASolutionThatIsReplacedStaysUntilTheClose) {
    ProjectElement* const first = newSolution("first");
    set(newProject("p"), "Common", "build_quietly", "No");
    newSolution("second");
    EXPECT_EQ(engine.changeLog()[0].node()->parentElement(), first);
    EXPECT_EQ(engine.solutionNames(), QStringList(q("second")));
    engine.removeElement(engine.solution());
    EXPECT_EQ(engine.solution(), nullptr);
}

TEST_F(EngineOperations, ANewProjectBringsTheTablesUpToDate) {
    ProjectElement* const solution = newSolution();
    engine.setElementAttribute(engine.createConfiguration(solution, q("Debug")),
                               q("inherited_configurations"), q("A"));
    newProject("p");
    EXPECT_EQ(engine.inheritedConfigurations(solution, q("Debug")), QStringList(q("A")));
}

TEST_F(EngineOperations, WhatANullNodeIsAnswered) {
    EXPECT_FALSE(engine.isExecutableProject(nullptr, q("Common")));
    EXPECT_FALSE(engine.hasOutput(nullptr, q("Common")));
    EXPECT_FALSE(engine.hasBuiltOutput(nullptr, q("Common")));
    EXPECT_FALSE(engine.isExcludedFromBuild(nullptr, q("Common")));
    EXPECT_TRUE(engine.fileType(nullptr, q("Common")).isNull());
    EXPECT_TRUE(engine.projectDirectoryOf(nullptr).isNull());
    EXPECT_EQ(engine.platformName(), q("ARM"));
    EXPECT_EQ(engine.targetNumber(), 8);
}

TEST_F(EngineOperations, ExecutableProjects) {
    newSolution();
    for (const auto& [type, executable] : {std::pair("Executable", true),
                                           {"Externally Built Executable", true},
                                           {"Library", false},
                                           {"", false}}) {
        ProjectElement* const project = engine.newProject(engine.solution(), q("p"), QString(), q(type));
        EXPECT_EQ(engine.isExecutableProject(project, q("Common")), executable) << type;
    }
}

TEST_F(EngineOperations, MemorySegmentsFromTheirProperty) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    QList<MemorySegment> segments;
    EXPECT_FALSE(engine.memorySegments(project, q("Common"), segments));
    set(project, "Common", "linker_section_placements_segments",
        "FLASH RX 0x08000000 0x00010000;RAM RWX 0x20000000 256;broken RX 1;LAST R 010 1;too many words here "
        "now");
    EXPECT_TRUE(engine.memorySegments(project, q("Common"), segments));
    std::string shown;
    for (const MemorySegment& segment : segments)
        shown += QStringLiteral("%1 %2 %3 %4;")
                     .arg(segment.name)
                     .arg(static_cast<int>(segment.access))
                     .arg(segment.start, 0, 16)
                     .arg(segment.last, 0, 16)
                     .toStdString();
    EXPECT_EQ(shown, "LAST 1 8 8;RAM 0 20000000 200000ff;FLASH 1 8000000 800ffff;");
}

TEST_F(EngineOperations, FilesAreLocatedInTheirOrder) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project =
        engine.newProject(solution, q("p"), directory.filePath(q("p")), QString());
    ProjectElement* const file = engine.addFile(project, q("a.c"));
    for (const char* name : {"here/x.h", "p/user/x.h", "p/user/y.h", "p/sys/y.h", "p/sys/z.h"}) {
        const QString path = directory.filePath(q(name));
        makeDirectoryFor(path);
        QFile(path).open(QIODevice::WriteOnly);
    }
    set(file, "Common", "c_user_include_directories", "nosuch;user");
    set(project, "Common", "c_system_include_directories", "sys");
    const auto located = [&](const QString& from, const char* name, ProjectElement* node) {
        return engine.locateFile(from, q(name), node, q("Common")).remove(0, directory.path().size());
    };
    EXPECT_EQ(located(directory.filePath(q("here")), "x.h", file), q("/here/x.h"));
    EXPECT_EQ(located(QString(), "x.h", file), q("/p/user/x.h"));
    EXPECT_EQ(located(QString(), "y.h", file), q("/p/user/y.h"));
    EXPECT_EQ(located(QString(), "z.h", file), q("/p/sys/z.h"));
    EXPECT_EQ(engine.locateFile(QString(), directory.filePath(q("p/sys/z.h")), nullptr, q("Common")),
              directory.filePath(q("p/sys/z.h")));
    EXPECT_TRUE(engine.locateFile(QString(), q("x.h"), nullptr, q("Common")).isNull());
    const QString nowhere = engine.locateFile(QString(), q("nosuch.h"), file, q("Common"));
    EXPECT_TRUE(nowhere.isEmpty());
    EXPECT_FALSE(nowhere.isNull());
}

TEST_F(EngineOperations, CodeModelArgumentsFollowTheFileType) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    set(project, "Common", "code_completion_options", "-imacros;;cfg.h");
    const auto arguments = [&](const char* file) {
        return engine.codeModelArguments(engine.addFile(project, q(file)), q("Common"))
            .join(u' ')
            .toStdString();
    };
    EXPECT_EQ(arguments("a.c"), "-x c -imacros cfg.h");
    EXPECT_EQ(arguments("a.hpp"), "-x c++ -imacros cfg.h");
    EXPECT_EQ(arguments("a.s"), "-x assembler-with-cpp -imacros cfg.h");
    EXPECT_EQ(arguments("a.txt"), "-imacros cfg.h");
}

}  // namespace
