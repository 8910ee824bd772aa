#pragma once

#include <QString>
#include <QStringList>

namespace build {

/// Writes the lines, in UTF-8, to a file that a tool reads, and creates its directory. False when that can't
/// be done in full; nothing is left of the file then.
bool writeResponseFile(const QString& path, const QStringList& lines);

}  // namespace build
