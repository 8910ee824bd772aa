#include "cli/md5_command.h"

#include "cli/output.h"
#include "loadfiles/md5_sum.h"
#include "support/hexception.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

/// A file that fails is reported and does not keep the others from being read.
int run(const std::vector<std::string>& files) {
    Output output;
    int status = 0;
    for (const std::string& file : files) {
        try {
            output << loadfiles::digestOfFile(file == "-" ? "/dev/stdin" : file) << "  " << file << "\n";
        } catch (const support::HException& fault) {
            reportError(fault.message());
            status = 1;
        }
    }
    return output.finish() ? status : 1;
}

}  // namespace

void addMd5Command(CLI::App& app, int& exitStatus) {
    const auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* command = app.add_subcommand("md5", "Prints the MD5 digests of files");
    command->add_option("FILE", *files, "The files; - means standard input")->type_name("")->required();
    command->callback([files, &exitStatus] { exitStatus = run(*files); });
}

}  // namespace cli
