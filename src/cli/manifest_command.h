#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis manifest FILE`, which reads a build manifest as the importer does and prints its counts,
/// its edges, its roots or a binding. The command runs at the end of the parse and sets `exitStatus`, which
/// outlives it, to 0 or 1.
void addManifestCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
