#pragma once

#include <QString>
#include <QStringList>

#include <string_view>

namespace build {

/// The files that a dependency file names, which has the form of a make rule as compilers write it: a target,
/// a colon, and its prerequisites, over as many lines as end in a backslash. The first of them is left out:
/// it is the source. Relative names stand below `directory`, when one is given. `text` is UTF-8.
QStringList parseDependencies(std::string_view text, const QString& directory);

}  // namespace build
