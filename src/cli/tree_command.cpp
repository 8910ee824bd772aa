#include "cli/tree_command.h"

#include "cli/output.h"
#include "cli/session.h"
#include "project/tree_walk.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

using project::ProjectElement;

struct TreeOptions {
    std::string solution;
    NodeOptions node;
    bool configurations = false;
};

class TreePrinter {
public:
    TreePrinter(Session& session, const TreeOptions& options, Output& output)
        : engine_(session.engine()), options_(options), output_(output) {}

    void print(ProjectElement& top) {
        walkElements(
            top, [this](ProjectElement& node) { enter(node); }, [this](ProjectElement&) { --depth_; });
    }

private:
    void enter(ProjectElement& node) {
        if (!node.isConfiguration()) {
            printNode(node);
        } else if (options_.configurations) {
            printConfiguration(node);
        }
        ++depth_;
    }

    void printNode(ProjectElement& node) {
        printName(node);
        const QString type = typeOf(node);
        if (!type.isEmpty()) output_ << " [" << printable(type.toStdString()) << "]";
        if (node.attributes.value(project::keys::hidden) == u"Yes") output_ << " (hidden)";
        output_ << "\n";
    }

    void printConfiguration(ProjectElement& node) {
        printName(node);
        output_ << "\n";
        for (const auto& [key, value] : node.attributes)
            if (key != project::keys::name)
                output_ << indentation(depth_ + 1) << key.toStdString() << "=\""
                        << printable(value.toStdString()) << "\"\n";
    }

    void printName(ProjectElement& node) {
        output_ << indentation(depth_) << node.tagName().toStdString() << " "
                << printable(node.elementName().toStdString());
    }

    QString typeOf(ProjectElement& node) {
        if (!node.isFile() && !node.isProject()) return {};
        const QString configuration = options_.node.configurationName();
        engine_.loadToolDescriptions(&node, configuration);
        if (node.isFile()) return engine_.fileType(&node, configuration);
        return engine_.propertyValue(&node, engine_.schema().general.project_type, configuration);
    }

    project::ProjectSystem& engine_;
    const TreeOptions& options_;
    Output& output_;
    std::size_t depth_ = 0;
};

int run(const TreeOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    ProjectElement* const node = session.open(options.solution) ? session.find(options.node) : nullptr;
    if (!node) return 1;
    Output output;
    TreePrinter(session, options, output).print(*node);
    return output.finish() ? 0 : 1;
}

}  // namespace

void addTreeCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<TreeOptions>();
    CLI::App* command = app.add_subcommand("tree", "Prints the tree of a solution, one node a line");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    addNodeOptions(*command, options->node);
    command->add_flag("--configurations", options->configurations, "Shows configurations and their values");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
