#pragma once

#include "build/build_system.h"
#include "build/plan_item.h"

#include <QSet>
#include <QStringList>

#include <vector>

namespace build {

/// Expands projects into plan items, each behind what it depends on. Problems with dependencies are warnings
/// in a step of their own; the project is planned without that dependency. The walk keeps its own stack and
/// costs the same for each project and dependency.
class ProjectPlan {
public:
    struct Options {
        std::uint32_t flags;
        bool wholeProject;  ///< one item does all of a project, rather than one for each file
        bool followDependencies;
    };

    /// `worker` gets the warnings. Everything outlives the object.
    ProjectPlan(BuildSystem& engine, const Options& options, Builder& worker, Idler& host, PlanQueue& queue)
        : engine_(engine), options_(options), worker_(worker), host_(host), queue_(queue) {}

    /// Plans a project, or a folder, in a configuration or with `batch` in its batch configurations.
    void add(ProjectElement* node, const QString& configuration, bool batch);

private:
    /// A project whose dependencies are being planned.
    struct Frame {
        ProjectElement* node;
        QStringList dependencies;
        qsizetype next = 0;
        bool hasProblem = false;
        bool hasCycle = false;
        bool hasPlanned = false;
        bool closesWithBarrier = false;  // it can't build beside others
    };

    void addInConfiguration(ProjectElement* node, const QString& configuration);
    bool enter(ProjectElement* node, const QString& configuration, bool closesWithBarrier);
    void planNextDependency(const QString& configuration);
    void leave(const QString& configuration);
    void appendItems(ProjectElement* node, const QString& configuration);
    void appendFiles(ProjectElement* node, const QString& configuration);

    bool isPossible(ProjectElement* dependency, const QString& name, const QString& configuration);
    void warn(const QString& text, const QString& configuration);
    QString cycleText(ProjectElement* dependency) const;
    bool canBuildInParallel(ProjectElement* project, const QString& configuration) const;

    BuildSystem& engine_;
    const Options options_;
    Builder& worker_;
    Idler& host_;
    PlanQueue& queue_;
    std::vector<Frame> frames_;
    QSet<ProjectElement*> open_;  // the nodes of the frames
};

/// The configurations in which a batch build builds the project.
QStringList batchConfigurations(BuildSystem& engine, ProjectElement* project, const QString& configuration);

}  // namespace build
