#include "cli/configuration_command.h"

#include "cli/output.h"
#include "cli/session.h"
#include "project/tree_walk.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

using project::ProjectElement;

using project::PrivateConfigurations;
using project::PublicConfigurations;

constexpr unsigned allConfigurations = project::WithCommon | PrivateConfigurations | PublicConfigurations;

struct ConfigurationOptions {
    std::string solution;
    std::string name;
    std::string newName;
    std::vector<std::string> inherited;
    bool isPrivate = false;
    bool all = false;
};

int list(const ConfigurationOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    const unsigned flags = options.all         ? allConfigurations
                           : options.isPrivate ? PrivateConfigurations
                                               : PublicConfigurations;
    Output output;
    for (const QString& name : session.engine().configurationNames(session.engine().solution(), flags))
        output << name.toStdString() << "\n";
    return output.finish() ? 0 : 1;
}

/// Whether every solution that has changed may be written.
bool canModifyAll(Session& session) {
    for (ProjectElement* solution : session.engine().solutionIndex())
        if (session.engine().isModified(solution, false) && !session.canModify(*solution)) return false;
    return true;
}

/// Whether any node has the configuration.
bool exists(ProjectElement& solution, const QString& name) {
    bool found = false;
    forEachElement(solution, [&](ProjectElement& node) {
        found = found || node.configurations.contains(name);
        return !found;
    });
    return found;
}

int rename(const ConfigurationOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    project::ProjectSystem& engine = session.engine();
    const QString oldName = QString::fromStdString(options.name);
    if (oldName == project::commonConfiguration) {
        reportError("Common cannot be renamed");
        return 1;
    }
    if (!exists(*engine.solution(), oldName)) {
        reportError("no configuration \"" + options.name + '"');
        return 1;
    }
    if (!engine.renameConfiguration(engine.solution(), oldName, QString::fromStdString(options.newName))) {
        reportError(options.newName + " is already in use");
        return 1;
    }
    return canModifyAll(session) && session.saveAll() ? 0 : 1;
}

int inherit(const ConfigurationOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    ProjectElement& solution = *session.engine().solution();
    QStringList names;
    for (const std::string& name : options.inherited) names.append(QString::fromStdString(name));
    session.engine().setInheritedConfigurations(&solution, QString::fromStdString(options.name), names);
    return session.save(solution) ? 0 : 1;
}

template <typename Run>
CLI::App* addCommand(CLI::App& app, const char* name, const char* help,
                     const std::shared_ptr<ConfigurationOptions>& options, const GlobalOptions& globalOptions,
                     int& exitStatus, Run run) {
    CLI::App* command = app.add_subcommand(name, help);
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->callback(
        [options, run, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
    return command;
}

}  // namespace

void addConfigurationCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<ConfigurationOptions>();
    CLI::App* command = addCommand(app, "configurations", "Prints the public configurations", options,
                                   globalOptions, exitStatus, list);
    CLI::Option* isPrivate = command->add_flag("--private", options->isPrivate, "Prints the private ones");
    command->add_flag("--all", options->all, "Prints all")->excludes(isPrivate);

    command = addCommand(app, "rename-configuration", "Renames a configuration throughout", options,
                         globalOptions, exitStatus, rename);
    command->add_option("OLD", options->name, "The configuration")
        ->type_name("")
        ->required()
        ->check(isName());
    command->add_option("NEW", options->newName, "Its new name")->type_name("")->required()->check(isName());

    command = addCommand(app, "inherit", "Sets what a configuration inherits", options, globalOptions,
                         exitStatus, inherit);
    command->add_option("CONFIGURATION", options->name, "The configuration")
        ->type_name("")
        ->required()
        ->check(isName());
    command
        ->add_option("NAME", options->inherited, "What it inherits, in order; nothing at all without a name")
        ->type_name("");
}

}  // namespace cli
