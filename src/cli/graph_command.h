#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis graph`: the projects and their dependencies, for Graphviz. `globalOptions` and `exitStatus`
/// outlive the parse; the latter is set when the command has run.
void addGraphCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
