#include "package/package_installer.h"

#include "package/installed_file.h"
#include "package/package_archive.h"
#include "package/package_copier.h"
#include "project/base/path.h"
#include "project/project_system.h"
#include "support/hexception.h"

#include <QFileInfo>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace package {

using support::HException;

namespace {

void setGlobalMacro(const QString& name, const QString& value) {
    if (project::macroEngine) project::macroEngine->setGlobalMacro(name, value);
}

QString incompatible(const QString& requirement) {
    return QStringLiteral(
               "<p>The package you are installing is incompatible with this release of Kestrelant%1.</p>"
               "<p>We recommend that you terminate the installation as it is unlikely that the package will "
               "function correctly.</p>"
               "<p>Click <b>Cancel</b> to cancel the installation or <b>OK</b> to continue.</p>")
        .arg(requirement);
}

bool confirmIncompatible(InstallationHost& host, const QString& requirement) {
    return host.confirm(QStringLiteral("Package Manager"), QStringLiteral("Installing incompatible package"),
                        incompatible(requirement));
}

/// The name of a description in the packages directory, its own in the list of what was installed.
QString descriptionName(const PackageArchiveFile& file) {
    return QStringLiteral("packages/") + project::Path(file.name()).fileName();
}

}  // namespace

bool PackageInstaller::installPackage(const QString& path, QString& name, bool showStatus,
                                      bool uninstallFirst) {
    PackageArchive archive(path);
    PackageDescriptionFile description;
    description.loadPackageDescription(archive);
    const PackageArchiveFile* const file = description.isEmpty() ? nullptr : archive.findPackageDescription();
    if (file == nullptr && directory_.isEmpty())
        throw HException("package has no description " + path.toStdString());
    if (description.hasAttribute("name"))
        name = description.attribute("name");
    else
        description.setAttribute("name", name);
    if (uninstallFirst) uninstallPackage(name);

    QString destination;
    if (!chooseDestination(description, destination)) return false;
    if (!description.hasAttribute("filetype"))
        description.setAttribute("filetype", project::Path(path).extension(false));
    if (!acceptVersions(description)) return false;

    archive.checkNames(destination);
    PackageCopier copier(archive, destination, host_);
    const auto total = static_cast<qsizetype>(archive.files().size());
    qsizetype done = 0;
    for (const auto& entry : archive.files()) {
        if (!copier.copy(*entry)) return false;
        manager_.progress(total, ++done);
    }
    if (file != nullptr) record(description, descriptionName(*file), copier.installed());
    if (showStatus) host_.showStatus(QStringLiteral("Installed package '%1'").arg(name));
    return true;
}

/// False when the user cancels.
bool PackageInstaller::chooseDestination(PackageDescriptionFile& description, QString& destination) {
    const QString expanded = expandSystemMacros(description.attribute("installation_directory"));
    destination = directory_.isEmpty() ? expanded : directory_;
    if (destination.isEmpty()) {
        destination = manager_.packagesDirectory();
        return true;
    }
    const QString prompt = description.attribute("installation_directory_prompt");
    if (directory_.isEmpty() && !prompt.isEmpty()) {
        destination = host_.chooseDirectory(prompt, expanded);
        if (destination.isNull()) {
            host_.inform(QStringLiteral("Installation cancelled"),
                         QStringLiteral("Package installation cancelled."));
            return false;
        }
    }
    // The record must say where the files are.
    if (destination != expanded) description.setAttribute("installation_directory", destination);
    const QString macro = description.attribute("installation_directory_global_macro_name");
    if (!macro.isEmpty()) {
        setGlobalMacro(macro, destination);
        host_.saveGlobalMacros();
    }
    return true;
}

/// Whether the package is for this system, or the user goes on all the same.
bool PackageInstaller::acceptVersions(PackageDescriptionFile& description) {
    const QStringList parts = description.attribute("onw_versions").split(u':', Qt::SkipEmptyParts);
    if (parts.isEmpty()) return true;
    bool isNumber = false;
    const int target = parts[0].toInt(&isNumber);
    if (isNumber && target != project::projectSystem->targetNumber() &&
        !confirmIncompatible(host_, QString()))
        return false;
    if (parts.size() < 2) return true;
    const VersionRange range = VersionRange::parse(parts[1]);
    return range.contains(systemRelease) ||
           confirmIncompatible(host_, QStringLiteral(" - version %1 is required").arg(range.toString()));
}

void PackageInstaller::record(PackageDescriptionFile& description, const QString& fileName,
                              InstalledFiles files) {
    files.insert(fileName, 0);
    description.setInstalledFiles(files);
    manager_.packageAdded(recordOf(description));
    description.savePackageDescription(manager_.packagesDirectory() + u'/' + fileName, true);
}

PackageRecord* PackageInstaller::installed(const QString& name) {
    auto& packages = manager_.packages();
    const auto found = std::find_if(packages.begin(), packages.end(), [&](const PackageRecord& package) {
        return package.name == name && package.installedVersion.isSet();
    });
    return found == packages.end() ? nullptr : &*found;
}

void PackageInstaller::uninstallPackage(const QString& name) {
    PackageRecord* const package = installed(name);
    if (package == nullptr) return;
    QStringList emptied;
    QSet<QString> seen;
    qsizetype done = 0;
    for (auto file = package->files.begin(); file != package->files.end(); ++file) {
        const QString base = directoryOf(*package, file.key(), manager_);
        if (removeInstalledFile(base, file.key())) {
            const QString holder = QFileInfo(base + u'/' + file.key()).path();
            if (!seen.contains(holder)) emptied.append(holder);
            seen.insert(holder);
        }
        manager_.progress(package->files.size(), ++done);
    }
    package->installedVersion = {};
    package->files.clear();
    for (const QString& holder : emptied) removeEmptyDirectories(holder);
    manager_.packageRemoved(name);
}

}  // namespace package
