// atelis package solution, open
#include "cli/newer_files.h"
#include "cli/output.h"
#include "cli/package_command.h"
#include "cli/save_archive.h"
#include "cli/session.h"
#include "package/package_archive.h"
#include "package/packaged_solution.h"
#include "support/hexception.h"

#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

using support::HException;

struct SolutionArchiveOptions {
    std::string solution;
    std::string archive;
    std::string extraFile;
    std::string directory;
    NewerFiles newer = NewerFiles::Keep;
};

/// Answers from the words of the command line.
class CommandHost : public package::PackagedSolutionHost {
public:
    explicit CommandHost(const SolutionArchiveOptions& options) : options_(options) {}

    QString chooseDirectory(const QString& /*prompt*/, const QString& /*start*/) override {
        QString directory = QString::fromStdString(options_.directory);
        while (directory.size() > 1 && directory.endsWith(u'/')) directory.chop(1);
        return directory;
    }

    Answer askOverwrite(const QString& /*title*/, const QString& text) override {
        switch (options_.newer) {
            case NewerFiles::Keep:
                return Answer::No;
            case NewerFiles::Overwrite:
                return Answer::Yes;
            case NewerFiles::Cancel:
                reportError(text.section(QStringLiteral(" - "), 0, -2).toStdString());
        }
        return Answer::Cancel;
    }

    /// The solution that was packaged is the first entry.
    QString chooseSolution(const QString& /*title*/, const QString& /*filter*/,
                           const QString& start) override {
        const package::PackageArchive archive(QString::fromStdString(options_.archive));
        const auto& files = archive.files();
        QString file = files.empty() ? QString() : start + u'/' + files.front()->name();
        if (!file.endsWith(QStringLiteral(".qxProject")) || !QFileInfo(file).isFile())
            throw HException("no solution in " + options_.archive);
        return file;
    }

private:
    const SolutionArchiveOptions& options_;
};

int bundle(const SolutionArchiveOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    const QString extraFile =
        options.extraFile.empty() ? QString() : QString::fromStdString(options.extraFile);
    package::PackageArchive archive;
    archive.addSolution(session.engine().solution(), extraFile);
    saveArchive(archive, options.archive);
    return 0;
}

int open(const SolutionArchiveOptions& options) {
    CommandHost host(options);
    const QString solution = package::openPackagedSolution(QString::fromStdString(options.archive), host);
    if (solution.isNull()) return 1;
    Output output;
    output << solution.toStdString() << "\n";
    return output.finish() ? 0 : 1;
}

void addBundle(CLI::App& package, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<SolutionArchiveOptions>();
    CLI::App* command = package.add_subcommand("solution", "Bundles a solution with its files");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->add_option("ARCHIVE", options->archive, "The archive to make")->type_name("")->required();
    command->add_option("--extra", options->extraFile, "A further file below the solution's directory")
        ->type_name("FILE");
    command->callback(
        [options, &globalOptions, &exitStatus] { exitStatus = bundle(*options, globalOptions); });
}

void addOpen(CLI::App& package, int& exitStatus) {
    const auto options = std::make_shared<SolutionArchiveOptions>();
    CLI::App* command = package.add_subcommand("open", "Unpacks a solution and prints its file");
    command->add_option("ARCHIVE", options->archive, "The archive")->type_name("")->required();
    command->add_option("DIR", options->directory, "The directory to unpack to")->type_name("")->required();
    addNewerOption(*command, options->newer);
    command->callback([options, &exitStatus] { exitStatus = open(*options); });
}

}  // namespace

void addSolutionArchiveCommands(CLI::App& package, const GlobalOptions& globalOptions, int& exitStatus) {
    addBundle(package, globalOptions, exitStatus);
    addOpen(package, exitStatus);
}

}  // namespace cli
