#include "build/build_system.h"
#include "build/plan_runner.h"
#include "build/project_plan.h"
#include "project/base/macro_engine.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using namespace build;

class Engine : public BuildSystem {
public:
    Engine() : BuildSystem(QString(), {}, QString()) {
        project::projectSystem = this;
        project::macroEngine = &macros_;
        newSolution(QStringLiteral("bench"), directory_.path());
        createConfiguration(solution(), QStringLiteral("Debug"));
    }
    ~Engine() override {
        project::projectSystem = nullptr;
        project::macroEngine = nullptr;
    }
    QStringList baseCodeModelArguments(ProjectElement*, const QString&) override { return {}; }
    /// A project that stages so many files, none of which takes a look at the disk to be found due.
    ProjectElement* stagingProject(std::int64_t files) {
        ProjectElement* const project =
            newProject(solution(), QStringLiteral("stage"), directory_.path(), QStringLiteral("Staging"));
        for (std::int64_t i = 0; i < files; ++i) addFile(project, QString::number(i));
        setPropertyValue(project, schema().general.stage_command, QStringLiteral("Common"),
                         QStringLiteral("run $(InputPath)"));
        return project;
    }

private:
    QTemporaryDir directory_;
    project::MacroEngine macros_;
};

/// Expands a project into an item for each file; the time an item must stay the same.
void planItems(benchmark::State& run) {
    Engine engine;
    ProjectElement* const project = engine.stagingProject(run.range(0));
    NullBuilder builder;
    Idler host;
    for (auto _ : run) {
        PlanQueue queue;
        ProjectPlan(engine, {0, false, true}, builder, host, queue)
            .add(project, QStringLiteral("Debug"), false);
        benchmark::DoNotOptimize(queue.items().size());
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(planItems)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Decides, records and replays a command for each file, with a worker to which every command is over at
/// once: what a command costs beside its process.
void scheduleCommands(benchmark::State& run) {
    Engine engine;
    ProjectElement* const project = engine.stagingProject(run.range(0));
    NullBuilder workers[2];
    Builder* const both[] = {&workers[0], &workers[1]};
    Idler host;
    for (auto _ : run)
        engine.build(project, QStringLiteral("Debug"), both, host, BuildFlags::Quiet | BuildFlags::Rebuild,
                     true, false);
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(scheduleCommands)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
