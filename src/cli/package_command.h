#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// Registers `atelis package`, which makes and reads archives, bundles and unpacks solutions, and installs
/// packages. A command runs at the end of the parse and sets `exitStatus` to 0 or 1; failures of the engine
/// are thrown. The arguments outlive the parse.
void addPackageCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

// Its commands, in groups.

/// list, create, extract, cat
void addArchiveCommands(CLI::App& package, int& exitStatus);
/// solution, open
void addSolutionArchiveCommands(CLI::App& package, const GlobalOptions& globalOptions, int& exitStatus);
/// info, install, uninstall, installed
void addInstallCommands(CLI::App& package, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
