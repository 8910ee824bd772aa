#include "package/installed_file.h"

#include "package/package_archive_file.h"
#include "package/target.h"
#include "project/base/macro_engine.h"
#include "support/hexception.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <cerrno>

namespace package {

QString installationDirectory(const QString& text, const PackageManager& manager) {
    const QString expanded = project::macroEngine ? project::macroEngine->expandSystem(text) : text;
    return expanded.isEmpty() ? manager.packagesDirectory()
                              : QDir(manager.packagesDirectory()).absoluteFilePath(expanded);
}

void requireExpanded(const QString& directory) {
    if (directory.contains(u"$("))
        throw support::HException("cannot expand installation directory " + directory.toStdString());
}

QString directoryOf(const PackageRecord& package, const QString& file, const PackageManager& manager) {
    if (file.endsWith(descriptionSuffix)) return manager.packagesDirectory();
    return installationDirectory(package.installationDirectory, manager);
}

bool removeInstalledFile(const QString& directory, const QString& file) {
    try {
        TargetDirectory(directory).check(file);
    } catch (const support::HException&) {
        return false;
    }
    const QByteArray path = QFile::encodeName(directory + u'/' + pathBelow(file));
    return ::unlink(path.constData()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

void removeEmptyDirectories(const QString& directory) {
    QString next = directory;
    while (!QDir(next).isRoot() && QDir().rmdir(next)) next = QFileInfo(next).path();
}

}  // namespace package
