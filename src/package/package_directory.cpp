#include "package/package_directory.h"

#include "package/check_sum.h"
#include "package/installed_file.h"
#include "package/package_copier.h"
#include "support/hexception.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace package {

using support::HException;

namespace {

/// Whether the file is as it was installed; a description always is.
bool isUnchanged(const QString& path, std::uint32_t sum) {
    try {
        return path.endsWith(descriptionSuffix) || checkSumOfFile(path) == sum;
    } catch (const HException&) {
        return false;
    }
}

void removeLeftOvers(const PackageRecord& old, const PackageRecord& now, const PackageManager& manager) {
    for (auto file = old.files.begin(); file != old.files.end(); ++file) {
        const QString directory = directoryOf(old, file.key(), manager);
        const bool isKept =
            now.files.contains(file.key()) && directory == directoryOf(now, file.key(), manager);
        const QString path = directory + u'/' + file.key();
        if (!isKept && isUnchanged(path, file.value()) && removeInstalledFile(directory, file.key()))
            removeEmptyDirectories(QFileInfo(path).path());
    }
}

}  // namespace

PackageDirectory::PackageDirectory(const QString& directory) : directory_(directory) {
    const QDir descriptions(directory + QStringLiteral("/packages"));
    const QStringList names =
        descriptions.entryList({u'*' + descriptionSuffix}, QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString& name : names) read(descriptions.filePath(name));
}

void PackageDirectory::read(const QString& path) {
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) throw HException("cannot read " + path.toStdString());
        PackageDescriptionFile description;
        description.parse(file.readAll(), path);
        packages_.push_back(recordOf(description));
    } catch (const HException& fault) {
        problems_.push_back(fault.message());
    }
}

void PackageDirectory::packageAdded(const PackageRecord& package) {
    const auto isSame = [&](const PackageRecord& other) { return other.name == package.name; };
    for (const PackageRecord& old : packages_)
        if (isSame(old)) removeLeftOvers(old, package, *this);
    packageRemoved(package.name);
    packages_.push_back(package);
}

void PackageDirectory::packageRemoved(const QString& name) {
    std::erase_if(packages_, [&](const PackageRecord& package) { return package.name == name; });
}

}  // namespace package
