#include "cli/dry_run_builder.h"

#include <algorithm>
#include <iterator>

namespace cli {

namespace {

/// Operators of the process runner, which a shell reads alike.
constexpr const char* redirections[] = {">", "1>", ">>", "1>>", "2>", "2>>", "&>", "&>>"};

bool isRedirection(const std::string& word) {
    return std::find(std::begin(redirections), std::end(redirections), word) != std::end(redirections);
}

}  // namespace

std::string shellWord(const std::string& text) {
    constexpr const char* plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_@%+=:,./-";
    if (!text.empty() && text.find_first_not_of(plain) == std::string::npos) return text;
    std::string word = "'";
    for (const char byte : text) {
        if (byte == '\'') {
            word += "'\\''";
        } else {
            word += byte;
        }
    }
    return word + '\'';
}

void DryRunBuilder::run(const QString& workingDirectory, const QStringList& arguments, const QString&) {
    std::string line = workingDirectory.isEmpty()
                           ? std::string()
                           : "cd " + shellWord(workingDirectory.toStdString()) + " && ";
    bool isFirst = true;
    for (const QString& argument : arguments) {
        const std::string word = argument.toStdString();
        if (!std::exchange(isFirst, false)) line += ' ';
        line += isRedirection(word) ? word : shellWord(word);
    }
    output_ << line << "\n";
}

void DryRunBuilder::error(const QString& text) {
    hasFailed_ = true;
    reportError(text.toStdString());
}

void DryRunBuilder::warning(const QString& text) {
    reportWarning(text.toStdString());
}

}  // namespace cli
