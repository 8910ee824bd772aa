#pragma once

#include "package/package_archive.h"
#include "package/package_manager.h"
#include "package/target.h"

#include <QString>

#include <utility>

namespace package {

/// Copies the files of a package to where it is installed, and keeps the list of what is there.
class PackageCopier {
public:
    PackageCopier(PackageArchive& archive, QString destination, InstallationHost& host)
        : archive_(archive), destination_(std::move(destination)), directory_(destination_), host_(host) {}

    /// One entry. False when the user ends the installation.
    bool copy(const PackageArchiveFile& file);

    /// What has been installed, and what was there already.
    const InstalledFiles& installed() const { return installed_; }
    /// Of these, what the user has kept because it was newer.
    const KeptFiles& kept() const { return kept_; }

private:
    using Answer = InstallationHost::Overwrite;

    QString placeOf(const PackageArchiveFile& file) const;
    QString shownPlaceOf(const PackageArchiveFile& file) const;
    Answer decide(const PackageArchiveFile& file);
    void keep(const PackageArchiveFile& file);
    bool write(const PackageArchiveFile& file);

    PackageArchive& archive_;
    QString destination_;
    TargetDirectory directory_;
    InstallationHost& host_;
    Answer remembered_ = Answer::Cancel;  // until the user answers for all
    InstalledFiles installed_;
    KeptFiles kept_;
};

}  // namespace package
