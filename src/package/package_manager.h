#pragma once

#include "package/package_description.h"
#include "package/package_version.h"

#include <QString>

#include <optional>
#include <vector>

namespace package {

/// A package that a manager knows.
struct PackageRecord {
    QString name;
    std::optional<PackageVersion> installedVersion;  ///< may be unset; none when it is not installed
    QString installationDirectory;                   ///< as in the description
    InstalledFiles files;
    KeptFiles kept;
};

/// What the description of an installed package says.
PackageRecord recordOf(PackageDescriptionFile& description);

/// What installing and uninstalling need of a package manager. Neither throws.
class PackageManager {
public:
    virtual ~PackageManager() = default;

    virtual QString packagesDirectory() const = 0;
    /// The known packages, which the installer may change.
    virtual std::vector<PackageRecord>& packages() = 0;
    /// Told before the description of an installed package is written, and after a package has been removed.
    virtual void packageAdded(const PackageRecord& package) = 0;
    virtual void packageRemoved(const QString& name) = 0;
    virtual void progress(qsizetype total, qsizetype done) = 0;
};

/// Whom an installation asks and tells.
class InstallationHost {
public:
    enum class Overwrite { Yes, YesToAll, No, NoToAll, Cancel };

    virtual ~InstallationHost() = default;

    /// A directory, or a null text to cancel. `start` is where a dialog begins.
    virtual QString chooseDirectory(const QString& prompt, const QString& start) = 0;
    /// `target` is the file that `text` asks about.
    virtual Overwrite askOverwrite(const QString& title, const QString& text, const QString& target) = 0;
    /// False to cancel.
    virtual bool confirm(const QString& title, const QString& heading, const QString& text) = 0;
    virtual void inform(const QString& title, const QString& text) = 0;
    /// False to end the installation.
    virtual bool goOnAfter(const QString& title, const QString& error) = 0;
    virtual void showStatus(const QString& text) = 0;
    /// The engine's global macro of that name has been set or removed.
    virtual void saveGlobalMacros(const QString& changed) = 0;
};

}  // namespace package
