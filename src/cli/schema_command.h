#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis schema [KEY]`, which lists all properties of the schema, shows the one that a key finds,
/// or lists the built-in macros. The command runs at the end of the parse and sets `exitStatus`, which
/// outlives it, to 0 or 1.
void addSchemaCommand(CLI::App& app, int& exitStatus);

}  // namespace cli
