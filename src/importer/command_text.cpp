#include "importer/command_text.h"

namespace importer {

namespace {

QString argumentText(std::string_view token) {
    QString text = QString::fromUtf8(token.data(), static_cast<qsizetype>(token.size()));
    if (text.contains(u'\\')) text.replace(QStringLiteral("\\\""), QStringLiteral("\\\\\""));
    return text;
}

/// The text inside the double quotes of a call of the command interpreter.
void unwrapShellCall(std::string& command) {
    const std::size_t first = command.find('"');
    if (!command.starts_with("cmd.exe") || first == std::string::npos) return;
    const std::size_t last = command.rfind('"');
    command = first < last ? command.substr(first + 1, last - first - 1) : std::string();
}

std::string_view textBetween(std::string_view text, std::size_t begin, std::size_t end) {
    return begin < end ? text.substr(begin, end - begin) : std::string_view();
}

}  // namespace

void splitArguments(std::string_view text, QStringList& list) {
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ' && !quoted) {
            list.append(argumentText(text.substr(start, i - start)));
            start = i + 1;
        } else if (text[i] == '"' && i > 0 && text[i - 1] != '\\') {
            quoted = !quoted;
        }
    }
    if (start < text.size()) list.append(argumentText(text.substr(start)));
}

void splitCommand(std::string& workingDirectory, std::string& command) {
    unwrapShellCall(command);
    workingDirectory.clear();
    const std::string_view text = command;
    std::string kept;  // what stays of the text in front of `position`; holds no "cd"
    std::size_t position = 0;
    while (true) {
        // A removal can bring a "c" and a "d" together.
        const bool joined = kept.ends_with('c') && text.substr(position).starts_with('d');
        const std::size_t change = joined ? position : text.find("cd", position);
        if (change == std::string_view::npos) break;
        const std::size_t behind = joined ? position + 1 : change + 2;
        const std::size_t ampersands = text.find("&& ", behind);
        if (ampersands == std::string_view::npos) break;
        const bool withDrive = text.substr(behind).starts_with(" /D");
        workingDirectory = textBetween(text, behind + (withDrive ? 4 : 1), ampersands - 1);
        if (joined) {
            kept.pop_back();
        } else {
            kept += text.substr(position, change - position);
        }
        position = ampersands + 3;
    }
    kept += text.substr(position);
    command = std::move(kept);
}

}  // namespace importer
