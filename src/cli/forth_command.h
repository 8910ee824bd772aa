#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis forth`, which runs lines of the Forth evaluator from the command line or standard input.
/// The command runs at the end of the parse and sets `exitStatus`, which outlives it, to 0, or to 1 when a
/// line failed.
void addForthCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
