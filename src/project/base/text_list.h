#pragma once

#include <QString>
#include <QStringList>

namespace project {

/// The entries of a list value, joined by ";", in which a backslash takes the next character as it is. Empty
/// entries are left out; a backslash at the very end stands for itself.
QStringList escapedEntries(const QString& text);

}  // namespace project
