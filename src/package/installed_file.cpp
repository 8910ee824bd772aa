#include "package/installed_file.h"

#include "package/package_copier.h"
#include "package/target.h"
#include "project/base/macro_engine.h"
#include "support/hexception.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace package {

QString expandSystemMacros(const QString& text) {
    return project::macroEngine ? project::macroEngine->expandSystem(text) : text;
}

QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager) {
    if (file.endsWith(descriptionSuffix)) return manager.packagesDirectory();
    const QString directory = expandSystemMacros(package.installationDirectory);
    return directory.isEmpty() ? manager.packagesDirectory() : directory;
}

bool removeInstalledFile(const QString& directory, const QString& file) {
    try {
        checkTarget(directory, file);
    } catch (const support::HException&) {
        return false;
    }
    QFile::remove(directory + u'/' + file);
    return true;
}

void removeEmptyDirectories(const QString& directory) {
    QString next = directory;
    while (!QDir(next).isRoot() && QDir().rmdir(next)) next = QFileInfo(next).path();
}

}  // namespace package
