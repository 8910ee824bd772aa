#include "cli/session.h"

#include "cli/console_progress.h"
#include "cli/output.h"
#include "project/tree_walk.h"

#include <CLI/CLI.hpp>

namespace cli {

namespace {

using project::ProjectElement;

/// The first node of the kind below the project that stores the file name, else the first of that name.
ProjectElement* findBelow(ProjectElement& project, ProjectElement::Kind kind, const std::string& text) {
    const QString name = QString::fromStdString(text);
    ProjectElement* byFileName = nullptr;
    ProjectElement* byName = nullptr;
    forEachElement(project, [&](ProjectElement& node) {
        if (node.kind != kind || byFileName) return !byFileName;
        if (node.attributes.value(project::keys::fileName) == name) byFileName = &node;
        if (!byName && node.elementName() == name) byName = &node;
        return true;
    });
    return byFileName ? byFileName : byName;
}

ProjectElement* missing(const char* kind, const std::string& name) {
    reportError(std::string("no ") + kind + " \"" + name + '"');
    return nullptr;
}

}  // namespace

void reportLoadError(const project::SolutionLoadError& error) {
    std::string text = error.fileName().toStdString();
    if (error.hasPosition()) text += ':' + std::to_string(error.line() + 1);
    reportError(text + ": " + error.message().toStdString());
}

void addNodeOptions(CLI::App& command, NodeOptions& options) {
    CLI::Option* project =
        command.add_option("-p", options.project, "A project, by its qualified name")->type_name("PROJECT");
    command.add_option("-F", options.folder, "A folder of the project")->type_name("FOLDER")->needs(project);
    command.add_option("-f", options.file, "A file of the project")->type_name("FILE")->needs(project);
    addConfigurationOption(command, options.configuration);
}

CLI::Validator isName() {
    return {[](const std::string& text) { return text.empty() ? "a name is needed" : std::string(); }, ""};
}

void addConfigurationOption(CLI::App& command, std::string& configuration) {
    command.add_option("-c", configuration, "The configuration")
        ->type_name("CONFIGURATION")
        ->capture_default_str();
}

Session::Session(const GlobalOptions& options) {
    const QString userDir = QString::fromStdString(options.userDir);
    macros_.systemMacros.insert(QStringLiteral("AtelisDir"), QString::fromStdString(options.atelisDir));
    macros_.systemMacros.insert(QStringLiteral("AtelisUserDir"), userDir);
    macros_.systemMacros.insert(QStringLiteral("PackagesDir"), userDir + QStringLiteral("/packages"));
    macros_.addClockNames();
    for (const MacroDefinition& macro : options.macros)
        macros_.globalMacros.insert(QString::fromStdString(macro.name), QString::fromStdString(macro.value));
    project::macroEngine = &macros_;
    project::projectSystem = &engine_;
}

Session::~Session() {
    engine_.closeSolution();
    project::projectSystem = nullptr;
    project::macroEngine = nullptr;
}

bool Session::open(const std::string& solutionFile) {
    try {
        ConsoleProgress progress;
        engine_.loadSolution(QString::fromStdString(solutionFile), nullptr, nullptr, &progress, true);
        return true;
    } catch (const project::SolutionLoadError& error) {
        reportLoadError(error);
        return false;
    }
}

ProjectElement* Session::find(const NodeOptions& options) {
    if (!options.project) return engine_.solution();
    ProjectElement* const project =
        engine_.findProject(engine_.solution(), QString::fromStdString(*options.project));
    if (!project) return missing("project", *options.project);
    ProjectElement* node = project;
    if (options.folder) node = findBelow(*project, ProjectElement::Kind::Folder, *options.folder);
    if (!node) return missing("folder", *options.folder);
    if (options.file) node = findBelow(*project, ProjectElement::Kind::File, *options.file);
    if (!node) return missing("file", *options.file);
    return node;
}

bool Session::chooseConfiguration(const std::string& name, QString& configuration) {
    using namespace project;
    ProjectElement* const solution = engine_.solution();
    configuration = name.empty() ? engine_.configurationNames(solution, PublicConfigurations).constFirst()
                                 : QString::fromStdString(name);
    constexpr unsigned all = WithCommon | PrivateConfigurations | PublicConfigurations;
    if (engine_.configurationNames(solution, all).contains(configuration)) return true;
    reportError("no configuration \"" + name + '"');
    return false;
}

const project::PropertyClass* Session::findClass(const std::string& key, const NodeOptions& options,
                                                 ProjectElement& node) {
    const project::PropertyClass* const found =
        engine_.propertyClassAt(&node, options.configurationName(), QString::fromStdString(key));
    if (!found) reportError("no property \"" + key + '"');
    return found;
}

bool Session::canModify(ProjectElement& node) {
    ProjectElement* each = &node;
    while (each->canModify && !each->isSolution()) each = each->parentElement();
    if (each->canModify) return true;
    const std::string name = '"' + each->elementName().toStdString() + '"';
    reportError(each->isSolution() ? "solution " + name + " cannot be modified"
                                   : name + " is found on the disk and not stored");
    return false;
}

bool Session::save(ProjectElement& node) {
    if (engine_.saveSolution(node.enclosingSolution(), false)) return true;
    reportError(engine_.saveErrorText().toStdString());
    return false;
}

bool Session::saveAll() {
    try {
        engine_.saveAllSolutions(nullptr);
        return true;
    } catch (const project::SolutionSaveError&) {
        reportError(engine_.saveErrorText().toStdString());
        return false;
    }
}

}  // namespace cli
