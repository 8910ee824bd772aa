#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis export SOLUTION`. `globalOptions` and `exitStatus` outlive the parse; the latter is set when the
/// command has run.
void addExportCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
