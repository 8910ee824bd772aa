#pragma once

namespace CLI {
class App;
}

namespace cli {

/// What to do about files on disk that are newer than those of an archive.
enum class NewerFiles { Keep, Overwrite, Cancel };

/// Registers `--newer keep|overwrite|cancel`. `choice` outlives the parse.
void addNewerOption(CLI::App& command, NewerFiles& choice);

}  // namespace cli
