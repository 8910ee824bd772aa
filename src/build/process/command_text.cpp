#include "build/process/command_text.h"

#include <utility>

namespace build {

QStringList parseCommandLine(const QString& text) {
    QStringList arguments;
    QString argument;
    const auto endArgument = [&] {
        if (!argument.isEmpty()) arguments.append(std::exchange(argument, {}));
    };
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        if (character == u'\\' && i + 1 < text.size() && text[i + 1] == u'"')
            argument += text[++i];
        else if (character == u'"')
            isQuoted = !isQuoted;
        else if (character == u' ' && !isQuoted)
            endArgument();
        else
            argument += character;
    }
    endArgument();
    return arguments;
}

QList<QStringList> commandsOf(const QString& text, const char* separator) {
    QList<QStringList> commands;
    for (const QString& part : text.split(QString::fromLatin1(separator), Qt::SkipEmptyParts)) {
        const QStringList arguments = parseCommandLine(part);
        if (!arguments.isEmpty()) commands.append(arguments);
    }
    return commands;
}

QStringList splitEscaped(const QString& text, bool keepEmpty) {
    QStringList items;
    QString item;
    const auto endItem = [&] {
        if (keepEmpty || !item.isEmpty()) items.append(std::exchange(item, {}));
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u';') {
            endItem();
            continue;
        }
        if (text[i] == u'\\' && i + 1 < text.size()) ++i;
        item += text[i];
    }
    endItem();
    return items;
}

namespace {

std::string quoted(const std::string& argument) {
    const bool hasBlank = argument.find(' ') != std::string::npos;
    std::string text;
    if (hasBlank) text += '"';
    for (const char byte : argument) {
        if (byte == '"') text += '\\';
        text += byte;
    }
    if (hasBlank) text += '"';
    return text;
}

}  // namespace

std::string commandText(std::span<const std::string> arguments, const std::string& workingDirectory) {
    std::string text;
    if (!arguments.empty() && arguments.front().starts_with("..") && !workingDirectory.empty())
        text = workingDirectory + "/";
    const char* separator = "";
    for (const std::string& argument : arguments) {
        text.append(std::exchange(separator, " ")).append(quoted(argument));
    }
    return text;
}

}  // namespace build
