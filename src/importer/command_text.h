#pragma once

#include <QStringList>

#include <string>
#include <string_view>

/// Taking apart the command texts of a manifest. All texts are bytes of UTF-8.
namespace importer {

/// Appends the arguments of `text` to `list`. Single blanks separate, so two in a row give an empty argument;
/// double quotes protect blanks and stay in the argument. In each argument a backslash in front of a double
/// quote is doubled.
void splitArguments(std::string_view text, QStringList& list);

/// Takes every "cd DIRECTORY && ", wherever it stands, out of `command`, with the shell call that may be
/// wrapped around it. `workingDirectory` becomes the last of these directories, or empty.
void splitCommand(std::string& workingDirectory, std::string& command);

}  // namespace importer
