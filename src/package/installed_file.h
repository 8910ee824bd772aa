#pragma once

#include "package/package_manager.h"

#include <QString>

namespace package {

/// `text` with the macros of the environment.
QString expandSystemMacros(const QString& text);

/// The directory in which a package's file is: the packages directory for its description.
QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager);

/// Removes an installed file if it is there. False for a name that leads out of the directory: names come
/// from outside.
bool removeInstalledFile(const QString& directory, const QString& file);

/// Removes a directory that holds nothing, and likewise those above it.
void removeEmptyDirectories(const QString& directory);

}  // namespace package
