#include "cli/solution_command.h"

#include "cli/output.h"
#include "cli/session.h"

#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

struct SolutionOptions {
    std::string solution;
    std::string name;
    std::string type;
    std::string directory;
};

/// A path as a user names it, taken against the current directory; a text with macros stays.
QString absolutePath(const std::string& text) {
    const QString path = QString::fromStdString(text);
    return path.isEmpty() || path.contains(u'$') ? path : project::Path(path).absFilePath();
}

int makeSolution(const SolutionOptions& options, const GlobalOptions& globalOptions) {
    const QString extension = QStringLiteral(".qxProject");
    QString path = absolutePath(options.solution);
    if (!path.endsWith(extension)) path += extension;
    const QFileInfo file(path);
    if (file.exists()) {
        reportError(path.toStdString() + " already exists");
        return 1;
    }
    Session session(globalOptions);
    const QString name = file.fileName().chopped(extension.size());
    return session.save(*session.engine().newSolution(name, file.path())) ? 0 : 1;
}

int makeProject(const SolutionOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    project::ProjectSystem& engine = session.engine();
    const QString name = QString::fromStdString(options.name);
    const QString type = QString::fromStdString(options.type);
    if (engine.findProject(engine.solution(), name)) {
        reportError("project \"" + options.name + "\" already exists");
        return 1;
    }
    if (!engine.schema().general.project_type->values().contains(type)) {
        reportError("no project type \"" + options.type + '"');
        return 1;
    }
    engine.newProject(engine.solution(), name, absolutePath(options.directory), type);
    return session.save(*engine.solution()) ? 0 : 1;
}

int link(const SolutionOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    project::ProjectSystem& engine = session.engine();
    try {
        engine.insertSolutionLink(engine.solution(), absolutePath(options.name), nullptr, nullptr);
    } catch (const project::SolutionLoadError& error) {
        reportLoadError(error);
        return 1;
    }
    return session.save(*engine.solution()) ? 0 : 1;
}

template <typename Run>
CLI::App* addCommand(CLI::App& app, const char* name, const char* help,
                     const std::shared_ptr<SolutionOptions>& options, const GlobalOptions& globalOptions,
                     int& exitStatus, Run run) {
    CLI::App* command = app.add_subcommand(name, help);
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->callback(
        [options, run, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
    return command;
}

}  // namespace

void addSolutionCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<SolutionOptions>();
    addCommand(app, "new", "Makes an empty solution", options, globalOptions, exitStatus, makeSolution);

    CLI::App* command = addCommand(app, "new-project", "Adds a project to a solution", options, globalOptions,
                                   exitStatus, makeProject);
    command->add_option("NAME", options->name, "The name of the project")
        ->type_name("")
        ->required()
        ->check(isName());
    command->add_option("--type", options->type, "The type of the project, such as Executable")
        ->type_name("TYPE")
        ->required();
    command->add_option("--directory", options->directory, "The project's directory")->type_name("DIR");

    command = addCommand(app, "link", "Links another solution", options, globalOptions, exitStatus, link);
    command->add_option("FILE", options->name, "The solution file to link; may hold macros")
        ->type_name("")
        ->required();
}

}  // namespace cli
