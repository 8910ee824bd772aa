#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis threads SCRIPT`, which runs a threads script and prints its lists. The command runs at
/// the end of the parse and sets `exitStatus`, which outlives it, to 0 or 1.
void addThreadsCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
