#include "build/planner.h"

#include "build/archive_step.h"
#include "build/compile_step.h"
#include "build/copy_steps.h"
#include "build/external_build_step.h"
#include "build/file_time.h"
#include "build/link_step.h"
#include "project/tree_walk.h"

#include <QFileInfo>

namespace build {

ProjectElement* Planner::Frame::takeNext() {
    if (nextExcluded < excluded.size()) return excluded[nextExcluded++];
    ProjectElement* const child = nextChild;
    if (child) nextChild = child->nextSiblingElement();
    return child;
}

bool Planner::build(ProjectElement* top) {
    if (!top) return false;
    enter(top);
    for (;;) {
        Frame& frame = frames_.back();
        if (!request_.engine.isStopped()) {
            if (ProjectElement* const child = frame.takeNext()) {
                enter(child);
                continue;
            }
        }
        const bool didWork = leave(frame);
        frames_.pop_back();
        if (frames_.empty()) return didWork;
        frames_.back().state.rebuild |= didWork;
    }
}

void Planner::enter(ProjectElement* node) {
    Frame& frame = frames_.emplace_back(Frame{{node, BuildKind::NoBuild, false, QString()}});
    if (node->isConfiguration()) return;
    request_.idler.idle();
    BuildSystem& engine = request_.engine;
    engine.loadToolDescriptions(node, request_.configuration);
    const NodeProperties properties(engine, node, request_.configuration);
    ProjectElement* const project = node->enclosingProject();
    if (project) frame.state.projectDirectory = engine.projectDirectoryOf(project);
    frame.state.rebuild =
        request_.has(BuildFlags::Rebuild) || properties.isYes(properties.general().build_always_rebuild);
    const bool isUnity =
        engine.isUnityFolder(node, request_.configuration, request_.has(BuildFlags::NoUnity));
    if (isUnity) enterUnityFolder(frame);
    frame.state.kind = engine.classifyNode(node, request_.configuration);
    if (!isUnity && frame.state.kind != BuildKind::ExternalBuild && !request_.has(BuildFlags::NoChildren))
        frame.nextChild = node->firstChildElement();
}

/// Turns the folder into the source file that includes its members.
void Planner::enterUnityFolder(Frame& frame) {
    ProjectElement* const node = frame.state.node;
    UnityFolder folder = readUnityFolder({request_.engine, node, request_.configuration});
    request_.engine.setElementAttribute(node, project::keys::fileName, folder.path);
    node->pathValid = false;
    if (request_.has(BuildFlags::Clean)) cleanUnityFolder(frame.state, folder);
    if (request_.has(BuildFlags::Clean) && request_.has(BuildFlags::NoTools)) {
        frame.isOnlyCleaned = true;
        return;
    }
    if (!request_.has(BuildFlags::NoTools)) {
        const auto time = modificationTime(folder.path);
        ProjectElement* const solution = node->enclosingSolution();
        const auto changed = solution ? modificationTime(solution->path.normalised()) : std::nullopt;
        if (!time || (changed && *time < *changed) || frame.state.rebuild)
            writeUnityFile(request_.engine, folder, request_.configuration);
    }
    frame.excluded = std::move(folder.excluded);
}

/// Deletes the source of the folder. When nothing is built, no step looks at what was made of it and of the
/// files that it leaves out, so that this goes too.
void Planner::cleanUnityFolder(const NodeState& folder, const UnityFolder& unity) {
    class Cleaning : public NodeStep {
    public:
        using NodeStep::clean;
        using NodeStep::NodeStep;
    };
    QStringList files{unity.path};
    const auto addOutputs = [&](ProjectElement* source) {
        NodeState state = folder;
        state.node = source;
        state.kind = request_.engine.classifyNode(source, request_.configuration);
        if (properties::isCompilation(state.kind)) files += CompileStep(request_, state).outputs();
    };
    if (request_.has(BuildFlags::NoTools)) {
        addOutputs(folder.node);
        for (ProjectElement* file : unity.excluded) addOutputs(file);
    }
    Cleaning(request_, folder).clean(files);
}

bool Planner::leave(const Frame& frame) {
    const NodeState& state = frame.state;
    if (state.node->isConfiguration() || request_.engine.isStopped()) return false;
    if (frame.isOnlyCleaned) return true;
    if (!request_.has(BuildFlags::AnalyzeOnly)) return buildKind(state);
    if (state.kind == BuildKind::CompileC || state.kind == BuildKind::CompileCpp) {
        request_.idler.stepDone(state.node, request_.configuration);
        if (request_.builder)
            request_.engine.analyzeFile(state.node, request_.configuration, request_.builder);
    }
    return true;
}

bool Planner::buildKind(const NodeState& state) {
    switch (state.kind) {
        case BuildKind::NoBuild:
            // So a folder hands the work of a child up to its project.
            return state.node->isFolder() && state.rebuild;
        case BuildKind::Excluded:
            return false;
        case BuildKind::CompileC:
        case BuildKind::CompileCpp:
        case BuildKind::Assemble:
            return CompileStep(request_, state).build();
        case BuildKind::ExternalBuild:
            return ExternalBuildStep(request_, state).build();
        case BuildKind::Link:
            return LinkStep(request_, state).build();
        case BuildKind::Archive:
            return ArchiveStep(request_, state).build();
        case BuildKind::Stage:
            return state.node->isProject() ? StageProjectStep(request_, state).build()
                                           : StageStep(request_, state).build();
        case BuildKind::Combine:
            return CombineStep(request_, state).build();
    }
    return true;
}

int countSteps(BuildSystem& engine, ProjectElement* top, const QString& configuration, std::uint32_t flags) {
    int count = 0;
    const auto visit = [&](ProjectElement& node) {
        if (node.isConfiguration() || (&node != top && engine.isStopped())) return false;
        engine.loadToolDescriptions(&node, configuration);
        const BuildKind kind = engine.classifyNode(&node, configuration);
        if (kind == BuildKind::Excluded || kind == BuildKind::ExternalBuild) return false;
        if (engine.isUnityFolder(&node, configuration, (flags & BuildFlags::NoUnity) != 0)) {
            count += 1 + static_cast<int>(readUnityFolder({engine, &node, configuration}).excluded.size());
            return false;
        }
        if (kind != BuildKind::NoBuild) ++count;
        return (flags & BuildFlags::NoChildren) == 0;
    };
    if (top) project::forEachElement(*top, visit);
    return count;
}

}  // namespace build
