#pragma once

namespace CLI {
class App;
}

namespace cli {

/// Registers `atelis md5 FILE...`, which prints the MD5 digests of files. The command runs at the end of the
/// parse and sets `exitStatus`, which outlives it, to 0 or 1.
void addMd5Command(CLI::App& app, int& exitStatus);

}  // namespace cli
