#include "build/project_plan.h"

#include "build/project_dependencies.h"
#include "project/tree_walk.h"

#include <QRegExp>

#include <algorithm>
#include <utility>

namespace build {

QStringList batchConfigurations(BuildSystem& engine, ProjectElement* project, const QString& configuration) {
    const NodeProperties properties(engine, project, configuration);
    const QStringList wanted =
        properties.value(properties.general().batch_build_configurations).split(u';', Qt::SkipEmptyParts);
    QStringList known = engine.configurationNames(project, project::PublicConfigurations);
    if (wanted == QStringList{project::commonConfiguration}) return known;
    QStringList chosen;
    for (const QString& name : std::as_const(known)) {
        const auto takes = [&](const QString& entry) {
            return entry.contains(u'*')
                       ? QRegExp(entry, Qt::CaseSensitive, QRegExp::Wildcard).exactMatch(name)
                       : entry.compare(name, Qt::CaseInsensitive) == 0;
        };
        if (std::any_of(wanted.begin(), wanted.end(), takes)) chosen.append(name);
    }
    return chosen;
}

void ProjectPlan::add(ProjectElement* node, const QString& configuration, bool batch) {
    if (!batch) return addInConfiguration(node, configuration);
    for (const QString& each : batchConfigurations(engine_, node, configuration))
        addInConfiguration(node, each);
}

void ProjectPlan::addInConfiguration(ProjectElement* node, const QString& configuration) {
    if (queue_.holds(node, configuration) || !enter(node, configuration, false)) return;
    while (!frames_.empty() && !engine_.buildTerminated) {
        if (frames_.back().next < frames_.back().dependencies.size()) {
            planNextDependency(configuration);
        } else {
            leave(configuration);
        }
    }
    for (; !frames_.empty(); frames_.pop_back())
        if (frames_.back().hasProblem) worker_.endStep(frames_.back().node, configuration);
    open_.clear();
}

/// False when the node is excluded from the build.
bool ProjectPlan::enter(ProjectElement* node, const QString& configuration, bool closesWithBarrier) {
    const NodeProperties properties(engine_, node, configuration);
    if (!properties.reads(properties.general().build_exclude_from_build, u"No")) return false;
    Frame frame{node, {}};
    if (options_.followDependencies) frame.dependencies = dependencyNames(properties);
    frame.closesWithBarrier = closesWithBarrier;
    frames_.push_back(std::move(frame));
    open_.insert(node);
    return true;
}

void ProjectPlan::planNextDependency(const QString& configuration) {
    host_.idle();
    if (engine_.buildTerminated) return;
    Frame& frame = frames_.back();
    const QString name = frame.dependencies[frame.next++];
    ProjectElement* const dependency = engine_.findProject(frame.node, name);
    if (!isPossible(dependency, name, configuration) || queue_.holds(dependency, configuration)) return;
    const bool isAlone = !canBuildInParallel(dependency, configuration);
    if (isAlone) queue_.appendBarrier(options_.flags);
    frame.hasPlanned = true;
    if (!enter(dependency, configuration, isAlone) && isAlone) queue_.appendBarrier(options_.flags);
}

/// Whether the dependency can be planned; the worker is told why not.
bool ProjectPlan::isPossible(ProjectElement* dependency, const QString& name, const QString& configuration) {
    if (!dependency) {
        warn(QStringLiteral("Can't find project ") + quote(name), configuration);
        return false;
    }
    const auto knowsConfiguration = [&] {
        for (ProjectElement* node = dependency; node; node = node->parentElement())
            if (node->isSolution() && node->configurations.contains(configuration)) return true;
        return false;
    };
    if (configuration != project::commonConfiguration && !knowsConfiguration()) {
        warn(QStringLiteral("Configuration ") + quote(configuration) +
                 QStringLiteral(" doesn't apply to dependent project ") + quote(name),
             configuration);
        return false;
    }
    if (!open_.contains(dependency)) return true;
    // One is enough: a wildcard can close a cycle with every project that is being planned.
    if (!std::exchange(frames_.back().hasCycle, true))
        warn(QStringLiteral("Project dependency cycle: ") + cycleText(dependency), configuration);
    return false;
}

/// Warns in the problem step of the project, which opens with the first problem.
void ProjectPlan::warn(const QString& text, const QString& configuration) {
    Frame& frame = frames_.back();
    if (!std::exchange(frame.hasProblem, true))
        worker_.beginStep(frame.node,
                          QStringLiteral("Dependency error detected in ") + quote(frame.node->elementName()),
                          configuration, 0);
    worker_.warning(text);
}

/// The names along the cycle; of a long one those at its ends.
QString ProjectPlan::cycleText(ProjectElement* dependency) const {
    constexpr std::ptrdiff_t shownAtEachEnd = 50;
    const auto first = std::find_if(frames_.begin(), frames_.end(),
                                    [&](const Frame& frame) { return frame.node == dependency; });
    QStringList names;
    for (auto frame = first; frame != frames_.end(); ++frame) {
        if (frames_.end() - first > 2 * shownAtEachEnd && frame - first == shownAtEachEnd) {
            names.append(QStringLiteral("..."));
            frame = frames_.end() - shownAtEachEnd;
        }
        names.append(frame->node->elementName());
    }
    names.append(dependency->elementName());
    return names.join(QStringLiteral(" -> "));
}

bool ProjectPlan::canBuildInParallel(ProjectElement* project, const QString& configuration) const {
    const NodeProperties properties(engine_, project, configuration);
    const QString word = properties.value(properties.general().project_can_build_in_parallel);
    if (word == u"Yes" || word == u"No") return word == u"Yes";
    const QString type = properties.value(properties.general().project_type);
    return type != u"Staging" && type != u"Combining";
}

void ProjectPlan::leave(const QString& configuration) {
    const Frame frame = std::move(frames_.back());
    frames_.pop_back();
    open_.remove(frame.node);
    if (frame.hasProblem) worker_.endStep(frame.node, configuration);
    if (frame.hasPlanned) queue_.appendBarrier(options_.flags);
    appendItems(frame.node, configuration);
    if (frame.closesWithBarrier) queue_.appendBarrier(options_.flags);
}

void ProjectPlan::appendItems(ProjectElement* node, const QString& configuration) {
    const std::uint32_t flags = options_.flags & 0xFFFF;
    const int steps = engine_.countBuildSteps(node, configuration, flags);
    queue_.appendProject({node, configuration, PlanItem::wordOf(flags | BuildFlags::ProjectBegin, steps),
                          engine_.planTitle(node, configuration, flags)});
    if (options_.wholeProject) {
        queue_.append({node, configuration, flags | BuildFlags::ProjectEnd});
        return;
    }
    appendFiles(node, configuration);
    queue_.appendBarrier(options_.flags);
    queue_.append({node, configuration, flags | BuildFlags::ProjectEnd | BuildFlags::NoChildren});
}

void ProjectPlan::appendFiles(ProjectElement* project, const QString& configuration) {
    const std::uint32_t flags = options_.flags & 0xFFFF;
    const bool noUnity = (flags & BuildFlags::NoUnity) != 0;
    project::forEachElement(*project, [&](ProjectElement& node) {
        if (&node == project) return true;
        const bool isUnity = engine_.isUnityFolder(&node, configuration, noUnity);
        if (node.isFile() || isUnity) queue_.append({&node, configuration, flags});
        return node.isFolder() && !isUnity;
    });
}

}  // namespace build
