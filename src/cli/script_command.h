#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis script`, which evaluates script texts in one context, or is a console when standard
/// input is a terminal and no text is given. The command runs at the end of the parse and sets `exitStatus`,
/// which outlives it, to 0 or 1.
void addScriptCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
