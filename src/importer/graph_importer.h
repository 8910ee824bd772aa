#pragma once

#include "importer/command_line.h"
#include "importer/compile_translation.h"
#include "manifest/state.h"
#include "project/standard_project_system.h"

#include <QString>
#include <QStringList>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace importer {

/// Turns the build graph of a manifest that CMake wrote into a project tree. What an edge stands for follows
/// from words in its rule's name: each link, library and custom command and each phony target becomes a
/// project, each compile step a file in a folder of the project that it is made for. The graph's edges become
/// dependencies between projects. Each node is handled once, and the walk does not recurse.
class GraphImporter {
public:
    using Node = manifest::Node;
    using Edge = manifest::Edge;
    using ProjectElement = project::ProjectElement;

    /// All three outlive the importer; nodes that it is given stay at their places.
    GraphImporter(project::StandardProjectSystem& engine, const Targets& targets, ProjectElement* solution);

    /// Makes room for a graph of so many edges.
    void reserve(std::size_t edgeCount) { nodeProjects_.reserve(edgeCount); }

    /// Imports a root with all that it is made from; answers the project that stands for it, or null.
    ProjectElement* importNode(const Node* root);

private:
    /// A node whose inputs are being walked.
    struct Frame {
        const Edge* edge;
        ProjectElement* item;    ///< the project that stands for the node, or null
        ProjectElement* owner;   ///< the project that the inputs belong to, or null
        std::size_t ownerFrame;  ///< the frame that gathers the owner's dependencies, or none
        std::size_t nextInput = 0;
        QStringList dependencies;  ///< of `item`, stored when its inputs are done
    };
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// Answers the node's project at once, or null having pushed a frame when there are inputs to walk.
    ProjectElement* enter(ProjectElement* parent, const Node* node);
    void addDependency(const Frame& frame, ProjectElement* project);

    void importCompileStep(Frame& frame, const Node* node, ProjectElement* parent);
    void importExecutable(Frame& frame, const Node* node);
    void importLibrary(Frame& frame, const Node* node);
    void importCustomCommand(Frame& frame, const Node* node);
    void importPhony(Frame& frame, const Node* node);

    /// A hidden project for a further way to a product that has one; false when it has none.
    bool importSecondWay(Frame& frame, const Node* node, std::string_view target);
    ProjectElement* newProject(const Node* node, const QString& type);
    /// The folder of a project that holds the compile steps of one rule.
    ProjectElement* folderOf(ProjectElement* project, std::string_view ruleName);
    void hide(ProjectElement* project);
    void set(ProjectElement* element, const project::PropertyClass* property, const QString& value);
    void setPostBuildCommand(ProjectElement* project, const Edge& edge, const project::PropertyClass* command,
                             const project::PropertyClass* workingDirectory);

    project::StandardProjectSystem& engine_;
    const properties::GeneralProperties& general_;
    const properties::ToolProperties& tools_;
    const Targets& targets_;
    ProjectElement* const solution_;
    CompileTranslator translator_;
    std::map<std::pair<ProjectElement*, std::string_view>, ProjectElement*>
        folders_;  ///< by project and rule name
    std::vector<Frame> open_;
    std::unordered_map<const Node*, ProjectElement*> nodeProjects_;         ///< what each node yielded
    std::unordered_map<std::string_view, ProjectElement*> targetProjects_;  ///< by the product's path
};

}  // namespace importer
