#include "cli/dry_run_builder.h"

#include "build/installed_tools.h"
#include "build/process/redirection.h"
#include "project/base/path.h"

#include <vector>

namespace cli {

namespace {

std::string inQuotes(const std::string& text) {
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

/// The redirections as a shell writes them. It has no sign of its own for both streams, and a later file of a
/// stream would win there.
std::string shellRedirections(const std::vector<build::Redirection>& redirections) {
    std::string text;
    bool hasOutput = false;
    bool hasErrors = false;
    for (const build::Redirection& each : redirections) {
        if ((each.output && hasOutput) || (each.errors && hasErrors)) continue;
        hasOutput |= each.output;
        hasErrors |= each.errors;
        text += std::string(each.output ? " " : " 2") + (each.append ? ">> " : "> ") + shellWord(each.file);
        if (each.output && each.errors) text += " 2>&1";
    }
    return text;
}

}  // namespace

std::string shellWord(const std::string& text) {
    constexpr const char* plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_@%+=:,./-";
    return !text.empty() && text.find_first_not_of(plain) == std::string::npos ? text : inQuotes(text);
}

void DryRunBuilder::beginStep(build::ProjectElement*, const QString& title, const QString&, int) {
    remark(title);
}

void DryRunBuilder::run(const QString& workingDirectory, const QStringList& arguments,
                        const QString& outputFile) {
    rehearsal_.willMake(project::resolvedPath(workingDirectory, outputFile));
    std::vector<std::string> words;
    for (const QString& argument : arguments) words.push_back(argument.toStdString());
    if (!words.empty()) words.front() = build::programToRun(arguments.front()).toStdString();
    const build::RedirectedCommand command = build::splitRedirections(words);
    if (command.arguments.empty()) return;
    if (!workingDirectory.isEmpty()) output_ << "cd " << shellWord(workingDirectory.toStdString()) << " && ";
    // A shell would take a first word with "=" for a variable.
    const std::string& program = command.arguments.front();
    output_ << (program.find('=') == std::string::npos ? shellWord(program) : inQuotes(program));
    for (const std::string& argument : command.arguments.subspan(1)) output_ << " " << shellWord(argument);
    output_ << shellRedirections(command.redirections) << "\n";
}

/// Tells what a comment may tell, to those who want to know.
void DryRunBuilder::remark(const QString& text) {
    if (isVerbose_) output_ << "# " << printable(text.trimmed().toStdString()) << "\n";
}

void DryRunBuilder::error(const QString& text) {
    hasFailed_ = true;
    reportError(text.toStdString());
}

void DryRunBuilder::warning(const QString& text) {
    reportWarning(text.toStdString());
}

}  // namespace cli
