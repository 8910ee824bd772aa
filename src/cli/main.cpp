#include "cli/global_options.h"
#include "cli/manifest_command.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>
#include <exception>

namespace {

constexpr int failed = 1;
constexpr int wrongWords = 2;

}  // namespace

int main(int argc, char** argv) {
    int exitStatus = 0;
    CLI::App app("The engine of the development environment on the command line");
    app.name("atelis");
    app.set_help_flag("-h,--help", "Prints this help");
    app.set_version_flag("--version", "atelis 5.68", "Prints the version");
    app.require_subcommand(1);
    cli::GlobalOptions globalOptions;
    cli::addGlobalOptions(app, globalOptions);

    cli::addManifestCommand(app, exitStatus);

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& fault) {
        cli::reportError(fault.what());
        return wrongWords;
    } catch (const std::exception& fault) {
        cli::reportError(fault.what());
        return failed;
    }
    return exitStatus;
}
