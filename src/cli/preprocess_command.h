#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// `atelis preprocess`: an XML file with its directives carried out. `globalOptions` and `exitStatus` outlive
/// the parse; the latter is set when the command has run.
void addPreprocessCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
