#pragma once

#include <QString>

/// The small tools of the environment's own that commands can use: "cp", "xmlcp", "mkhdr", "chmod", "rm".
namespace build {

/// Where the tool of that name is installed; null for any other program.
QString installedToolPath(const QString& program);

/// What is started for the program of a command: the installed tool of that name where there is one.
QString programToRun(const QString& program);

}  // namespace build
