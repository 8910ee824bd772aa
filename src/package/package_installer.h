#pragma once

#include "package/package_manager.h"

#include <QString>

namespace package {

class PackageCopier;

/// Installs and uninstalls packages on behalf of a manager, which outlives it as the host does.
///
/// Failures of the archive and of the description are thrown as support::HException. What a cancelled or
/// failed installation has copied stays, with no record, so that it counts as not installed. Nothing is
/// written when an entry's name leads out of the installation directory.
class PackageInstaller {
public:
    PackageInstaller(PackageManager& manager, InstallationHost& host) : manager_(manager), host_(host) {}

    /// The directory for the next installation, whatever its description says; empty leaves it to that.
    void setDirectory(const QString& directory) { directory_ = directory; }

    /// Installs the archive at `path`. `name` is the package's name where its description has none, and
    /// becomes the name that it has. False when the user cancelled. A package without a description is
    /// refused unless a directory was set, and leaves no record.
    bool installPackage(const QString& path, QString& name, bool showStatus, bool uninstallFirst);

    /// Removes the files of an installed package, and directories that this leaves empty. False when a file
    /// stays, which the host is told; the package then counts as uninstalled all the same.
    bool uninstallPackage(const QString& name);

private:
    PackageRecord* installed(const QString& name);
    bool chooseDestination(PackageDescriptionFile& description, QString& destination);
    bool acceptVersions(PackageDescriptionFile& description);
    void record(PackageDescriptionFile& description, const QString& fileName, const PackageCopier& copier);

    PackageManager& manager_;
    InstallationHost& host_;
    QString directory_;
};

}  // namespace package
