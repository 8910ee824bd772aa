#include "package/package_directory.h"

#include "package/check_sum.h"
#include "package/installed_file.h"
#include "package/package_archive_file.h"
#include "package/target.h"
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
    return path.endsWith(descriptionSuffix) || checkSumOfFile(path) == sum;
}

/// The file's place, however its name is written; throws for a name that leads out of its directory.
QString placeOf(const PackageRecord& package, const QString& file, const PackageManager& manager) {
    return directoryOf(package, file, manager) + u'/' + pathBelow(file);
}

QSet<QString> placesOf(const PackageRecord& package, const PackageManager& manager) {
    QSet<QString> places;
    for (auto file = package.files.begin(); file != package.files.end(); ++file)
        places.insert(placeOf(package, file.key(), manager));
    return places;
}

void removeLeftOver(const PackageRecord& old, const QString& file, const QSet<QString>& now,
                    const PackageManager& manager) {
    const QString place = placeOf(old, file, manager);
    const bool stays = old.kept.contains(file) || now.contains(place);
    if (!stays && isUnchanged(place, old.files.value(file)) &&
        removeInstalledFile(directoryOf(old, file, manager), file))
        removeEmptyDirectories(QFileInfo(place).path());
}

void removeLeftOvers(const PackageRecord& old, const PackageRecord& now, const PackageManager& manager) {
    const QSet<QString> places = placesOf(now, manager);
    for (auto file = old.files.begin(); file != old.files.end(); ++file) {
        try {
            removeLeftOver(old, file.key(), places, manager);
        } catch (const HException&) {
            // What cannot be read, or leads elsewhere, is not known to be the package's.
        }
    }
}

}  // namespace

PackageDirectory::PackageDirectory(const QString& directory) : directory_(directory) {
    const QDir descriptions(directory + QStringLiteral("/packages"));
    const QStringList names = descriptions.entryList(
        {u'*' + descriptionSuffix}, QDir::Files | QDir::Hidden | QDir::CaseSensitive, QDir::Name);
    for (const QString& name : names) read(descriptions.filePath(name));
}

void PackageDirectory::read(const QString& path) {
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() > PackageDescriptionFile::maxRecordSize)
            throw HException("cannot read " + path.toStdString());
        PackageDescriptionFile description;
        description.parse(file.readAll(), path);
        if (description.attribute("name").isEmpty())
            throw HException("package has no name " + path.toStdString());
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
