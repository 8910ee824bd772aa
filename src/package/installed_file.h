#pragma once

#include "package/package_manager.h"

#include <QString>

namespace package {

/// The directory that the text of a description names, in which the environment's macros may stand: a
/// relative one is below the packages directory, and none is that directory.
QString installationDirectory(const QString& text, const PackageManager& manager);

/// Throws support::HException for a directory in whose name a macro is left.
void requireExpanded(const QString& directory);

/// The directory in which a package's file is: the packages directory for its description.
QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager);

/// Removes an installed file if it is there. False when it stays, as does one whose name leads out of the
/// directory: names come from outside.
bool removeInstalledFile(const QString& directory, const QString& file);

/// Removes the directory of an installed file if it holds nothing, and likewise those above it.
void removeEmptyDirectories(const QString& directory);

}  // namespace package
