#pragma once

#include "package/package_manager.h"

#include <QString>

namespace package {

/// `text` with the macros of the environment.
QString expandSystemMacros(const QString& text);

/// The directory in which a package's file is: the packages directory for its description.
QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager);

/// Removes an installed file. One whose name leads out of the directory is left: names come from outside.
void removeInstalledFile(const QString& directory, const QString& file);

}  // namespace package
