#include "cli/forth_command.h"

#include "cli/forth_host.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

namespace {

/// The next line of standard input, cut where it is too long for the evaluator anyway; nothing at its end.
std::optional<std::string> readLine() {
    std::string line;
    int character;
    while ((character = std::getchar()) != EOF && character != '\n')
        if (line.size() <= script::Source::longestLine) line.push_back(static_cast<char>(character));
    if (character == EOF && line.empty()) return std::nullopt;
    return line;
}

class Session {
public:
    /// False when no further line is wanted.
    bool run(std::string_view line) {
        const QString error = host_.run(line);
        const std::string printed = host_.takeOutput();
        output_ << printed;
        if (!error.isEmpty())
            output_ << error.toStdString() << "\n";
        else if (!host_.isCompiling() && !host_.isFinished())
            output_ << " OK\n";
        else if (!printed.empty())
            output_ << "\n";
        hasFailed_ = hasFailed_ || !error.isEmpty();
        isWritten_ = output_.finish();  // whoever types the lines waits for the answer
        return isWritten_ && !host_.isFinished();
    }

    int status() const { return hasFailed_ || !isWritten_ ? 1 : 0; }

private:
    ForthHost host_;
    Output output_;
    bool hasFailed_ = false;
    bool isWritten_ = true;
};

int run(const std::vector<std::string>& lines, bool hasLines) {
    const auto session = std::make_unique<Session>();  // the stacks are large
    if (hasLines) {
        for (const std::string& line : lines)
            if (!session->run(line)) break;
    } else {
        while (const std::optional<std::string> line = readLine())
            if (!session->run(*line)) break;
    }
    return session->status();
}

}  // namespace

void addForthCommand(CLI::App& app, int& exitStatus) {
    const auto lines = std::make_shared<std::vector<std::string>>();
    CLI::App* command = app.add_subcommand("forth", "Runs lines of the Forth evaluator");
    CLI::Option* evaluate = command
                                ->add_option("-e", *lines,
                                             "Runs this line; may be repeated. Without it lines come from "
                                             "standard input")
                                ->type_name("LINE")
                                ->expected(1)
                                ->allow_extra_args(false)
                                ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->callback([lines, evaluate, &exitStatus] { exitStatus = run(*lines, evaluate->count() > 0); });
}

}  // namespace cli
