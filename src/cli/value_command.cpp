#include "cli/value_command.h"

#include "cli/output.h"
#include "cli/session.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

using project::ProjectElement;
using project::PropertyClass;

struct ValueOptions {
    std::string solution;
    std::string key;
    std::string text;
    NodeOptions node;
    bool expand = false;
    bool list = false;
    bool local = false;
    bool trace = false;
};

/// What a value command works on; all null when something is missing.
struct Place {
    ProjectElement* node = nullptr;
    const PropertyClass* propertyClass = nullptr;
};

Place findPlace(Session& session, const ValueOptions& options) {
    if (!session.open(options.solution)) return {};
    ProjectElement* const node = session.find(options.node);
    const PropertyClass* const propertyClass =
        node ? session.findClass(options.key, options.node, *node) : nullptr;
    return propertyClass ? Place{node, propertyClass} : Place{};
}

void printTrace(project::ProjectSystem& engine, const Place& place, const QString& configuration,
                Output& output) {
    project::PropertyTrace trace;
    engine.propertyValue(place.node, place.propertyClass, configuration, &trace);
    for (const project::PropertyOrigin& origin : trace)
        output << printable(origin.value.toStdString()) << "\t"
               << printable(origin.configuration.toStdString()) << "\t"
               << printable(origin.node ? origin.node->elementName().toStdString() : "") << "\n";
}

int get(const ValueOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    const Place place = findPlace(session, options);
    if (!place.node) return 1;
    project::ProjectSystem& engine = session.engine();
    const QString configuration = options.node.configurationName();
    Output output;
    if (options.trace) {
        printTrace(engine, place, configuration, output);
        return output.finish() ? 0 : 1;
    }
    QString value = options.local ? engine.localPropertyValue(place.node, place.propertyClass, configuration)
                                  : engine.propertyValue(place.node, place.propertyClass, configuration);
    if (options.local && value.isNull()) return 1;
    QStringList lines = options.list ? project::listEntries(value, false) : QStringList(value);
    if (options.expand) lines = engine.expandMacroList(place.node, configuration, lines);
    for (const QString& line : lines) output << line.toStdString() << "\n";
    return output.finish() ? 0 : 1;
}

/// The configuration in which a value is stored, or null, after a report, where it cannot be stored.
QString storingConfiguration(const PropertyClass& propertyClass, const ValueOptions& options) {
    QString configuration = options.node.configurationName();
    if (propertyClass.readOnly) {
        reportError("property \"" + options.key + "\" is read-only");
        return {};
    }
    if (!propertyClass.perConfiguration && configuration != project::commonConfiguration) {
        reportError("property \"" + options.key + "\" is the same in all configurations");
        return {};
    }
    return configuration;
}

/// Sets or clears a choice among groups with all that it brings.
void changeGroup(const properties::PropertyValueGroupClass& group, ProjectElement& node,
                 const QString& configuration, const ValueOptions& options, bool clears) {
    project::PropertyValueGroupValue value(&group, configuration, &node);
    if (clears) {
        value.clear();
    } else {
        value.setValue(QString::fromStdString(options.text));
    }
}

int change(const ValueOptions& options, const GlobalOptions& globalOptions, bool clears) {
    Session session(globalOptions);
    const Place place = findPlace(session, options);
    if (!place.node) return 1;
    const QString configuration = storingConfiguration(*place.propertyClass, options);
    if (configuration.isNull() || !session.canModify(*place.node)) return 1;
    project::ProjectSystem& engine = session.engine();
    const auto* const group = dynamic_cast<const properties::PropertyValueGroupClass*>(place.propertyClass);
    if (group) {
        changeGroup(*group, *place.node, configuration, options, clears);
    } else if (clears) {
        engine.clearPropertyValue(place.node, place.propertyClass, configuration);
    } else {
        engine.setPropertyValue(place.node, place.propertyClass, configuration,
                                QString::fromStdString(options.text));
    }
    return session.save(*place.node) ? 0 : 1;
}

int expand(const ValueOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    ProjectElement* const node = session.open(options.solution) ? session.find(options.node) : nullptr;
    if (!node) return 1;
    session.engine().loadToolDescriptions(node, options.node.configurationName());
    Output output;
    output << session.engine()
                  .expandMacros(node, options.node.configurationName(), QString::fromStdString(options.text))
                  .toStdString()
           << "\n";
    return output.finish() ? 0 : 1;
}

/// A command of its own name, about a value of a node.
template <typename Run>
std::pair<CLI::App*, std::shared_ptr<ValueOptions>> addCommand(CLI::App& app, const char* name,
                                                               const char* help, int& exitStatus, Run run) {
    const auto options = std::make_shared<ValueOptions>();
    CLI::App* command = app.add_subcommand(name, help);
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    addNodeOptions(*command, options->node);
    command->callback([options, run, &exitStatus] { exitStatus = run(*options); });
    return {command, options};
}

void addKey(CLI::App& command, ValueOptions& options) {
    command.add_option("KEY", options.key, "The key of the property")->type_name("")->required();
}

}  // namespace

void addValueCommands(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto [getCommand, getOptions] =
        addCommand(app, "get", "Prints the value of a property in force", exitStatus,
                   [&globalOptions](const ValueOptions& options) { return get(options, globalOptions); });
    addKey(*getCommand, *getOptions);
    CLI::Option* expandFlag = getCommand->add_flag("--expand", getOptions->expand, "Expands macros");
    CLI::Option* list =
        getCommand->add_flag("--list", getOptions->list, "Prints the entries of a list, one a line");
    CLI::Option* local =
        getCommand->add_flag("--local", getOptions->local, "Prints only what is stored at this very place");
    getCommand->add_flag("--trace", getOptions->trace, "Prints where the value comes from")
        ->excludes(local)
        ->excludes(list)
        ->excludes(expandFlag);

    const auto [setCommand, setOptions] = addCommand(
        app, "set", "Stores the value of a property", exitStatus,
        [&globalOptions](const ValueOptions& options) { return change(options, globalOptions, false); });
    addKey(*setCommand, *setOptions);
    setCommand->add_option("VALUE", setOptions->text, "The value")->type_name("")->required();

    const auto [clearCommand, clearOptions] = addCommand(
        app, "clear", "Removes the stored value of a property", exitStatus,
        [&globalOptions](const ValueOptions& options) { return change(options, globalOptions, true); });
    addKey(*clearCommand, *clearOptions);

    const auto [expandCommand, expandOptions] =
        addCommand(app, "expand", "Prints a text with its macros expanded", exitStatus,
                   [&globalOptions](const ValueOptions& options) { return expand(options, globalOptions); });
    expandCommand->add_option("TEXT", expandOptions->text, "The text")->type_name("")->required();
}

}  // namespace cli
