#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis build SOLUTION [PROJECT...]`. `globalOptions` and `exitStatus` outlive the parse; the latter is
/// set when the command has run.
void addBuildCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
