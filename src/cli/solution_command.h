#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis new`, `new-project` and `link`: solutions made and put together. `globalOptions` and `exitStatus`
/// outlive the parse; the latter is set when a command has run.
void addSolutionCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
