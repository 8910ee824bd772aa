#pragma once

#include "package/package_manager.h"

#include <string>

namespace package {

/// A package manager whose records are the descriptions of the installed packages, kept as
/// "packages/*_package.xml" in its directory. When a package is installed again, it removes what the former
/// installation left and the new one does not have, unless the user has changed or kept it.
class PackageDirectory : public PackageManager {
public:
    explicit PackageDirectory(const QString& directory);

    /// Why descriptions could not be read; those packages are not known.
    const std::vector<std::string>& problems() const { return problems_; }

    QString packagesDirectory() const override { return directory_; }
    std::vector<PackageRecord>& packages() override { return packages_; }
    void packageAdded(const PackageRecord& package) override;
    void packageRemoved(const QString& name) override;
    void progress(qsizetype /*total*/, qsizetype /*done*/) override {}

private:
    void read(const QString& path);

    QString directory_;
    std::vector<PackageRecord> packages_;
    std::vector<std::string> problems_;
};

}  // namespace package
