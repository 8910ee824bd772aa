#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// Registers `atelis properties`; its callback sets `exitStatus`.
void addPropertiesCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
