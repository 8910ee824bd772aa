#include "package/package_installer.h"

#include "package/installed_file.h"
#include "package/package_archive.h"
#include "package/package_copier.h"
#include "package/target.h"
#include "project/base/macro_engine.h"
#include "project/base/path.h"
#include "project/project_system.h"
#include "support/hexception.h"

#include <QFileInfo>
#include <QRegularExpression>
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

/// A decimal number too large for any target is for another one too.
bool isForOtherTarget(const QString& text) {
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+$"));
    bool fits = false;
    const int target = text.trimmed().toInt(&fits);
    return number.match(text.trimmed()).hasMatch() &&
           (!fits || target != project::projectSystem->targetNumber());
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
    for (const auto& entry : archive.files()) pathBelow(entry->name());
    if (const QString described = description.attribute("name"); !described.isEmpty())
        name = described;
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
    if (file != nullptr) record(description, descriptionName(*file), copier);
    if (showStatus) host_.showStatus(QStringLiteral("Installed package '%1'").arg(name));
    return true;
}

/// False when the user cancels.
bool PackageInstaller::chooseDestination(PackageDescriptionFile& description, QString& destination) {
    const QString text = description.attribute("installation_directory");
    const QString described = installationDirectory(text, manager_);
    destination = directory_.isEmpty() ? described : directory_;
    const QString prompt = description.attribute("installation_directory_prompt");
    if (directory_.isEmpty() && !text.isEmpty() && !prompt.isEmpty()) {
        destination = host_.chooseDirectory(prompt, described);
        if (destination.isEmpty()) {
            host_.inform(QStringLiteral("Installation cancelled"),
                         QStringLiteral("Package installation cancelled."));
            return false;
        }
    }
    requireExpanded(destination);
    // The record must say where the files are.
    if (destination != described) description.setAttribute("installation_directory", destination);
    const QString macro = description.attribute("installation_directory_global_macro_name");
    if (!macro.isEmpty()) {
        setGlobalMacro(macro, destination);
        host_.saveGlobalMacros(macro);
    }
    return true;
}

/// Whether the package is for this system, or the user goes on all the same.
bool PackageInstaller::acceptVersions(PackageDescriptionFile& description) {
    const QStringList parts = description.attribute("onw_versions").split(u':', Qt::SkipEmptyParts);
    if (parts.isEmpty()) return true;
    if (isForOtherTarget(parts[0]) && !confirmIncompatible(host_, QString())) return false;
    if (parts.size() < 2) return true;
    const VersionRange range = VersionRange::parse(parts[1]);
    return range.contains(systemRelease) ||
           confirmIncompatible(host_, QStringLiteral(" - version %1 is required").arg(range.toString()));
}

void PackageInstaller::record(PackageDescriptionFile& description, const QString& fileName,
                              const PackageCopier& copier) {
    InstalledFiles files = copier.installed();
    files.insert(fileName, 0);
    description.setInstalledFiles(files, copier.kept());
    manager_.packageAdded(recordOf(description));
    description.savePackageDescription(manager_.packagesDirectory() + u'/' + fileName, true);
}

PackageRecord* PackageInstaller::installed(const QString& name) {
    auto& packages = manager_.packages();
    const auto found = std::find_if(packages.begin(), packages.end(), [&](const PackageRecord& package) {
        return package.name == name && package.installedVersion.has_value();
    });
    return found == packages.end() ? nullptr : &*found;
}

bool PackageInstaller::uninstallPackage(const QString& name) {
    PackageRecord* const package = installed(name);
    if (package == nullptr) return true;
    requireExpanded(directoryOf(*package, QString(), manager_));
    QStringList emptied;
    QSet<QString> seen;
    bool isComplete = true;
    qsizetype done = 0;
    for (auto file = package->files.begin(); file != package->files.end(); ++file) {
        const QString base = directoryOf(*package, file.key(), manager_);
        if (removeInstalledFile(base, file.key())) {
            const QString holder = QFileInfo(base + u'/' + pathBelow(file.key())).path();
            if (!seen.contains(holder)) emptied.append(holder);
            seen.insert(holder);
        } else {
            isComplete = false;
            host_.inform(QStringLiteral("Package uninstallation error"),
                         QStringLiteral("Cannot remove %1.").arg(base + u'/' + file.key()));
        }
        manager_.progress(package->files.size(), ++done);
    }
    package->installedVersion.reset();
    package->files.clear();
    for (const QString& holder : emptied) removeEmptyDirectories(holder);
    manager_.packageRemoved(name);
    return isComplete;
}

}  // namespace package
