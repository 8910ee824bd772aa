#include "cli/export_command.h"

#include "build/export_builder.h"
#include "cli/output.h"
#include "cli/session.h"

#include <QSaveFile>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

struct ExportOptions {
    std::string solution;
    std::string configuration;
    NodeOptions node;
    bool makefile = false;
    std::string file = "-";
};

int writeText(const std::string& fileName, const QString& text) {
    if (fileName == "-") {
        Output output;
        output << text.toStdString();
        return output.finish() ? 0 : 1;
    }
    QSaveFile file(QString::fromStdString(fileName));
    const QByteArray bytes = text.toUtf8();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return 0;
    reportError(fileName + ": " + file.errorString().toStdString());
    return 1;
}

int run(const ExportOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    QString configuration;
    if (!session.chooseConfiguration(options.configuration, configuration)) return 1;
    project::ProjectElement* const node = session.find(options.node);
    if (!node) return 1;
    return writeText(options.file,
                     options.makefile
                         ? build::exportMakefile(session.engine(), node, configuration, false)
                         : build::exportBuildCommands(session.engine(), node, configuration, false, false));
}

}  // namespace

void addExportCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* command = app.add_subcommand("export", "Writes a build as a command script or as a makefile");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->add_option("-p", options->node.project, "A project, by its qualified name")
        ->type_name("PROJECT");
    command
        ->add_option("-c", options->configuration,
                     "The configuration; by default the solution's first public one")
        ->type_name("CONFIGURATION");
    command->add_flag("--makefile", options->makefile, "Writes a makefile, which GNU make runs");
    command->add_option("-o", options->file, "The file to write; - for standard output")
        ->type_name("FILE")
        ->capture_default_str();
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
