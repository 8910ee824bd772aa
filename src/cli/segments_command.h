#pragma once

namespace CLI {
class App;
}

namespace cli {

struct GlobalOptions;

/// Registers `atelis segments`; its callback sets `exitStatus`.
void addSegmentsCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus);

}  // namespace cli
