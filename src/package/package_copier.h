#pragma once

#include "package/package_manager.h"

#include <QString>

#include <utility>

namespace package {

/// The suffix of the file that describes a package.
inline const QString descriptionSuffix = QStringLiteral("_package.xml");

/// Copies the files of a package to where it is installed, and keeps the list of what is there.
class PackageCopier {
public:
    PackageCopier(PackageArchive& archive, QString destination, InstallationHost& host)
        : archive_(archive), destination_(std::move(destination)), host_(host) {}

    /// One entry. False when the user ends the installation.
    bool copy(const PackageArchiveFile& file);

    /// What has been installed, and what was there already.
    const InstalledFiles& installed() const { return installed_; }

private:
    using Answer = InstallationHost::Overwrite;

    Answer decide(const PackageArchiveFile& file, const QString& target);
    void keep(const PackageArchiveFile& file, const QString& target);
    bool write(const PackageArchiveFile& file, const QString& target);

    PackageArchive& archive_;
    QString destination_;
    InstallationHost& host_;
    Answer remembered_ = Answer::Cancel;  // until the user answers for all
    InstalledFiles installed_;
};

}  // namespace package
