// atelis package info, install, uninstall, installed
#include "cli/newer_files.h"
#include "cli/output.h"
#include "cli/package_command.h"
#include "cli/session.h"
#include "package/installed_file.h"
#include "package/package_archive.h"
#include "package/package_directory.h"
#include "package/package_installer.h"
#include "support/hexception.h"

#include <QDir>
#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>

namespace cli {

namespace {

using package::PackageDirectory;
using package::PackageRecord;
using support::HException;

struct InstallOptions {
    std::string name;  ///< of the archive or of the package
    std::string directory;
    NewerFiles newer = NewerFiles::Keep;
    bool force = false;
};

/// The first paragraph of a text for a dialog, which has no markup of its own.
std::string plain(const QString& text) {
    return text.section(QStringLiteral("</p>"), 0, 0).remove(QStringLiteral("<p>")).toStdString();
}

/// Answers from the words of the command line.
class CommandHost : public package::InstallationHost {
public:
    explicit CommandHost(const InstallOptions& options) : options_(options) {}

    QString chooseDirectory(const QString& /*prompt*/, const QString& start) override { return start; }

    Overwrite askOverwrite(const QString& /*title*/, const QString& /*text*/,
                           const QString& target) override {
        switch (options_.newer) {
            case NewerFiles::Keep:
                return Overwrite::NoToAll;
            case NewerFiles::Overwrite:
                return Overwrite::YesToAll;
            case NewerFiles::Cancel:
                reportError("The file " + target.toStdString() +
                            " exists and is dated later than package file.");
                break;
        }
        return Overwrite::Cancel;
    }

    bool confirm(const QString& /*title*/, const QString& /*heading*/, const QString& text) override {
        options_.force ? reportWarning(plain(text)) : reportError(plain(text));
        return options_.force;
    }

    void inform(const QString& /*title*/, const QString& text) override { reportError(text.toStdString()); }

    bool goOnAfter(const QString& /*title*/, const QString& error) override {
        reportError(error.toStdString());
        return false;
    }

    void showStatus(const QString& text) override {
        Output output;
        output << printable(text.toStdString()) << "\n";
        output.finish();
    }

    /// The macros of a command are those of its command line.
    void saveGlobalMacros(const QString& changed) override {
        const QString value = project::macroEngine->globalMacros.value(changed);
        reportWarning("the global macro is not kept: -D " + changed.toStdString() + '=' +
                      value.toStdString());
    }

private:
    const InstallOptions& options_;
};

/// In the session's directory of packages.
PackageDirectory openRecords() {
    PackageDirectory records(project::macroEngine->macroValue(QStringLiteral("PackagesDir")));
    for (const std::string& problem : records.problems()) reportWarning(problem);
    return records;
}

/// In the form of XML, so that a line stays a line.
std::string quoted(const QString& value) {
    QString escaped;
    for (const QChar character : value.toHtmlEscaped())
        escaped += character < u' ' ? QStringLiteral("&#%1;").arg(character.unicode()) : QString(character);
    return "\"" + escaped.toStdString() + "\"";
}

int info(const InstallOptions& options, const GlobalOptions& /*globalOptions*/) {
    package::PackageArchive archive(QString::fromStdString(options.name));
    package::PackageDescriptionFile description;
    description.loadPackageDescription(archive);
    if (description.isEmpty()) throw HException("package has no description " + options.name);
    Output output;
    const auto attributes = description.attributes();
    for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute)
        output << attribute.key().toStdString() << "=" << quoted(attribute.value()) << "\n";
    return output.finish() ? 0 : 1;
}

int install(const InstallOptions& options, const GlobalOptions& globalOptions) {
    const Session session(globalOptions);
    PackageDirectory records = openRecords();
    CommandHost host(options);
    package::PackageInstaller installer(records, host);
    const QString archive = QString::fromStdString(options.name);
    if (!options.directory.empty())
        installer.setDirectory(QDir(QString::fromStdString(options.directory)).absolutePath());
    QString name = QFileInfo(archive).completeBaseName();
    constexpr bool showStatus = true;
    constexpr bool uninstallFirst = false;  // which would take newer files with it
    return installer.installPackage(archive, name, showStatus, uninstallFirst) ? 0 : 1;
}

int uninstall(const InstallOptions& options, const GlobalOptions& globalOptions) {
    const Session session(globalOptions);
    PackageDirectory records = openRecords();
    const QString name = QString::fromStdString(options.name);
    const auto isMeant = [&](const PackageRecord& package) { return package.name == name; };
    const auto& packages = records.packages();
    if (std::none_of(packages.begin(), packages.end(), isMeant))
        throw HException("package \"" + options.name + "\" is not installed");
    CommandHost host(options);
    return package::PackageInstaller(records, host).uninstallPackage(name) ? 0 : 1;
}

int installed(const InstallOptions& /*options*/, const GlobalOptions& globalOptions) {
    const Session session(globalOptions);
    PackageDirectory records = openRecords();
    Output output;
    for (const PackageRecord& package : records.packages())
        output << printable(package.name.toStdString()) << "\t"
               << package.installedVersion->toString().toStdString() << "\t"
               << printable(directoryOf(package, QString(), records).toStdString()) << "\n";
    return output.finish() ? 0 : 1;
}

using Run = int (*)(const InstallOptions& options, const GlobalOptions& globalOptions);

}  // namespace

void addInstallCommands(CLI::App& package, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<InstallOptions>();
    const auto add = [&](const char* name, const char* description, Run run) {
        CLI::App* command = package.add_subcommand(name, description);
        command->callback(
            [options, run, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
        return command;
    };
    const auto addName = [&](CLI::App* command, const char* name, const char* description) {
        command->add_option(name, options->name, description)->type_name("")->required();
    };
    addName(add("info", "Prints what the description of a package says", info), "ARCHIVE", "The package");

    CLI::App* command = add("install", "Installs a package", install);
    addName(command, "ARCHIVE", "The package");
    command->add_option("--directory", options->directory, "Where its files go")->type_name("DIR");
    addNewerOption(*command, options->newer);
    command->add_flag("--force", options->force, "Installs a package that is for another system or release");

    addName(add("uninstall", "Removes the files of a package", uninstall), "NAME", "The package");
    add("installed", "Lists the installed packages: name, version and directory", installed);
}

}  // namespace cli
