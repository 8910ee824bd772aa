#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis configurations`, `rename-configuration` and `inherit`. `globalOptions` and `exitStatus` outlive
/// the parse; the latter is set when a command has run.
void addConfigurationCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
