#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

/// A macro as the user gave it, NAME=VALUE taken apart.
struct MacroDefinition {
    std::string name;
    std::string value;
};

/// What stands in front of the command on the command line. All texts are bytes as the system gave them.
struct GlobalOptions {
    /// The installation directory, the macro `AtelisDir`. Default: the environment variable `ATELIS_DIR`,
    /// else the parent of the directory that holds the program.
    std::string atelisDir;
    /// The user's directory, the macro `AtelisUserDir`. Default: `ATELIS_USER_DIR`, else
    /// `$XDG_DATA_HOME/atelis`, else `~/.local/share/atelis`.
    std::string userDir;
    /// Global macros in the order of the command line.
    std::vector<MacroDefinition> macros;
};

/// Registers the options and sets the defaults. `options` outlives the parse.
void addGlobalOptions(CLI::App& app, GlobalOptions& options);

}  // namespace cli
