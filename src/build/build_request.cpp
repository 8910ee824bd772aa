// A request, from what a user asks for to its result.
#include "build/build_system.h"
#include "build/plan_runner.h"
#include "build/project_plan.h"
#include "project/tree_walk.h"

namespace build {

namespace {

const char* verbOf(std::uint32_t flags) {
    const auto has = [flags](BuildFlags flag) { return (flags & flag) != 0; };
    if (has(BuildFlags::NoTools) && has(BuildFlags::Quiet) && !has(BuildFlags::Clean)) return "Checking ";
    if (has(BuildFlags::Clean)) return "Cleaning ";
    if (has(BuildFlags::Rebuild)) return "Rebuilding ";
    return has(BuildFlags::AnalyzeOnly) ? "Analyzing " : "Building ";
}

/// Whether one item has to do all of the node.
bool needsOneItem(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                  std::uint32_t flags) {
    if (flags & (BuildFlags::NoChildren | BuildFlags::WholeProjects)) return true;
    if (engine.isUnityFolder(node, configuration, (flags & BuildFlags::NoUnity) != 0)) return true;
    // The post-stage command needs to know whether a file was copied.
    const NodeProperties properties(engine, node, configuration);
    return node->isProject() && properties.reads(properties.general().project_type, u"Staging") &&
           !properties.expanded(properties.general().stage_post_build_command).isEmpty();
}

}  // namespace

BuildResult BuildSystem::build(ProjectElement* node, const QString& configuration,
                               std::span<Builder* const> workers, Idler& host, std::uint32_t flags,
                               bool followDependencies, bool batch) {
    return build({&node, 1}, configuration, workers, host, flags, followDependencies, batch);
}

BuildResult BuildSystem::build(std::span<ProjectElement* const> nodes, const QString& configuration,
                               std::span<Builder* const> workers, Idler& host, std::uint32_t flags,
                               bool followDependencies, bool batch) {
    buildFailed = buildTerminated = false;
    const bool isOneWorker = workers.size() == 1;
    PlanQueue queue;
    for (ProjectElement* node : nodes) {
        if (!node) continue;
        if (!queue.isEmpty()) queue.appendBarrier(flags);
        if (node->isSolution()) {
            const bool wholeProject = isOneWorker || (flags & BuildFlags::WholeProjects);
            ProjectPlan plan(*this, {flags, wholeProject, true}, *workers[0], host, queue);
            project::forEachElement(*node, [&](ProjectElement& each) {
                if (each.isProject()) plan.add(&each, configuration, batch);
                return each.isSolution() || each.isFolder();
            });
        } else if (node->isProject() || node->isFolder()) {
            const bool wholeProject = isOneWorker || needsOneItem(*this, node, configuration, flags);
            ProjectPlan(*this, {flags, wholeProject, followDependencies}, *workers[0], host, queue)
                .add(node, configuration, batch);
        } else {
            const int steps = countBuildSteps(node, configuration, flags);
            queue.append({node, configuration, PlanItem::wordOf(flags | BuildFlags::ProjectBegin, steps),
                          planTitle(node, configuration, flags)});
            queue.append({node, configuration, PlanItem::wordOf(flags | BuildFlags::ProjectEnd, 0)});
            if (nodes.size() == 1) workers = workers.first(1);
        }
    }
    const bool didWork = PlanRunner(*this, workers, host).run(queue);
    if (buildTerminated) return BuildResult::Terminated;
    if (buildFailed) return BuildResult::Failed;
    return didWork ? BuildResult::Built : BuildResult::UpToDate;
}

QString BuildSystem::planTitle(ProjectElement* node, const QString& configuration, std::uint32_t flags) {
    if (!node || (flags & BuildFlags::NoTitle)) return {};
    const auto nameOf = [](ProjectElement* element) {
        return quote(element ? element->elementName() : QString());
    };
    QString title = QString::fromLatin1(verbOf(flags));
    if (node->isFile() || node->isFolder()) title += nameOf(node) + QStringLiteral(" from project ");
    title += nameOf(node->enclosingProject()) + QStringLiteral(" from solution ");
    title += nameOf(node->enclosingSolution()) + QStringLiteral(" in configuration ") + quote(configuration);
    return title;
}

}  // namespace build
