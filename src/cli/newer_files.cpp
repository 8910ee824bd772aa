#include "cli/newer_files.h"

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace cli {

void addNewerOption(CLI::App& command, NewerFiles& choice) {
    const std::map<std::string, NewerFiles> words = {
        {"keep", NewerFiles::Keep}, {"overwrite", NewerFiles::Overwrite}, {"cancel", NewerFiles::Cancel}};
    command
        .add_option("--newer", choice,
                    "Files that are newer on disk: keep (the default), overwrite or cancel")
        ->type_name("WHAT")
        ->transform(CLI::CheckedTransformer(words).description(""));
}

}  // namespace cli
