#include "project/engine_fixture.h"

namespace project_test {

using properties::BuildKind;

namespace {

class BuildOutputsTest : public EngineTest {
protected:
    BuildOutputsTest() {
        macroEngine = &macros;
        newSolution();
    }
    ~BuildOutputsTest() override { macroEngine = nullptr; }
    ProjectElement* projectOf(const char* type) {
        return engine.newProject(engine.solution(), q("app"), directory.filePath(q("src")), q(type));
    }
    BuildKind kindOf(ProjectElement* node) { return engine.classifyNode(node, q("Debug")); }
    void set(ProjectElement* node, const char* key, const char* value) {
        EngineTest::set(node, "Common", key, value);
    }

    MacroEngine macros;
};

TEST_F(BuildOutputsTest, ProjectsGoByTheirType) {
    struct Row {
        const char* type;
        const char* key;  ///< set to "x"
        bool hasCppFile;
        BuildKind kind;
    };
    const Row rows[] = {
        {"Library", "", false, BuildKind::Archive},
        {"Object file", "", false, BuildKind::NoBuild},
        {"Staging", "", false, BuildKind::Stage},
        {"Combining", "", false, BuildKind::Combine},
        {"Executable", "", false, BuildKind::Link},
        {"Externally Built Executable", "", true, BuildKind::ExternalBuild},
        {"Externally Built Executable", "external_link_command", false, BuildKind::Link},
        {"Externally Built Executable", "external_cpp_link_command", false, BuildKind::ExternalBuild},
        {"Externally Built Executable", "external_cpp_link_command", true, BuildKind::Link},
        {"Externally Built Library", "external_link_command", false, BuildKind::ExternalBuild},
        {"Externally Built Library", "external_archive_command", false, BuildKind::Archive},
        {"Externally Built Object file", "external_link_command", false, BuildKind::NoBuild},
        {"", "", false, BuildKind::NoBuild},
    };
    for (const Row& row : rows) {
        ProjectElement* const project = projectOf(row.type);
        if (*row.key) set(project, row.key, "x");
        engine.addFile(project, row.hasCppFile ? q("a.cc") : q("a.c"));
        EXPECT_EQ(kindOf(project), row.kind) << row.type << " " << row.key;
    }
}

TEST_F(BuildOutputsTest, ACppLinkGivesWayToABuildFile) {
    ProjectElement* const project = projectOf("Externally Built Executable");
    engine.addFile(project, q("a.cpp"));
    set(project, "external_cpp_link_command", "g++");
    set(project, "external_build_file_name", "app.elf");
    EXPECT_EQ(kindOf(project), BuildKind::ExternalBuild);
}

TEST_F(BuildOutputsTest, FilesGoByProjectAndType) {
    struct Row {
        const char* projectType;
        const char* file;
        const char* key;  ///< set to "Yes" on the file
        BuildKind kind;
    };
    const Row rows[] = {
        {"Executable", "a.c", "", BuildKind::CompileC},
        {"Executable", "a.c", "c_files_are_cpp", BuildKind::CompileCpp},
        {"Executable", "a.CXX", "", BuildKind::CompileCpp},
        {"Executable", "a.s", "", BuildKind::Assemble},
        {"Executable", "a.h", "", BuildKind::NoBuild},
        {"Executable", "a.o", "", BuildKind::ExternalBuild},
        {"Executable", "a.a", "", BuildKind::ExternalBuild},
        {"Executable", "a.elf", "", BuildKind::ExternalBuild},
        {"Executable", "a.ld", "", BuildKind::NoBuild},
        {"Executable", "a.c", "build_exclude_from_build", BuildKind::Excluded},
        {"Staging", "a.h", "", BuildKind::Stage},
        {"Staging", "a.h", "build_exclude_from_build", BuildKind::Excluded},
        {"Combining", "a.c", "", BuildKind::NoBuild},
        {"Externally Built Library", "a.c", "", BuildKind::NoBuild},
        {"Externally Built Library", "a.c", "external_c_compile_command", BuildKind::CompileC},
        {"Externally Built Library", "a.cc", "external_c_compile_command", BuildKind::NoBuild},
        {"Externally Built Executable", "a.s", "external_assemble_command", BuildKind::Assemble},
    };
    for (const Row& row : rows) {
        ProjectElement* const file = engine.addFile(projectOf(row.projectType), q(row.file));
        if (*row.key) set(file, row.key, "Yes");
        EXPECT_EQ(kindOf(file), row.kind) << row.projectType << " " << row.file << " " << row.key;
    }
    EXPECT_EQ(kindOf(engine.addFile(engine.solution(), q("a.c"))), BuildKind::NoBuild);
    EXPECT_EQ(kindOf(engine.addFolder(projectOf("Library"), q("f"), QString())), BuildKind::NoBuild);
}

TEST_F(BuildOutputsTest, OutputsAreNamedByKind) {
    ProjectElement* const app = projectOf("Executable");
    ProjectElement* const file = engine.addFile(app, q("sub/a.c"));
    const std::string base = directory.path().toStdString() + "/src/";
    struct Row {
        ProjectElement* node;
        BuildKind kind;
        const char* key;  ///< set on the project
        const char* value;
        const char* relative;  ///< null: null text
    };
    const Row rows[] = {
        {file, BuildKind::NoBuild, "", "", nullptr},
        {file, BuildKind::Excluded, "", "", nullptr},
        {file, BuildKind::CompileC, "", "", "Output/Debug/Obj/app/a.o"},
        {app, BuildKind::Link, "", "", "Output/Debug/Exe/app.elf"},
        {file, BuildKind::ExternalBuild, "", "", "sub/a.c"},
        {app, BuildKind::ExternalBuild, "", "", nullptr},
        {app, BuildKind::ExternalBuild, "external_build_file_name", "$(ProjectName).bin", "app.bin"},
        {app, BuildKind::Stage, "", "", nullptr},
        {file, BuildKind::Stage, "", "", "Output/Debug/Exe/sub/a.c"},
        {file, BuildKind::Stage, "stage_output_filepath", "", nullptr},
        {file, BuildKind::Combine, "", "", nullptr},
        {app, BuildKind::Combine, "", "", nullptr},
        {app, BuildKind::Combine, "combine_output_filepath", "all.txt", "all.txt"},
    };
    for (const Row& row : rows) {
        if (*row.key) set(app, row.key, row.value);
        const QString name = engine.outputFileName(row.kind, row.node, q("Debug"), false);
        EXPECT_EQ(name.isNull(), row.relative == nullptr) << static_cast<int>(row.kind) << " " << row.key;
        if (!row.relative) continue;
        EXPECT_EQ(name.toStdString(), row.relative);
        EXPECT_EQ(engine.outputFileName(row.kind, row.node, q("Debug"), true).toStdString(),
                  base + row.relative);
    }
}

TEST_F(BuildOutputsTest, AMapStandsBesideItsTarget) {
    ProjectElement* const app = projectOf("Executable");
    QString map;
    EXPECT_TRUE(engine.mapFileName(app, q("Debug"), q("out/app.x.elf"), map));
    EXPECT_EQ(map, q("out/app.map"));
    set(app, "linker_map_file", "No");
    EXPECT_FALSE(engine.mapFileName(app, q("Debug"), q("out/app.elf"), map));
}

}  // namespace

}  // namespace project_test
