#include "cli/properties_command.h"

#include "cli/output.h"
#include "cli/session.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

struct PropertiesOptions {
    std::string solution;
    NodeOptions node;
};

/// Whether the node itself has the value. Facts of a node are nowhere else.
bool isLocal(const project::PropertyValue& value, const project::ProjectElement& node) {
    if (dynamic_cast<const project::DynamicFolderPropertyValue*>(&value))
        return node.attributes.contains(value.propertyClass()->name);
    return !value.isInherited() || dynamic_cast<const project::SimplePropertyValue*>(&value);
}

int run(const PropertiesOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    project::ProjectElement* const node =
        session.open(options.solution) ? session.find(options.node) : nullptr;
    if (!node) return 1;
    Output output;
    const project::PropertyValueList values =
        session.engine().nodePropertyValues(node, options.node.configurationName());
    for (const project::PropertyValue* value : values) {
        output << printable(value->propertyClass()->name.toStdString()) << "\t"
               << printable(value->propertyClass()->shortName.toStdString()) << "\t"
               << printable(value->value().toStdString()) << "\t"
               << (isLocal(*value, *node) ? "local" : "inherited") << "\n";
    }
    return output.finish() ? 0 : 1;
}

}  // namespace

void addPropertiesCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<PropertiesOptions>();
    CLI::App* command =
        app.add_subcommand("properties", "Prints the properties that a view offers for a node");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    addNodeOptions(*command, options->node);
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
