#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis image`, whose commands list the sections of a load file, convert it to another format,
/// and compare two. The command runs at the end of the parse and sets `exitStatus`, which outlives it, to 0
/// or 1.
void addImageCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
