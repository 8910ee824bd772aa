#include "cli/package_command.h"

#include <CLI/CLI.hpp>

namespace cli {

void addPackageCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    CLI::App* package = app.add_subcommand("package", "Makes, reads and installs packages");
    package->require_subcommand(1);
    addArchiveCommands(*package, exitStatus);
    addSolutionArchiveCommands(*package, globalOptions, exitStatus);
    addInstallCommands(*package, globalOptions, exitStatus);
}

}  // namespace cli
