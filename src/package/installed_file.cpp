#include "package/installed_file.h"

#include "package/package_copier.h"
#include "package/target.h"
#include "project/base/macro_engine.h"
#include "support/hexception.h"

#include <QFile>

namespace package {

QString expandSystemMacros(const QString& text) {
    return project::macroEngine ? project::macroEngine->expandSystem(text) : text;
}

QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager) {
    if (file.endsWith(descriptionSuffix)) return manager.packagesDirectory();
    const QString directory = expandSystemMacros(package.installationDirectory);
    return directory.isEmpty() ? manager.packagesDirectory() : directory;
}

void removeInstalledFile(const QString& directory, const QString& file) {
    try {
        checkTarget(directory, file);
    } catch (const support::HException&) {
        return;
    }
    QFile::remove(directory + u'/' + file);
}

}  // namespace package
