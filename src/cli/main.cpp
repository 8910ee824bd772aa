#include "cli/add_command.h"
#include "cli/build_command.h"
#include "cli/configuration_command.h"
#include "cli/eval_command.h"
#include "cli/export_command.h"
#include "cli/forth_command.h"
#include "cli/global_options.h"
#include "cli/graph_command.h"
#include "cli/image_command.h"
#include "cli/manifest_command.h"
#include "cli/md5_command.h"
#include "cli/memory_map_command.h"
#include "cli/output.h"
#include "cli/package_command.h"
#include "cli/preprocess_command.h"
#include "cli/properties_command.h"
#include "cli/schema_command.h"
#include "cli/script_command.h"
#include "cli/segments_command.h"
#include "cli/solution_command.h"
#include "cli/threads_command.h"
#include "cli/tree_command.h"
#include "cli/value_command.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

/// The headings of the help, and the commands that stand under each.
const std::pair<const char*, std::vector<const char*>> commandGroups[] = {
    {"Manifests", {"manifest"}},
    {"Solutions",
     {"new", "new-project", "add", "link", "configurations", "rename-configuration", "inherit", "tree",
      "graph"}},
    {"Properties", {"schema", "properties", "get", "set", "clear", "expand", "eval"}},
    {"Builds", {"build", "export", "memory-map", "segments", "preprocess"}},
    {"Packages", {"package"}},
    {"Scripts", {"script", "threads", "forth"}},
    {"Images", {"image", "md5"}},
};

constexpr int failed = 1;
constexpr int wrongWords = 2;

int run(int argc, char** argv) {
    int exitStatus = 0;
    CLI::App app("The engine of the development environment on the command line");
    app.name("atelis");
    app.set_help_flag("-h,--help", "Prints this help");
    app.set_version_flag("--version", "atelis 5.68", "Prints the version");
    app.require_subcommand(1);
    cli::GlobalOptions globalOptions;
    cli::addGlobalOptions(app, globalOptions);

    cli::addAddCommand(app, globalOptions, exitStatus);
    cli::addBuildCommand(app, globalOptions, exitStatus);
    cli::addConfigurationCommands(app, globalOptions, exitStatus);
    cli::addEvalCommand(app, exitStatus);
    cli::addExportCommand(app, globalOptions, exitStatus);
    cli::addForthCommand(app, exitStatus);
    cli::addGraphCommand(app, globalOptions, exitStatus);
    cli::addImageCommand(app, exitStatus);
    cli::addManifestCommand(app, exitStatus);
    cli::addMd5Command(app, exitStatus);
    cli::addMemoryMapCommand(app, globalOptions, exitStatus);
    cli::addPackageCommand(app, globalOptions, exitStatus);
    cli::addPreprocessCommand(app, globalOptions, exitStatus);
    cli::addPropertiesCommand(app, globalOptions, exitStatus);
    cli::addSchemaCommand(app, exitStatus);
    cli::addScriptCommand(app, exitStatus);
    cli::addSegmentsCommand(app, globalOptions, exitStatus);
    cli::addSolutionCommands(app, globalOptions, exitStatus);
    cli::addThreadsCommand(app, exitStatus);
    cli::addTreeCommand(app, globalOptions, exitStatus);
    cli::addValueCommands(app, globalOptions, exitStatus);

    for (const auto& [group, names] : commandGroups)
        for (const char* name : names) app.get_subcommand(name)->group(group);

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& answer) {
        return app.exit(answer);
    } catch (const CLI::ParseError& fault) {
        const std::vector<std::string> unknown = app.remaining();
        const bool isCommand =
            app.get_subcommands().empty() && !unknown.empty() && !unknown[0].starts_with('-');
        cli::reportError(isCommand ? "unknown command \"" + unknown[0] + '"' : fault.what());
        return wrongWords;
    }
    return exitStatus;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& fault) {
        cli::reportError(fault.what());
        return failed;
    }
}
