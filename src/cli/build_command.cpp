#include "cli/build_command.h"

#include "build/clean_builder.h"
#include "cli/build_console.h"
#include "cli/dry_run_builder.h"
#include "cli/output.h"
#include "cli/session.h"

#include <QScopedValueRollback>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace cli {

namespace {

using build::BuildFlags;
using build::BuildResult;
using build::ProjectElement;

constexpr int maxWorkers = 128;

struct BuildOptions {
    std::string solution;
    std::vector<std::string> projects;
    std::string configuration;
    int workerCount = 0;  // 0: the number of processors
    bool rebuild = false;
    bool clean = false;
    bool keepGoing = false;
    bool dryRun = false;
    bool verbose = false;
    bool noDependencies = false;
    bool batch = false;
};

/// What is to be built.
struct Request {
    build::BuildSystem& engine;
    std::vector<ProjectElement*> nodes;
    QString configuration;
    std::uint32_t flags;
    bool followDependencies;
    bool batch;
};

std::uint32_t flagsOf(const BuildOptions& options) {
    if (options.clean)
        return BuildFlags::Clean | BuildFlags::Rebuild | BuildFlags::NoTools | BuildFlags::Quiet;
    std::uint32_t flags = 0;
    if (options.rebuild) flags |= BuildFlags::Rebuild;
    if (options.keepGoing) flags |= BuildFlags::KeepGoing;
    if (!options.verbose) flags |= BuildFlags::Quiet;
    return flags;
}

BuildResult buildAll(const Request& request, std::span<build::Builder* const> workers, build::Idler& host) {
    return request.engine.build(request.nodes, request.configuration, workers, host, request.flags,
                                request.followDependencies, request.batch);
}

/// Deletes what a build has made, and says what it could not delete.
class Cleaner : public build::CleanBuilder {
public:
    void error(const QString& text) override {
        hasFailed_ = true;
        reportError(text.toStdString());
    }
    void warning(const QString& text) override { reportWarning(text.toStdString()); }
    bool hasFailed() const { return hasFailed_; }

private:
    bool hasFailed_ = false;
};

const char* wordsFor(BuildResult result) {
    switch (result) {
        case BuildResult::UpToDate:
            return "Build up to date";
        case BuildResult::Built:
            return "Build complete";
        case BuildResult::Failed:
            return "Build failed";
        case BuildResult::Terminated:
            return "Build terminated";
    }
    return "";
}

int workerCountOf(const BuildOptions& options) {
    if (options.workerCount > 0) return options.workerCount;
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, maxWorkers);
}

int finish(BuildConsole& console, BuildResult result, bool hasFailedStep) {
    if (result < BuildResult::Failed && hasFailedStep) result = BuildResult::Failed;
    return console.finish(wordsFor(result)) && result < BuildResult::Failed ? 0 : 1;
}

int clean(const Request& request, const BuildOptions& options) {
    BuildConsole console(request.engine, options.verbose);
    Cleaner cleaner;
    build::Builder* const worker = &cleaner;
    BuildResult result = buildAll(request, {&worker, 1}, console);
    if (result <= BuildResult::Built)
        result = cleaner.hasDeleted() ? BuildResult::Built : BuildResult::UpToDate;
    return finish(console, result, cleaner.hasFailed());
}

int runBuild(const Request& request, const BuildOptions& options) {
    BuildConsole console(request.engine, options.verbose);
    std::vector<std::unique_ptr<build::Builder>> owned;
    std::vector<build::Builder*> workers;
    for (int i = workerCountOf(options); i > 0; --i) {
        owned.push_back(std::make_unique<build::AtelisBuilder>(request.engine, console));
        owned.back()->reset();
        workers.push_back(owned.back().get());
    }
    console.setWorkers(workers);
    BuildResult result = buildAll(request, workers, console);
    // A project that only compiles hands no work up, and neither does an external build that had nothing to
    // do.
    if (result == BuildResult::UpToDate && console.hasRunCommand()) result = BuildResult::Built;
    owned.clear();
    return finish(console, result, console.hasFailedStep());
}

int dryRun(const Request& request, const BuildOptions& options) {
    Output output;
    build::Rehearsal rehearsal;
    DryRunBuilder builder(output, rehearsal, options.verbose);
    build::Builder* const worker = &builder;
    build::Idler host;
    const QScopedValueRollback guard(request.engine.rehearsal, &rehearsal);
    buildAll(request, {&worker, 1}, host);
    return output.finish() && !builder.hasFailed() ? 0 : 1;
}

int run(const BuildOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    ProjectElement* const solution = session.engine().solution();
    Request request{session.engine(), {}, {}, flagsOf(options), !options.noDependencies, options.batch};
    if (!session.chooseConfiguration(options.configuration, request.configuration)) return 1;
    for (const std::string& name : options.projects) {
        NodeOptions node;
        node.project = name;
        request.nodes.push_back(session.find(node));
        if (!request.nodes.back()) return 1;
    }
    if (request.nodes.empty()) request.nodes.push_back(solution);
    session.engine().settleToolDescriptions(request.configuration);
    if (options.dryRun) return dryRun(request, options);
    return options.clean ? clean(request, options) : runBuild(request, options);
}

}  // namespace

void addBuildCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<BuildOptions>();
    CLI::App* command = app.add_subcommand("build", "Builds a solution, or the projects named");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->add_option("PROJECT", options->projects, "Projects, by their qualified names")->type_name("");
    command
        ->add_option("-c", options->configuration,
                     "The configuration; by default the solution's first public one")
        ->type_name("CONFIGURATION");
    command
        ->add_option("-j", options->workerCount,
                     "At most N commands side by side; by default as many as there are processors")
        ->type_name("N")
        ->check(CLI::Range(1, maxWorkers));
    command->add_flag("--rebuild", options->rebuild, "Builds everything whatever is up to date");
    command->add_flag("--clean", options->clean, "Deletes the outputs and builds nothing");
    command->add_flag("-k,--keep-going", options->keepGoing, "Goes on over a failed step");
    command->add_flag("-n,--dry-run", options->dryRun, "Prints the commands that would run, and runs none");
    command->add_flag("-v,--verbose", options->verbose,
                      "Shows each command line, why each target is built, and the checks");
    command->add_flag("--no-dependencies", options->noDependencies, "Builds only the projects named");
    command->add_flag("--batch", options->batch, "Builds each project's batch configurations");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
