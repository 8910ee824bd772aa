#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis eval EXPRESSION`, which prints the value of an expression, or its text form. The command
/// runs at the end of the parse and sets `exitStatus`, which outlives it, to 0 or 1.
void addEvalCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
