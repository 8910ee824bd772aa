#pragma once

#include "build/build_system.h"
#include "build/plan_item.h"

#include <deque>

namespace build {

/// A recording of the steps of one plan item, and a cursor into it. The planner makes its calls on the
/// recording, which a worker then replays: at each command the replay pauses until the command has ended. The
/// recordings of several items, polled in turn, are what runs side by side in a build.
class BuildThread : public Builder, public Idler {
public:
    /// Everything outlives the thread.
    BuildThread(BuildSystem& engine, const PlanItem& item, Builder& worker, Idler& host);

    /// Plans the item if that is still to be done, and replays as far as it goes. True when the thread has
    /// ended.
    bool pump();
    /// Records the pre-build command of a project if one is to run; the replay then begins with it.
    bool recordPreBuild();

    bool didWork() const { return didWork_; }
    /// Whether an error was replayed.
    bool hasFailed() const { return failed_; }
    Builder& worker() const { return worker_; }

    void beginStep(ProjectElement* node, const QString& title, const QString& configuration,
                   int count) override;
    void endStep(ProjectElement* node, const QString& configuration) override;
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void error(const QString& text) override;
    void warning(const QString& text) override;
    void note(const QString& text) override;
    void upToDate(const QString& text) override;
    void reason(const QString& text) override;
    QObject* sharedContext() override { return sharedContext_; }
    /// The planner is told yes; the worker is asked when the link is done.
    bool acceptOutput(const QString& path) override;
    void beginProject(ProjectElement* node, const QString& title, const QString& configuration,
                      int stepCount) override;
    void stepDone(ProjectElement* node, const QString& configuration) override;
    void endProject(ProjectElement* node, const QString& configuration) override;

private:
    enum class Type {
        BeginStep,
        EndStep,
        Start,
        Wait,
        BeginProject,
        StepDone,
        EndProject,
        AcceptOutput,
        Error,
        Warning,
        Note,
        UpToDate,
        Reason,
    };
    /// What replaying a record makes of the replay.
    enum class Next { GoOn, PauseBehind, PauseBefore, End };

    struct Record {
        Type type;
        ProjectElement* node = nullptr;
        QString configuration = {};
        QString text = {};  ///< title, message or working directory
        int count = 0;
        QStringList arguments = {};
        QString file = {};
    };

    void plan();
    void recordPostBuild();
    void recordUserCommand(const QString& verb, const QString& command,
                           const project::PropertyClass* workingDirectory);
    void recordText(Type type, const QString& text) { records_.push_back({.type = type, .text = text}); }
    Next replay(const Record& record);
    void checkOutput(const QString& path);

    BuildSystem& engine_;
    const PlanItem& item_;
    Builder& worker_;
    Idler& host_;
    QObject* const sharedContext_;
    std::deque<Record> records_;  // those still to be replayed
    bool didWork_ = false;
    bool planned_ = false;
    bool failed_ = false;
};

}  // namespace build
