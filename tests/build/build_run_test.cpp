#include "build/atelis_builder.h"
#include "build/build_fixture.h"
#include "build/plan_runner.h"
#include "build/project_plan.h"

#include <chrono>
#include <thread>

namespace build_test {

namespace {

using Lines = std::vector<std::string>;

/// Writes down projects as they begin and end.
class RecordingHost : public Idler {
public:
    void beginProject(ProjectElement* node, const QString& title, const QString&, int stepCount) override {
        lines.push_back("begin " + node->elementName().toStdString() + ' ' + std::to_string(stepCount));
        titles.push_back(title.toStdString());
    }
    void stepDone(ProjectElement* node, const QString&) override {
        lines.push_back("step " + node->elementName().toStdString());
    }
    void endProject(ProjectElement* node, const QString&) override {
        lines.push_back("end " + node->elementName().toStdString());
    }
    void buildDone() override { lines.push_back("done"); }

    Lines lines;
    Lines titles;
};

/// The messages and outputs of all workers.
class RecordingLog : public BuildLog {
public:
    void stepBegan(const void*, const QString& title) override { lines.push_back('[' + title.toStdString()); }
    void line(const void*, LogLine kind, std::string_view text) override {
        if (kind == LogLine::Command) return;
        lines.push_back((kind == LogLine::Error ? "error: " : "") + std::string(text));
    }
    void stepEnded(const void*) override { lines.push_back("]"); }
    Lines lines;
};

class BuildRunTest : public BuildTest {
protected:
    /// A library of files that a shell compiles by the text.
    ProjectElement* shellProject(const char* name, const char* text,
                                 std::initializer_list<const char*> files) {
        ProjectElement* const project = newProject(name, "Externally Built Library");
        set(project, "external_archive_command", "sh -c \": > $(RelTargetPath)\"");
        set(project, "build_output_file_name", "out/$(ProjectName)/lib.a");
        set(project, "external_c_compile_command", (std::string("sh -c \"") + text + '"').c_str());
        set(project, "build_object_file_name", "out/$(ProjectName)/$(InputName).o");
        for (const char* file : files) {
            addFile(project, file);
            write(file);
        }
        // The clock of the file system may lag behind that of the changes.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return project;
    }
    BuildResult build(ProjectElement* node, std::size_t workerCount,
                      std::uint32_t flags = BuildFlags::Quiet) {
        std::vector<std::unique_ptr<AtelisBuilder>> owned;
        std::vector<Builder*> workers;
        for (std::size_t i = 0; i < workerCount; ++i) {
            owned.push_back(std::make_unique<AtelisBuilder>(engine, log));
            workers.push_back(owned.back().get());
        }
        return engine.build(node, debug, workers, host, flags, true, false);
    }
    /// The plan of the nodes as text: project items in brackets, files by name, "|" for barriers.
    std::string planned(std::initializer_list<ProjectElement*> nodes, bool wholeProject, bool batch = false) {
        PlanQueue queue;
        ProjectPlan plan(engine, {0, wholeProject, true}, builder, host, queue);
        for (ProjectElement* node : nodes) plan.add(node, debug, batch);
        std::string text;
        for (const PlanItem& item : queue.items()) {
            if (!text.empty()) text += ' ';
            const std::string name = item.isBarrier() ? "|" : item.node->elementName().toStdString();
            text += item.has(BuildFlags::ProjectBegin) ? "<" + name
                    : item.has(BuildFlags::ProjectEnd) ? name + ">"
                                                       : name;
            if (item.has(BuildFlags::NoChildren)) text += '.';
            if (batch) text += ':' + item.configuration.toStdString();
        }
        return text;
    }

    RecordingBuilder builder{directory.path()};
    RecordingHost host;
    RecordingLog log;
};

TEST_F(BuildRunTest, ProjectsFollowWhatTheyDependOn) {
    ProjectElement* const app = newProject("app", "Executable");
    ProjectElement* const library = newProject("lib", "Library");
    ProjectElement* const stage = newProject("stage", "Staging");
    ProjectElement* const off = newProject("off", "Library");
    set(app, "project_dependencies", "lib;stage;\noff");
    set(stage, "project_dependencies", "lib");
    set(off, "build_exclude_from_build", "Yes");
    addFile(app, "a.c");
    ProjectElement* const folder = engine.addFolder(app, q("f"), QString());
    addFile(engine.addFolder(app, q("g"), QString()), "b.c");
    set(folder, "unity_build_file_name", "u.c");
    addFile(folder, "c.c");
    EXPECT_EQ(planned({app, library}, true), "<lib lib> | <stage stage> | | <app app>");
    EXPECT_EQ(planned({app}, false), "<lib | lib>. | <stage | stage>. | | <app a.c f b.c | app>.");
    set(library, "project_can_build_in_parallel", "No");
    EXPECT_EQ(planned({app}, true), "| <lib lib> | | <stage stage> | | <app app>");
    EXPECT_EQ(planned({off}, true), "");
}

TEST_F(BuildRunTest, DependencyProblemsAreWarnings) {
    ProjectElement* const a = newProject("a", "Library");
    ProjectElement* const b = newProject("b", "Library");
    ProjectElement* const cyclic = newProject("c", "Library");
    set(a, "project_dependencies", "none;b;other");
    set(b, "project_dependencies", "c");
    set(cyclic, "project_dependencies", "a");
    EXPECT_EQ(planned({a}, true), "<c c> | <b b> | <a a>");
    EXPECT_EQ(
        builder.lines,
        (Lines{"[Dependency error detected in ‘a’]", "warning: Can't find project ‘none’",
               "[Dependency error detected in ‘c’]", "warning: Project dependency cycle: a -> b -> c -> a",
               "]", "warning: Can't find project ‘other’", "]"}));
    builder.lines.clear();
    PlanQueue queue;
    ProjectPlan(engine, {0, true, true}, builder, host, queue).add(b, q("Unknown"), false);
    EXPECT_EQ(builder.lines[1], "warning: Configuration ‘Unknown’ doesn't apply to dependent project ‘c’");
}

TEST_F(BuildRunTest, AWildcardClosesOneCycleForEachProject) {
    constexpr int count = 150;
    ProjectElement* first = nullptr;
    for (int i = 0; i < count; ++i) {
        ProjectElement* const each = newProject(("p" + std::to_string(i)).c_str(), "Library");
        set(each, "project_dependencies", "p*");
        if (!first) first = each;
    }
    PlanQueue queue;
    ProjectPlan(engine, {0, true, true}, builder, host, queue).add(first, debug, false);
    const auto isWarning = [](const std::string& line) { return line.starts_with("warning"); };
    EXPECT_EQ(std::count_if(builder.lines.begin(), builder.lines.end(), isWarning), count - 1);
    for (const std::string& line : builder.lines) EXPECT_LT(line.size(), 1000U);
}

TEST_F(BuildRunTest, AbandonedPlanningClosesItsSteps) {
    class Terminator : public RecordingHost {
    public:
        explicit Terminator(BuildSystem& system) : system_(system) {}
        void idle() override {
            if (++turns_ == 2) system_.terminateBuild();
        }

    private:
        BuildSystem& system_;
        int turns_ = 0;
    };
    ProjectElement* const app = newProject("app", "Library");
    set(app, "project_dependencies", "none;other");
    Terminator terminator(engine);
    PlanQueue queue;
    ProjectPlan(engine, {0, true, true}, builder, terminator, queue).add(app, debug, false);
    EXPECT_EQ(builder.lines,
              (Lines{"[Dependency error detected in ‘app’]", "warning: Can't find project ‘none’", "]"}));
    EXPECT_TRUE(queue.isEmpty());
}

TEST_F(BuildRunTest, ABatchTakesEachProjectsConfigurations) {
    ProjectElement* const app = newProject("app", "Library");
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"debug", "<app:Debug app>:Debug"},
        {"R*;none", "<app:Release app>:Release"},
        {"r*", ""},
        {"Common", "<app:Debug app>:Debug <app:Release app>:Release"},
    };
    for (const auto& [value, plan] : rows) {
        set(app, "batch_build_configurations", value);
        EXPECT_EQ(planned({app}, true, true), plan) << value;
    }
}

TEST_F(BuildRunTest, ALongChainIsPlannedInLinearTime) {
    constexpr int count = 3000;
    ProjectElement* last = nullptr;
    for (int i = 0; i < count; ++i) {
        const QString name = QString::number(i);
        last = engine.newProject(engine.solution(), name, directory.path(), q("Library"));
        if (i > 0)
            engine.setPropertyValue(last, engine.schema().general.project_dependencies, q("Common"),
                                    QString::number(i - 1));
    }
    PlanQueue queue;
    ProjectPlan(engine, {0, true, true}, builder, host, queue).add(last, debug, false);
    EXPECT_EQ(queue.items().size(), 3U * count - 1);
}

TEST_F(BuildRunTest, TitlesSayWhatIsDone) {
    ProjectElement* const app = newProject("app", "Library");
    ProjectElement* const file = addFile(app, "a.c");
    const std::string tail = "‘app’ from solution ‘demo’ in configuration ‘Debug’";
    struct Row {
        ProjectElement* node;
        std::uint32_t flags;
        std::string title;
    };
    const Row rows[] = {
        {app, 0, "Building " + tail},
        {file, 0, "Building ‘a.c’ from project " + tail},
        {app, BuildFlags::Rebuild, "Rebuilding " + tail},
        {app, BuildFlags::Rebuild | BuildFlags::Clean | BuildFlags::NoTools | BuildFlags::Quiet,
         "Cleaning " + tail},
        {app, BuildFlags::NoTools | BuildFlags::Quiet, "Checking " + tail},
        {app, BuildFlags::AnalyzeOnly, "Analyzing " + tail},
        {app, BuildFlags::NoTitle, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(engine.planTitle(row.node, debug, row.flags).toStdString(), row.title);
}

TEST_F(BuildRunTest, BuildsWhatIsDueAndNothingTwice) {
    for (const std::size_t workers : {std::size_t{1}, std::size_t{3}}) {
        const std::string name = "app" + std::to_string(workers);
        ProjectElement* const app =
            shellProject(name.c_str(), "echo $(InputName); : > $(RelTargetPath)", {"a.c", "b.c", "c.c"});
        EXPECT_EQ(build(app, workers), BuildResult::Built);
        EXPECT_TRUE(exists(("out/" + name + "/c.o").c_str()));
        EXPECT_THAT(log.lines, testing::Contains("a"));
        EXPECT_EQ(build(app, workers), BuildResult::UpToDate);
        EXPECT_EQ(build(addFile(app, "none.c"), workers), BuildResult::Failed);
    }
    EXPECT_EQ(build(engine.solution()->firstChildElement(), 1), BuildResult::UpToDate);
    EXPECT_EQ(host.lines[0], "begin app1 4");
    EXPECT_EQ(host.lines[5], "end app1");
    EXPECT_EQ(host.lines[6], "done");
}

TEST_F(BuildRunTest, ItemsRunSideBySide) {
    // Each file waits for the other to begin.
    ProjectElement* const app = shellProject(
        "app", "mkdir -p on; : > on/$(InputName); while ! test -e on/a -a -e on/b; do sleep 0.01; done",
        {"a.c", "b.c"});
    EXPECT_EQ(build(app, 2), BuildResult::Built);
}

TEST_F(BuildRunTest, AFailureEndsTheBuildUnlessItKeepsGoing) {
    ProjectElement* const app =
        shellProject("app", "echo half > $(RelTargetPath); test $(InputName) != a", {"a.c", "b.c"});
    EXPECT_EQ(build(app, 1), BuildResult::Failed);
    EXPECT_THAT(log.lines, testing::Contains("error: sh failed with exit code 1"));
    EXPECT_FALSE(exists("out/app/a.o")) << "a partial output is left";
    EXPECT_FALSE(exists("out/app/b.o"));
    set(app, "external_c_compile_command", "no-such-program");
    EXPECT_EQ(build(app, 1), BuildResult::Failed);
    EXPECT_THAT(log.lines, testing::Contains("error: cannot start no-such-program"));
    set(app, "external_c_compile_command", "sh -c \"echo x > $(RelTargetPath); test $(InputName) != a\"");
    EXPECT_EQ(build(app, 2, BuildFlags::Quiet | BuildFlags::KeepGoing), BuildResult::Built);
    EXPECT_TRUE(exists("out/app/b.o"));
    EXPECT_THAT(log.lines, testing::Contains(
                               "Build failed - continuing because 'keep going on error' has been enabled"));
    for (const char* file : {"c.c", "d.c"}) {
        write(file);
        set(addFile(app, file), "external_c_compile_command", "no-such-program");
    }
    write("e.c");
    addFile(app, "e.c");
    build(app, 2, BuildFlags::Quiet | BuildFlags::KeepGoing | BuildFlags::Rebuild);
    EXPECT_TRUE(exists("out/app/e.o")) << "a command that can't start ends more than its own file";
    write("file");
    set(app, "build_object_file_name", "file/x.o");
    EXPECT_EQ(build(app, 1), BuildResult::Failed);
    EXPECT_THAT(log.lines, testing::Contains(testing::HasSubstr("error: cannot make the directory ")));
}

TEST_F(BuildRunTest, PreAndPostBuildCommandsFrameWorkThatIsDue) {
    ProjectElement* const app = shellProject("app", ": > $(RelTargetPath)", {"a.c", "b.c"});
    set(app, "pre_build_command", "sh -c \"echo pre >> $(ProjectDir)/log\" && sh -c \"echo two >> log\"");
    set(app, "post_build_command", "sh -c \"echo post >> log\"");
    EXPECT_EQ(build(app, 1), BuildResult::Built);
    EXPECT_EQ(read("log"), "pre\ntwo\npost\n");
    EXPECT_EQ(build(app, 2), BuildResult::UpToDate);
    EXPECT_EQ(read("log"), "pre\ntwo\npost\n");
    set(app, "pre_build_command_control", "Always Run");
    set(app, "post_build_command_control", "Always Run");
    EXPECT_EQ(build(app, 2), BuildResult::UpToDate);
    EXPECT_EQ(read("log"), "pre\ntwo\npost\npre\ntwo\npost\n");
}

/// Terminates the build when the second project begins.
class ImpatientHost : public Idler {
public:
    explicit ImpatientHost(BuildSystem& engine) : engine_(engine) {}
    void beginProject(ProjectElement*, const QString&, const QString&, int) override {
        if (++begun_ == 2) engine_.terminateBuild();
    }

private:
    BuildSystem& engine_;
    int begun_ = 0;
};

TEST_F(BuildRunTest, TerminationStartsNothingMore) {
    shellProject("first", ": > $(RelTargetPath)", {"a.c"});
    shellProject("second", ": > $(RelTargetPath)", {"b.c"});
    ImpatientHost impatient(engine);
    AtelisBuilder worker(engine, log);
    Builder* const workers[] = {&worker};
    EXPECT_EQ(engine.build(engine.solution(), debug, workers, impatient, BuildFlags::Quiet, true, false),
              BuildResult::Terminated);
    EXPECT_TRUE(exists("out/first/a.o"));
    EXPECT_FALSE(exists("out/second/b.o"));
}

TEST_F(BuildRunTest, SeveralNodesAreOneRun) {
    ProjectElement* const shared = newProject("shared", "Externally Built Library");
    set(shared, "external_build_command", "sh -c \"echo built >> log\"");
    ProjectElement* const one = newProject("one", "Library");
    ProjectElement* const two = newProject("two", "Library");
    AtelisBuilder worker(engine, log);
    Builder* const workers[] = {&worker};
    for (ProjectElement* each : {one, two}) {
        set(each, "project_dependencies", "shared");
        set(each, "project_type", "Object file");
    }
    ProjectElement* const nodes[] = {one, two, shared};
    engine.build(nodes, debug, workers, host, BuildFlags::Quiet, true, false);
    EXPECT_EQ(read("log"), "built\n");
}

TEST_F(BuildRunTest, ManyAreStoppedInTheTimeOfOne) {
    std::vector<std::unique_ptr<AtelisBuilder>> owned;
    std::vector<Builder*> workers;
    for (int i = 0; i < 8; ++i) {
        owned.push_back(std::make_unique<AtelisBuilder>(engine, log));
        workers.push_back(owned.back().get());
        workers.back()->start(directory.path(), {q("sh"), q("-c"), q("trap '' TERM; echo on; sleep 100")},
                              QString());
    }
    while (log.lines.size() < workers.size()) {
        AtelisBuilder::waitForAny(workers, 100);
        for (Builder* worker : workers) ASSERT_FALSE(worker->finished(nullptr, debug));
    }
    const auto begin = std::chrono::steady_clock::now();
    AtelisBuilder::stopAll(workers);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
}

TEST_F(BuildRunTest, StoppingEndsACommandAndItsPartialOutput) {
    AtelisBuilder worker(engine, log);
    Builder* const self = &worker;
    const auto begin = std::chrono::steady_clock::now();
    worker.start(directory.path(), {q("sh"), q("-c"), q("echo half > x.o; echo on; sleep 100")}, q("x.o"));
    while (log.lines.empty()) {
        AtelisBuilder::waitForAny({&self, 1}, 100);
        ASSERT_FALSE(worker.finished(nullptr, debug));
    }
    worker.stop();
    EXPECT_FALSE(exists("x.o"));
    EXPECT_TRUE(worker.finished(nullptr, debug));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(50));
}

}  // namespace

}  // namespace build_test
