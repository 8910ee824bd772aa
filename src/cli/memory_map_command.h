#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// Registers `atelis memory-map`; its callback sets `exitStatus`.
void addMemoryMapCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
