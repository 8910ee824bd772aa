
#include "build/build_fixture.h"
#include "build/clean_builder.h"

namespace build_test {

namespace {

using Lines = std::vector<std::string>;

class PlannerTest : public BuildTest {
protected:
    /// A project whose compile commands are short.
    ProjectElement* external(const char* name, const char* type) {
        ProjectElement* const project = newProject(name, type);
        set(project, "external_c_compile_command", "cc $(RelInputPath) $(RelTargetPath)");
        set(project, "external_cpp_compile_command", "c++ $(RelInputPath)");
        set(project, "external_assemble_command", "as $(RelInputPath)");
        set(project, "build_object_file_name", "$(InputName).o");
        set(project, "build_output_file_name", "$(ProjectName).out");
        return project;
    }
    static constexpr std::uint32_t quiet = BuildFlags::Quiet;
    static constexpr std::uint32_t ask = BuildFlags::Quiet | BuildFlags::NoTools;
};

TEST_F(PlannerTest, CompilesWhatIsOutOfDate) {
    ProjectElement* const file = addFile(external("app", "Externally Built Object file"), "a.c");
    EXPECT_EQ(plan(file), (Lines{"[Checking Source File Exists]", "error: @/a.c does not exist.", "]"}));
    EXPECT_FALSE(didWork);
    write("a.c");
    const Lines compile{"[Compiling ‘a.c’]", "@: cc|a.c|a.o -> @/a.o", "]"};
    EXPECT_EQ(plan(file, quiet), compile);
    EXPECT_EQ(plan(file), (Lines{"[Checking ‘a.c’]", "reason: a.o does not exist.", "]", compile[0],
                                 compile[1], compile[2]}));
    EXPECT_EQ(plan(file, ask), Lines());
    EXPECT_TRUE(didWork);
    writeAt("a.o", 20);
    EXPECT_EQ(plan(file), (Lines{"[Checking ‘a.c’]", "up to date: 'a.o' is up to date", "]"}));
    EXPECT_FALSE(didWork);
    EXPECT_EQ(plan(file, quiet | BuildFlags::Rebuild), compile);
    EXPECT_EQ(plan(file, BuildFlags::Rebuild | BuildFlags::Clean | quiet | BuildFlags::NoTools),
              (Lines{"[Cleaning ‘a.c’]", "@: rm|@/a.o", "]"}));
    set(file, "build_always_rebuild", "Yes");
    EXPECT_EQ(plan(file, quiet), compile);
    set(file, "build_exclude_from_build", "Yes");
    EXPECT_EQ(plan(file), Lines());
    EXPECT_FALSE(didWork);
}

TEST_F(PlannerTest, GivesExternalCompilersTheirMacros) {
    ProjectElement* const project = external("app", "Externally Built Object file");
    write("a.c");
    write("b.cpp");
    write("c.s");
    set(project, "c_preprocessor_definitions", "A;B=1");
    set(project, "c_preprocessor_undefinitions", "U");
    set(project, "c_user_include_directories", "i j;k");
    set(project, "c_additional_options", "-both");
    set(project, "c_only_additional_options", "-c");
    set(project, "cpp_only_additional_options", "-cpp");
    set(project, "asm_additional_options", "-asm");
    const char* const text =
        "x $(Defines) $(Undefines) $(Includes) $(COptions) $(COnlyOptions) "
        "$(CppOnlyOptions) $(AsmOptions) $(RelDependencyPath) $(TargetPath)";
    set(project, "external_c_compile_command", text);
    set(project, "external_cpp_compile_command", text);
    set(project, "external_assemble_command", text);
    const std::string head = "@: x|-DA|-DB=1|-UU|-Ii j|-Ik|";
    const std::string unknown[] = {"$(COptions)", "$(COnlyOptions)", "$(CppOnlyOptions)", "$(AsmOptions)"};
    const auto tail = [](const std::string& name) {
        return "|Output/Debug/Obj/app/" + name + ".d|@/" + name + ".o -> @/" + name + ".o";
    };
    EXPECT_EQ(plan(addFile(project, "a.c"), quiet)[1],
              head + "-both|-c|" + unknown[2] + '|' + unknown[3] + tail("a"));
    EXPECT_EQ(plan(addFile(project, "b.cpp"), quiet)[1],
              head + "-both|" + unknown[1] + "|-cpp|" + unknown[3] + tail("b"));
    const Lines assembled = plan(addFile(project, "c.s"), quiet);
    EXPECT_EQ(assembled[0], "[Assembling ‘c.s’]");
    EXPECT_EQ(assembled[1], head + unknown[0] + '|' + unknown[1] + '|' + unknown[2] + "|-asm" + tail("c"));
}

TEST_F(PlannerTest, RunsCommandsAroundACompilation) {
    ProjectElement* const project = newProject("app", "Object file");
    write("a.y");
    ProjectElement* const file = addFile(project, "a.y");
    set(file, "file_type", "C");
    set(file, "compile_pre_build_command", "yacc $(RelInputPath)");
    set(file, "compile_pre_build_command_output_file_name", "gen/a.c");
    set(file, "compile_post_build_command", "strip $(RelTargetPath)");
    set(file, "build_object_file_name", "a.o");
    set(file, "analyze_after_compile", "Yes");
    EXPECT_EQ(plan(file, quiet | BuildFlags::NoDependencyFiles),
              (Lines{"[Pre-compile command ]", "@: yacc|a.y -> gen/a.c", "]", "[Compiling ‘a.y’]",
                     "@: /opt/atelis/bin/cc|-c|-xc|gen/a.c|-g|-I.|-o|a.o -> @/a.o", "]", "[Analyzing a.y]",
                     "@: /opt/atelis/llvm/bin/clang-tidy|@/a.y|-checks=clang-analyzer-*,-clang-analyzer-"
                     "cplusplus*|-quiet|--|-x|c|-x|c",
                     "]", "[Post-compile command ]", "@: strip|a.o", "]"}));
    EXPECT_EQ(plan(file, BuildFlags::AnalyzeOnly).size(), 3U);
}

TEST_F(PlannerTest, ArchivesAndRunsWhatFollows) {
    ProjectElement* const project = newProject("lib", "Library");
    set(project, "build_output_file_name", "lib.a");
    addFile(project, "ready.o");
    write("ready.o");
    EXPECT_EQ(plan(project, quiet),
              (Lines{"[Archiving ‘lib.a’]",
                     "@: /opt/atelis/bin/cc|-inputfiles|Output/Debug/Obj/lib/lib.ind|-ar|-o|lib.a -> @/lib.a",
                     "]"}));
    set(project, "project_type", "Externally Built Library");
    set(project, "external_archive_command", "ar $(Objects)&&ranlib $(RelTargetPath)");
    set(project, "archive_post_build_command", "x && y");
    EXPECT_EQ(plan(project, quiet),
              (Lines{"[Archiving ‘lib.a’]", "@: ar|ready.o -> @/lib.a", "@: ranlib|lib.a -> @/lib.a", "]",
                     "[Post-archive command ]", "@: x", "@: y", "]"}));
    set(project, "external_objects_file_name", "objects");
    plan(project, quiet);
    EXPECT_EQ(read("objects"), "\"ready.o\"\n");
    writeAt("lib.a", 100);
    EXPECT_EQ(plan(project), (Lines{"[Checking ‘lib’]", "up to date: 'lib.a' is up to date", "]"}));
    EXPECT_EQ(plan(project, ask | BuildFlags::Clean | BuildFlags::Rebuild),
              (Lines{"[Cleaning ‘lib’]", "@: rm|@/lib.a", "]"}));
}

TEST_F(PlannerTest, LinksWithWhatTheProjectDependsOn) {
    ProjectElement* const library = newProject("lib", "Library");
    set(library, "build_output_file_name", "lib.a");
    set(library, "project_dependencies", "parts;app");
    ProjectElement* const parts = newProject("parts", "Object file");
    set(parts, "build_object_file_name", "$(InputName).o");
    addFile(parts, "part.c");
    ProjectElement* const app = external("app", "Externally Built Executable");
    set(app, "external_link_command", "ld $(Objects) $(LinkOptions) $(RelMapPath)");
    set(app, "linker_pre_build_command", "before");
    set(app, "linker_post_build_command", "after && then $(PostLinkOutputFilePath)");
    set(app, "linker_post_build_command_output_file", "app.bin");
    set(app, "linker_additional_options", "-s");
    set(app, "linker_additional_files", "extra.a;none.a");
    set(app, "project_dependencies", "l*;missing");
    write("extra.a");
    addFile(app, "ready.o");
    EXPECT_EQ(plan(app, quiet),
              (Lines{"[Checking Additional Linker Inputs ‘app’]", "warning: none.a does not exist.", "]",
                     "[Pre-link command ]", "@: before", "]", "[Linking ‘app.out’]",
                     "@: ld|ready.o|extra.a|@/lib.a|@/part.o|-s|app.map -> @/app.out", "]",
                     "[Post-link command ]", "@: after", "@: then|app.bin", "]"}));
    set(app, "link_dependent_projects", "No");
    EXPECT_THAT(plan(app, quiet), testing::Contains("@: ld|ready.o|extra.a|-s|app.map -> @/app.out"));
    set(app, "external_link_command", "$(Nothing:)");
    EXPECT_THAT(plan(app, quiet), testing::Not(testing::Contains("[Linking ‘app.out’]")));
    EXPECT_TRUE(didWork);
}

TEST_F(PlannerTest, LinksLibrariesUnderTheNamesThatTheyWereMadeBy) {
    write("tools.xml", "<root><property name='build_output_directory' default='mine'/></root>");
    ProjectElement* const library = newProject("lib", "Library");
    set(library, "build_generic_options_file_name", "tools.xml");
    ProjectElement* const app = newProject("app", "Executable");
    set(app, "project_dependencies", "lib");
    engine.loadToolDescriptions(library, debug);
    const QString archive = engine.outputFileName(project::BuildKind::Archive, library, debug, true);
    EXPECT_EQ(archive, path("mine/lib.a"));
    engine.loadToolDescriptions(app, debug);
    QStringList inputs;
    engine.inputsOfNode(app, debug, true, false, true, inputs);
    EXPECT_EQ(inputs, QStringList{archive});
    EXPECT_EQ(engine.toolDescription().path(), QString());
}

TEST_F(PlannerTest, ALinkIsStaleByInputsLayoutAndFurtherOutputs) {
    ProjectElement* const app = external("app", "Externally Built Executable");
    set(app, "external_link_command", "ld");
    set(app, "linker_memory_map_file", "map.xml");
    set(app, "linker_output_format", "hex");
    addFile(app, "ready.o");
    for (const char* file : {"ready.o", "map.xml", "app.map"}) writeAt(file, 10);
    writeAt("app.out", 100);
    EXPECT_THAT(plan(app), testing::Contains("warning: @/app.hex does not exist."));
    EXPECT_EQ(plan(app, ask), Lines());
    EXPECT_FALSE(didWork);
    write("app.hex");
    EXPECT_THAT(plan(app), testing::Contains("up to date: 'app.out' is up to date"));
    ASSERT_TRUE(QFile::remove(path("app.map")));
    EXPECT_THAT(plan(app), testing::Contains("reason: @/app.map does not exist."));
    plan(app, quiet);
    EXPECT_FALSE(didWork);
    writeAt("map.xml", 200);
    plan(app, quiet);
    EXPECT_TRUE(didWork);
    EXPECT_EQ(plan(app, ask | BuildFlags::Clean),
              (Lines{"[Cleaning ‘app’]", "@: rm|@/app.out", "@: rm|@/app.hex", "]"}));
}

TEST_F(PlannerTest, RefusesAnObjectGivenTwiceAndAnOutputNotAccepted) {
    ProjectElement* const app = external("app", "Externally Built Executable");
    set(app, "external_link_command", "ld");
    addFile(app, "x/a.o");
    ProjectElement* const second = addFile(app, "x/a.o");
    EXPECT_EQ(plan(app), (Lines{"[Checking For Duplicate Object Files]",
                                "error: The object file x/a.o has been supplied more than once", "]"}));
    EXPECT_FALSE(didWork);
    engine.removeElement(second);
    RecordingBuilder builder(directory.path());
    builder.accepts = false;
    Idler idler;
    EXPECT_FALSE(engine.buildNode(app, debug, &builder, &idler, quiet));
    EXPECT_TRUE(engine.buildFailed);
}

TEST_F(PlannerTest, AChildsWorkMakesItsParentStale) {
    ProjectElement* const app = external("app", "Externally Built Executable");
    set(app, "external_link_command", "ld");
    ProjectElement* const folder = engine.addFolder(app, q("src"), QString());
    addFile(engine.addFolder(folder, q("deep"), QString()), "a.c");
    write("a.c");
    writeAt("app.out", 100);
    EXPECT_EQ(plan(app, quiet), (Lines{"[Compiling ‘a.c’]", "@: cc|a.c|a.o -> @/a.o", "]",
                                       "[Linking ‘app.out’]", "@: ld -> @/app.out", "]"}));
    EXPECT_EQ(plan(folder, quiet).size(), 3U);
    EXPECT_TRUE(didWork);
    EXPECT_EQ(plan(app, quiet | BuildFlags::NoChildren),
              (Lines{"[Linking ‘app.out’]", "@: ld -> @/app.out", "]"}));
    EXPECT_EQ(engine.countBuildSteps(app, debug, 0), 2);
    EXPECT_EQ(engine.countBuildSteps(app, debug, BuildFlags::NoChildren), 1);
}

TEST_F(PlannerTest, StagesFilesAndThenTheProject) {
    ProjectElement* const project = newProject("stage", "Staging");
    set(project, "stage_output_filepath", "out/$(InputFileName)");
    set(project, "stage_post_build_command", "done");
    ProjectElement* const file = addFile(project, "a.txt");
    write("a.txt");
    EXPECT_EQ(plan(project, quiet),
              (Lines{"[Copying ‘a.txt’]", "@: cp|a.txt|@/out/a.txt -> @/out/a.txt",
                     "@: chmod|+w|@/out/a.txt -> @/out/a.txt", "]", "[Post-stage command]", "@: done", "]"}));
    set(file, "stage_set_readonly", "Yes");
    EXPECT_EQ(plan(file, quiet)[2], "@: chmod|-w|@/out/a.txt -> @/out/a.txt");
    set(file, "stage_set_readonly", "Don't");
    EXPECT_EQ(plan(file, quiet).size(), 3U);
    set(file, "stage_command", "");
    EXPECT_EQ(plan(project), (Lines{"[Checking ‘a.txt’]", "reason: out/a.txt does not exist.", "]",
                                    "[Copying ‘a.txt’]", "up to date: nothing to do", "]"}));
    EXPECT_FALSE(didWork);
    writeAt("out/a.txt", 100);
    EXPECT_EQ(plan(file), (Lines{"[Checking ‘a.txt’]", "up to date: 'out/a.txt' is up to date.", "]"}));
    ASSERT_TRUE(QFile::remove(path("a.txt")));
    EXPECT_EQ(plan(file)[1], "reason: @/a.txt does not exist.");
}

TEST_F(PlannerTest, CombinesItsFiles) {
    ProjectElement* const project = newProject("sum", "Combining");
    set(project, "combine_output_filepath", "sum.txt");
    set(project, "combine_command", "cat $(CombiningRelInputPaths)&&sign $(CombiningOutputFilePath)");
    addFile(project, "a b.c");
    set(addFile(project, "no.c"), "build_exclude_from_build", "Yes");
    addFile(engine.addFolder(project, q("f"), QString()), "c.h");
    write("a b.c");
    write("c.h");
    EXPECT_EQ(plan(project, quiet),
              (Lines{"[Combining ‘sum’]", "@: cat|a b.c|c.h -> @/sum.txt", "@: sign|@/sum.txt -> @/sum.txt",
                     "@: chmod|+w|@/sum.txt -> @/sum.txt", "]"}));
    writeAt("sum.txt", 100);
    EXPECT_EQ(plan(project), (Lines{"[Checking ‘sum’]", "up to date: 'sum.txt' is up to date", "]"}));
    writeAt("c.h", 200);
    plan(project, quiet);
    EXPECT_TRUE(didWork);
}

TEST_F(PlannerTest, ExternalProjectsDecideForThemselves) {
    ProjectElement* const project = newProject("ext", "Externally Built Executable");
    set(project, "external_build_command", "make");
    set(project, "external_clean_command", "make clean");
    set(project, "external_build_file_name", "ext.elf");
    const Lines build{"[Running Build command ext]", "@: make -> @/ext.elf", "]"};
    EXPECT_EQ(plan(project, quiet), build);
    EXPECT_EQ(plan(project, quiet | BuildFlags::Clean),
              (Lines{"[Running Clean command ext]", "@: make|clean", "]", build[0], build[1], build[2]}));
    EXPECT_EQ(plan(project, ask), Lines());
    EXPECT_FALSE(didWork);
    EXPECT_EQ(engine.countBuildSteps(project, debug, 0), 0);
}

TEST_F(PlannerTest, AUnityFolderIsOneSourceFile) {
    ProjectElement* const project = external("app", "Externally Built Object file");
    ProjectElement* const folder = engine.addFolder(project, q("src"), QString());
    set(folder, "unity_build_file_name", "gen/unity.c");
    set(folder, "unity_build_exclude_filter", "slow*;z");
    for (const char* name : {"a.c", "slow1.c", "b.c", "no.c"}) {
        ProjectElement* const file = addFile(folder, name);
        write(name);
        if (*name == 'n') set(file, "build_exclude_from_build", "Yes");
    }
    EXPECT_EQ(plan(folder, ask | BuildFlags::Clean), (Lines{"[Cleaning ‘src’]", "]"}));
    EXPECT_EQ(plan(folder, quiet),
              (Lines{"[Compiling ‘slow1.c’]", "@: cc|slow1.c|slow1.o -> @/slow1.o", "]", "[Compiling ‘src’]",
                     "@: cc|@/gen/unity.c|unity.o -> @/unity.o", "]"}));
    const std::string base = directory.path().toStdString();
    EXPECT_EQ(read("gen/unity.c"), "#include \"" + base + "/a.c\"\n#include \"" + base + "/b.c\"\n");
    EXPECT_EQ(engine.countBuildSteps(project, debug, 0), 2);
    addFile(folder, "slow.ready.o");
    for (const char* made : {"unity.o", "slow1.o", "a.o", "slow.ready.o"}) write(made);
    EXPECT_EQ(plan(folder, ask | BuildFlags::Clean),
              (Lines{"[Cleaning ‘src’]", "@: rm|@/gen/unity.c", "@: rm|@/unity.o", "@: rm|@/slow1.o", "]"}));
    set(folder, "unity_build_exclude_filter", "*");
    plan(folder, quiet | BuildFlags::Rebuild);
    EXPECT_EQ(read("gen/unity.c"), "");
    EXPECT_EQ(plan(project, quiet | BuildFlags::NoUnity | BuildFlags::Rebuild).size(), 4U * 3U);
}

TEST_F(PlannerTest, CleanBuildersDeleteAndDoNothingElse) {
    write("a.o");
    ASSERT_TRUE(QFile::setPermissions(path("a.o"), QFile::ReadOwner));
    class Cleaner : public CleanBuilder {
    public:
        void error(const QString& text) override { errors.append(text); }
        QStringList errors;
    };
    Cleaner builder;
    builder.start(directory.path(), {q("touch"), path("b.o")}, QString());
    builder.start(directory.path(), {q("rm")}, QString());
    builder.start(directory.path(), {q("rm"), path("a.o")}, QString());
    EXPECT_FALSE(exists("a.o"));
    EXPECT_FALSE(exists("b.o"));
    write("kept");
    ASSERT_TRUE(QFile::setPermissions(path("kept"), QFile::ReadOwner));
    ASSERT_TRUE(QFile::link(path("kept"), path("link")));
    builder.run(directory.path(), {q("rm"), q("link")}, QString());
    EXPECT_FALSE(QFile::permissions(path("kept")) & QFile::WriteOwner)
        << "the mode of a link's target is changed";
    EXPECT_EQ(builder.errors, QStringList());
    write("full/file");
    builder.run(directory.path(), {q("rm"), q("full")}, QString());
    EXPECT_EQ(builder.errors, QStringList{q("Cannot delete file: ") + path("full")});
}

TEST_F(PlannerTest, ARehearsalWritesNothingAndKnowsWhatWouldBeMade) {
    ProjectElement* const app = external("app", "Externally Built Executable");
    set(app, "external_link_command", "ld @$(ObjectsFilePath)");
    set(app, "external_objects_file_name", "gen/objects");
    set(app, "linker_post_build_command", "after");
    set(app, "linker_post_build_command_wd", "gen/made");
    ProjectElement* const folder = engine.addFolder(app, q("src"), QString());
    set(folder, "unity_build_file_name", "gen/unity.c");
    addFile(folder, "a.c");
    write("a.c");
    Rehearsal rehearsal;
    engine.rehearsal = &rehearsal;
    EXPECT_EQ(plan(app, quiet), (Lines{"[Compiling ‘src’]", "@: cc|@/gen/unity.c|unity.o -> @/unity.o", "]",
                                       "[Linking ‘app.out’]", "@: ld|@@/gen/objects -> @/app.out", "]",
                                       "[Post-link command ]", "@/gen/made: after", "]"}));
    EXPECT_FALSE(exists("gen"));
    write("unity.o");
    writeAt("app.out", 100);
    plan(app, quiet | BuildFlags::NoChildren);
    EXPECT_FALSE(didWork);
    rehearsal.willMake(path("./unity.o"));
    EXPECT_THAT(plan(app, BuildFlags::NoChildren), testing::Contains("reason: unity.o is made anew."));
    engine.rehearsal = nullptr;
}

TEST_F(PlannerTest, NothingFollowsAFileThatCannotBeWritten) {
    write("file");
    for (const char* type : {"Externally Built Executable", "Externally Built Library"}) {
        ProjectElement* const project = external(type + 17, type);
        set(project, "external_link_command", "ld");
        set(project, "external_archive_command", "ar");
        set(project, "linker_post_build_command", "after");
        set(project, "archive_post_build_command", "after");
        set(project, "external_objects_file_name", "file/objects");
        EXPECT_EQ(plan(project, quiet),
                  (Lines{"[Creating Objects File]", "error: Cannot open file: @/file/objects", "]"}));
        EXPECT_FALSE(didWork);
    }
}

}  // namespace

}  // namespace build_test
