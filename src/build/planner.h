#pragma once

#include "build/node_step.h"
#include "build/unity_folder.h"

#include <vector>

namespace build {

/// Walks a node and everything below it, decides which steps are due and hands them to the builder. What is
/// below a node is built first; if any of that did work, the node is out of date whatever the file times say.
///
/// The walk keeps its own stack, so that a tree of any depth is safe. The planner waits for no tool.
class Planner {
public:
    explicit Planner(const BuildRequest& request) : request_(request) {}
    /// True when the node did something or, under `NoTools`, would have.
    bool build(ProjectElement* top);

private:
    /// A node whose children are on their way.
    struct Frame {
        NodeState state;
        ProjectElement* nextChild = nullptr;   // of the children in the tree,
        QList<ProjectElement*> excluded = {};  // or of those that a unity folder leaves out
        qsizetype nextExcluded = 0;
        bool isOnlyCleaned = false;  // a unity folder whose source is deleted and not made again

        ProjectElement* takeNext();
    };

    void enter(ProjectElement* node);
    void enterUnityFolder(Frame& frame);
    void cleanUnityFolder(const NodeState& folder, const UnityFolder& unity);
    bool leave(const Frame& frame);
    bool buildKind(const NodeState& state);

    const BuildRequest& request_;
    std::vector<Frame> frames_;
};

/// How many progress steps a build of the node reports.
int countSteps(BuildSystem& engine, ProjectElement* node, const QString& configuration, std::uint32_t flags);

}  // namespace build
