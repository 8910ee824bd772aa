#pragma once

#include "build/builder.h"
#include "build/generated_files.h"
#include "project/standard_project_system.h"

#include <span>

namespace build {

using project::BuildFlags;

/// How a build ended.
enum class BuildResult {
    UpToDate = 0,
    Built = 1,
    Failed = 2,
    Terminated = 3,
};

/// The project engine with its builds: it decides which steps of a node are due, makes their commands, and
/// runs them side by side. Each operation's work is done by a class or a file of its own in this folder.
///
/// Everything happens on one thread; what runs side by side is child processes. Messages go to the `Builder`.
/// `buildFailed` and `buildTerminated` stop a build at its next step. A host derives from this class and says
/// where a code model starts from.
class BuildSystem : public project::StandardProjectSystem {
    Q_OBJECT

public:
    using StandardProjectSystem::StandardProjectSystem;

    // --- A node (planner.h, rebuild_decision.h, tool_commands.h) ---

    /// Decides which steps of the node and of everything below it are due, and hands them to `builder` in
    /// order. True when the node did something or, under `NoTools`, would have: its parent is then out of
    /// date. A null builder goes with `Quiet` and acts like `NoTools`.
    bool buildNode(ProjectElement* node, const QString& configuration, Builder* builder, Idler* idler,
                   std::uint32_t flags) override;
    int countBuildSteps(ProjectElement* node, const QString& configuration, std::uint32_t flags) override;
    void analyzeFile(ProjectElement* node, const QString& configuration, Builder* builder) override;
    void runTool(ProjectElement* node, const QString& configuration, project::BuildKind kind,
                 const QString& targetName, const QString& targetPath, const QStringList& inputs,
                 Builder* builder, bool generateDependencies) override;
    bool propertiesUnchangedSince(ProjectElement* node, const QString& configuration, const QDateTime& time,
                                  project::BuildKind kind, Builder* builder, bool quiet) override;
    QString dependencyFileName(ProjectElement* node, const QString& configuration, const QString& objectName,
                               bool absolute) override;
    QStringList readDependencyFile(ProjectElement* node, const QString& configuration,
                                   const QString& directory, const QString& objectName) override;
    QStringList additionalLinkerInputs(ProjectElement* node, const QString& configuration) override;
    void inputsOfNode(ProjectElement* node, const QString& configuration, bool absolute, bool noUnity,
                      bool withDependencies, QStringList& inputs) override;

    // --- A request (project_plan.h, plan_runner.h) ---

    /// Builds a solution, project, folder or file. `workers` do the commands, as many side by side as there
    /// are; `host` hears of the progress. `batch` takes each project's batch configurations in place of
    /// `configuration`.
    BuildResult build(ProjectElement* node, const QString& configuration, std::span<Builder* const> workers,
                      Idler& host, std::uint32_t flags, bool followDependencies, bool batch);
    /// The same for several nodes in one run, in which nothing is built twice.
    BuildResult build(std::span<ProjectElement* const> nodes, const QString& configuration,
                      std::span<Builder* const> workers, Idler& host, std::uint32_t flags,
                      bool followDependencies, bool batch);
    /// What is to be said of a request; null with `NoTitle`.
    QString planTitle(ProjectElement* node, const QString& configuration, std::uint32_t flags);
    /// Ends the running build at its next step.
    void terminateBuild() { buildTerminated = true; }
    bool isStopped() const { return buildFailed || buildTerminated; }
    /// Of a build that is only told of; null, or owned by the host.
    Rehearsal* rehearsal = nullptr;
};

}  // namespace build
