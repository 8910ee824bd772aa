#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis get`, `set`, `clear` and `expand`: the values of a node. `globalOptions` and `exitStatus` outlive
/// the parse; the latter is set when a command has run.
void addValueCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
