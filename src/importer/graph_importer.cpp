#include "importer/graph_importer.h"

#include "importer/command_text.h"

#include <algorithm>

namespace importer {

namespace {

using project::commonConfiguration;
using project::ProjectElement;

const QString yes = QStringLiteral("Yes");
const QString no = QStringLiteral("No");
const QString objectFileType = QStringLiteral("Externally Built Object file");
const QString executableType = QStringLiteral("Externally Built Executable");
const QString libraryType = QStringLiteral("Externally Built Library");
const QString combiningType = QStringLiteral("Combining");

enum class EdgeClass { Compile, Executable, Library, Custom, Phony, PassedThrough };

struct EdgeClassRow {
    std::string_view word;
    EdgeClass edgeClass;
};

/// The words in the names of CMake's rules, in the order in which they are looked for.
constexpr EdgeClassRow edgeClassRows[] = {
    {"CXX_COMPILER", EdgeClass::Compile},          {"C_COMPILER", EdgeClass::Compile},
    {"ASM_COMPILER", EdgeClass::Compile},          {"EXECUTABLE_LINKER", EdgeClass::Executable},
    {"STATIC_LIBRARY_LINKER", EdgeClass::Library}, {"CUSTOM_COMMAND", EdgeClass::Custom},
};

bool contains(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

EdgeClass classOf(std::string_view ruleName) {
    for (const auto& [word, edgeClass] : edgeClassRows)
        if (contains(ruleName, word)) return edgeClass;
    return ruleName == "phony" ? EdgeClass::Phony : EdgeClass::PassedThrough;
}

QString text(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string_view variable(const manifest::Edge& edge, std::string_view name) {
    return edge.scope()->lookupVariable(name);
}

/// The path of what the edge makes, which its TARGET_FILE names better than its first output does.
std::string_view linkedTarget(const manifest::Edge& edge) {
    const std::string_view file = variable(edge, "TARGET_FILE");
    return file.empty() ? edge.outputs().front()->path() : file;
}

}  // namespace

GraphImporter::GraphImporter(project::StandardProjectSystem& engine, const Targets& targets,
                             ProjectElement* solution)
    : engine_(engine),
      general_(engine.schema().general),
      tools_(engine.schema().tools),
      targets_(targets),
      solution_(solution) {}

ProjectElement* GraphImporter::importNode(const Node* root) {
    ProjectElement* result = enter(nullptr, root);
    while (!open_.empty()) {
        Frame& frame = open_.back();
        if (frame.nextInput < frame.edge->inputs().size()) {
            const Node* const input = frame.edge->inputs()[frame.nextInput++];
            const std::size_t depth = open_.size();
            ProjectElement* const project = enter(frame.owner, input);
            if (open_.size() == depth) addDependency(open_.back(), project);
            continue;
        }
        result = frame.item;
        if (!frame.dependencies.isEmpty())
            engine_.addProjectDependencies(frame.item, commonConfiguration, frame.dependencies);
        open_.pop_back();
        if (!open_.empty()) addDependency(open_.back(), result);
    }
    return result;
}

ProjectElement* GraphImporter::enter(ProjectElement* parent, const Node* node) {
    const Edge* const edge = node->producingEdge();
    if (!edge) return nullptr;
    const auto [memo, isNew] = nodeProjects_.try_emplace(node, nullptr);
    if (!isNew) return memo->second;

    Frame frame{edge, nullptr, parent, open_.empty() ? none : open_.back().ownerFrame, 0, {}};
    switch (classOf(edge->rule()->name())) {
        case EdgeClass::Compile:
            importCompileStep(frame, node, parent);
            break;
        case EdgeClass::Executable:
            importExecutable(frame, node);
            break;
        case EdgeClass::Library:
            importLibrary(frame, node);
            break;
        case EdgeClass::Custom:
            importCustomCommand(frame, node);
            break;
        case EdgeClass::Phony:
            importPhony(frame, node);
            break;
        case EdgeClass::PassedThrough:
            break;
    }
    if (frame.item) {
        frame.owner = frame.item;
        frame.ownerFrame = open_.size();
        memo->second = frame.item;
    }
    open_.push_back(std::move(frame));
    return nullptr;
}

void GraphImporter::addDependency(const Frame& frame, ProjectElement* project) {
    if (project && frame.ownerFrame != none)
        open_[frame.ownerFrame].dependencies.append(project->elementName());
}

void GraphImporter::importCompileStep(Frame& frame, const Node* node, ProjectElement* parent) {
    const Edge& edge = *frame.edge;
    const std::string_view ruleName = edge.rule()->name();
    if (!parent ||
        engine_.propertyValue(parent, general_.project_type, commonConfiguration) == combiningType) {
        parent = frame.item = newProject(node, objectFileType);
    }
    ProjectElement* const folder = folderOf(parent, ruleName);
    if (edge.inputs().empty()) return;
    ProjectElement* const file = engine_.addFile(folder, text(edge.inputs().front()->path()));
    set(file, general_.build_object_file_name, text(edge.outputs().front()->path()));

    const CompileArguments& arguments =
        translator_.translate(variable(edge, "DEFINES"), variable(edge, "INCLUDES"), variable(edge, "FLAGS"));
    set(file,
        contains(ruleName, "CXX_COMPILER") ? tools_.cpp_only_additional_options
        : contains(ruleName, "C_COMPILER") ? tools_.c_only_additional_options
                                           : tools_.asm_additional_options,
        arguments.all);
    set(file, tools_.c_preprocessor_definitions, arguments.definitions);
    set(file, tools_.build_dependency_file_name,
        text(std::string("$(ProjectDir)/").append(variable(edge, "DEP_FILE"))));
    set(file, tools_.c_user_include_directories, arguments.userIncludeDirectories);
    set(file, tools_.c_system_include_directories, arguments.systemIncludeDirectories);
    set(file, general_.code_completion_options, arguments.macroFiles);
}

void GraphImporter::importExecutable(Frame& frame, const Node* node) {
    const Edge& edge = *frame.edge;
    const std::string_view target = linkedTarget(edge);
    if (importSecondWay(frame, node, target)) return;
    frame.item = newProject(node, executableType);
    if (targets_.hide.contains(node->path())) hide(frame.item);
    set(frame.item, general_.build_output_file_name, text(target));

    QStringList options;
    splitArguments(variable(edge, "LINK_PATH"), options);
    splitArguments(variable(edge, "LINK_LIBRARIES"), options);
    set(frame.item, tools_.linker_additional_options, options.join(u';'));
    set(frame.item, tools_.link_dependent_projects, no);
    set(frame.item, tools_.linker_map_file, no);
    setPostBuildCommand(frame.item, edge, tools_.linker_post_build_command,
                        tools_.linker_post_build_command_wd);
    targetProjects_[target] = frame.item;
}

void GraphImporter::importLibrary(Frame& frame, const Node* node) {
    const Edge& edge = *frame.edge;
    frame.item = newProject(node, libraryType);
    if (targets_.hide.contains(node->path())) hide(frame.item);
    set(frame.item, general_.library_output_file_name, text(linkedTarget(edge)));
    setPostBuildCommand(frame.item, edge, tools_.archive_post_build_command,
                        tools_.archive_post_build_command_wd);
}

void GraphImporter::importCustomCommand(Frame& frame, const Node* node) {
    const Edge& edge = *frame.edge;
    const std::string_view target = edge.outputs().front()->path();
    if (importSecondWay(frame, node, target)) return;
    std::string command(variable(edge, "COMMAND"));
    std::string workingDirectory;
    splitCommand(workingDirectory, command);
    frame.item = newProject(node, combiningType);
    if (!targets_.show.contains(node->path())) hide(frame.item);
    set(frame.item, general_.combine_command, text(command));
    set(frame.item, general_.combine_output_filepath, text(target));
    set(frame.item, general_.combine_set_readonly, QStringLiteral("Don't"));
    set(frame.item, general_.combine_command_wd, text(workingDirectory));
    set(frame.item, general_.project_inhibit_indexing, yes);
    for (const Node* input : edge.inputs())
        if (contains(input->path(), ".") && !contains(input->path(), ".trigger"))
            engine_.addFile(frame.item, text(input->path()));
    const std::string_view dependencyFile = variable(edge, "depfile");
    if (!dependencyFile.empty()) set(frame.item, tools_.build_dependency_file_name, text(dependencyFile));
    targetProjects_[target] = frame.item;
}

void GraphImporter::importPhony(Frame& frame, const Node* node) {
    frame.item = newProject(node, QString());
    if (!targets_.show.contains(node->path())) hide(frame.item);
}

bool GraphImporter::importSecondWay(Frame& frame, const Node* node, std::string_view target) {
    const auto found = targetProjects_.find(target);
    if (found == targetProjects_.end()) return false;
    frame.item = newProject(node, QString());
    hide(frame.item);
    frame.dependencies.append(found->second->elementName());
    return true;
}

ProjectElement* GraphImporter::newProject(const Node* node, const QString& type) {
    return engine_.newProject(solution_, text(node->path()), QString(), type);
}

ProjectElement* GraphImporter::folderOf(ProjectElement* project, std::string_view ruleName) {
    ProjectElement*& folder = folders_[{project, ruleName}];
    // The project has no folders but those of this map, and may have tens of thousands.
    if (!folder) folder = engine_.addFolder(project, text(ruleName), QString());
    return folder;
}

void GraphImporter::hide(ProjectElement* project) {
    engine_.setElementAttribute(project, project::keys::hidden, yes);
}

void GraphImporter::set(ProjectElement* element, const project::PropertyClass* property,
                        const QString& value) {
    engine_.setPropertyValue(element, property, commonConfiguration, value);
}

void GraphImporter::setPostBuildCommand(ProjectElement* project, const Edge& edge,
                                        const project::PropertyClass* command,
                                        const project::PropertyClass* workingDirectory) {
    std::string commandText(variable(edge, "POST_BUILD"));
    std::string directory;
    splitCommand(directory, commandText);
    if (commandText.empty() || commandText == "cd ." || commandText == ":") return;
    set(project, command, text(commandText));
    set(project, workingDirectory, text(directory));
}

}  // namespace importer
