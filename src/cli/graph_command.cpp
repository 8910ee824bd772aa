#include "cli/graph_command.h"

#include "cli/output.h"
#include "cli/session.h"

#include <QHash>
#include <QSet>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

using project::ProjectElement;

struct GraphOptions {
    std::string solution;
    std::string configuration = "Common";
    bool all = false;
};

/// The projects of a solution and what they depend on. Hidden ones are left out and bridged.
class ProjectGraph {
public:
    ProjectGraph(project::ProjectSystem& engine, const GraphOptions& options)
        : engine_(engine), configuration_(QString::fromStdString(options.configuration)), all_(options.all) {
        const auto& projects = engine_.solution()->solution->projectIndex;
        for (auto entry = projects.begin(); entry != projects.end(); ++entry)
            names_.insert(entry.value(), entry.key());
    }

    void print(Output& output) {
        output << "digraph " << quoted(engine_.solution()->elementName()) << " {\n";
        const auto& projects = engine_.solution()->solution->projectIndex;
        for (auto entry = projects.begin(); entry != projects.end(); ++entry)
            if (isShown(*entry.value())) output << "    " << quoted(entry.key()) << ";\n";
        for (auto entry = projects.begin(); entry != projects.end(); ++entry)
            if (isShown(*entry.value()))
                for (const QString& target : targetsOf(*entry.value()))
                    output << "    " << quoted(entry.key()) << " -> " << quoted(target) << ";\n";
        output << "}\n";
    }

private:
    bool isShown(const ProjectElement& project) const {
        return all_ || project.attributes.value(project::keys::hidden) != u"Yes";
    }

    static std::string quoted(QString name) {
        return '"' + name.replace(u'\\', u"\\\\"_qs).replace(u'"', u"\\\""_qs).toStdString() + '"';
    }

    /// The shown projects that `from` depends on, directly or behind hidden ones, in name order.
    QStringList targetsOf(ProjectElement& from) {
        QSet<ProjectElement*> seen;
        std::vector<ProjectElement*> pending{&from};
        QStringList targets;
        while (!pending.empty()) {
            ProjectElement* const project = pending.back();
            pending.pop_back();
            for (ProjectElement* dependency : dependenciesOf(project)) {
                if (seen.contains(dependency)) continue;
                seen.insert(dependency);
                if (isShown(*dependency)) {
                    targets.append(names_.value(dependency));
                } else {
                    pending.push_back(dependency);
                }
            }
        }
        targets.sort();
        return targets;
    }

    const std::vector<ProjectElement*>& dependenciesOf(ProjectElement* project) {
        const auto known = dependencies_.constFind(project);
        if (known != dependencies_.constEnd()) return *known;
        std::vector<ProjectElement*> found;
        for (const QString& name :
             engine_.propertyValueList(QString(), project, engine_.schema().general.project_dependencies,
                                       configuration_, true, false))
            if (ProjectElement* const dependency = engine_.findProject(project, name))
                found.push_back(dependency);
        return *dependencies_.insert(project, found);
    }

    project::ProjectSystem& engine_;
    const QString configuration_;
    const bool all_;
    QHash<ProjectElement*, QString> names_;
    QHash<ProjectElement*, std::vector<ProjectElement*>> dependencies_;
};

int run(const GraphOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    if (!session.open(options.solution)) return 1;
    Output output;
    ProjectGraph(session.engine(), options).print(output);
    return output.finish() ? 0 : 1;
}

}  // namespace

void addGraphCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<GraphOptions>();
    CLI::App* command =
        app.add_subcommand("graph", "Prints projects and their dependencies as a Graphviz digraph");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    addConfigurationOption(*command, options->configuration);
    command->add_flag("--all", options->all, "Shows hidden projects too");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
