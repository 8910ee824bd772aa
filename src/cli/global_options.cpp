#include "cli/global_options.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace cli {

namespace {

/// The variable's value; empty when it is unset.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string defaultAtelisDir() {
    std::string directory = environment("ATELIS_DIR");
    if (!directory.empty()) return directory;
    std::error_code failure;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return program.parent_path().parent_path().string();
}

std::string defaultUserDir() {
    std::string directory = environment("ATELIS_USER_DIR");
    if (!directory.empty()) return directory;
    const std::string dataHome = environment("XDG_DATA_HOME");
    return dataHome.empty() ? environment("HOME") + "/.local/share/atelis" : dataHome + "/atelis";
}

MacroDefinition parseMacro(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw CLI::ValidationError("-D: \"" + text + "\" is not of the form NAME=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

}  // namespace

void addGlobalOptions(CLI::App& app, GlobalOptions& options) {
    options.atelisDir = defaultAtelisDir();
    options.userDir = defaultUserDir();
    app.add_option("--atelis-dir", options.atelisDir, "The installation directory, the macro AtelisDir")
        ->type_name("DIR");
    app.add_option("--user-dir", options.userDir, "The user's directory, the macro AtelisUserDir")
        ->type_name("DIR");
    const auto addMacro = [&options](const std::string& text) { options.macros.push_back(parseMacro(text)); };
    app.add_option_function<std::string>("-D", addMacro, "Defines a global macro; may be repeated")
        ->type_name("NAME=VALUE")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->trigger_on_parse();
}

}  // namespace cli
