#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// Registers `atelis add`; its callback sets `exitStatus`.
void addAddCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
