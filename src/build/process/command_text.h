#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <span>
#include <string>

/// The text forms of commands and lists. A command itself is a list of arguments; quotes exist in text only.
namespace build {

/// The arguments of a command as a user writes it. Blanks separate them, except between double quotes, which
/// are dropped; a backslash before a double quote makes it an ordinary character, and has no other meaning.
/// Empty arguments are not kept.
QStringList parseCommandLine(const QString& text);

/// The commands of a text in which `separator` stands between them; empty ones are not kept.
QList<QStringList> commandsOf(const QString& text, const char* separator);

/// The items of a list that ";" separates. A backslash makes the next character an ordinary one and is
/// dropped, except at the end of the text. Empty items are dropped unless `keepEmpty`.
QStringList splitEscaped(const QString& text, bool keepEmpty);

/// One text for the whole command, for logs and for hosts that need one: arguments with blanks stand in
/// double quotes, a double quote has a backslash before it. A program that begins with ".." is named from the
/// working directory, when one is given. The texts are bytes.
std::string commandText(std::span<const std::string> arguments, const std::string& workingDirectory);

}  // namespace build
