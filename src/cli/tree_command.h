#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis tree`: the nodes of a solution. `globalOptions` and `exitStatus` outlive the parse; the latter is
/// set when the command has run.
void addTreeCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
