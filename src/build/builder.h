#pragma once

#include "project/project_element.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <span>

/// The two sides to which the planner and the run of a build talk.
namespace build {

using project::ProjectElement;

/// Receives the steps of a build, their commands and their messages. A planner makes calls on one and never
/// waits; whether a command runs, is recorded or is written down is the builder's affair. Nodes belong to the
/// tree and may be null where a step belongs to none. A failed command or an `error` fails the step.
class Builder {
public:
    Builder() = default;
    Builder(const Builder&) = delete;
    Builder& operator=(const Builder&) = delete;
    virtual ~Builder() = default;

    /// Prepares for a new build.
    virtual void reset() {}
    /// Opens a step of the log under `title`; `count` is free for hosts.
    virtual void beginStep(ProjectElement* node, const QString& title, const QString& configuration,
                           int count) = 0;
    virtual void endStep(ProjectElement* node, const QString& configuration) = 0;
    /// Runs a command, the program first, to its end. `outputFile` names the file that it produces, or is
    /// empty.
    virtual void run(const QString& workingDirectory, const QStringList& arguments,
                     const QString& outputFile) = 0;
    /// Begins a command without waiting for it.
    virtual void start(const QString& /*workingDirectory*/, const QStringList& /*arguments*/,
                       const QString& /*outputFile*/) {}
    /// Whether the command that `start` began has ended.
    virtual bool finished(ProjectElement* /*node*/, const QString& /*configuration*/) { return true; }
    virtual void error(const QString& text) = 0;
    virtual void warning(const QString& /*text*/) {}
    /// A plain remark.
    virtual void note(const QString& /*text*/) {}
    /// A step had nothing to do.
    virtual void upToDate(const QString& /*text*/) {}
    /// Why a target is rebuilt.
    virtual void reason(const QString& /*text*/) {}
    /// Abandons a running command.
    virtual void stop() {}
    /// An object that a worker shares with the recordings made for it; stays with its owner.
    virtual QObject* sharedContext() { return nullptr; }
    /// Whether the file that a link just made may stand.
    virtual bool acceptOutput(const QString& /*path*/) { return true; }
};

/// The host of a build: it gets time while the build waits, and hears of projects and of progress.
class Idler {
public:
    Idler() = default;
    Idler(const Idler&) = delete;
    Idler& operator=(const Idler&) = delete;
    virtual ~Idler() = default;

    /// A chance to process events; called often.
    virtual void idle() {}
    virtual void beginProject(ProjectElement* /*node*/, const QString& /*title*/,
                              const QString& /*configuration*/, int /*stepCount*/) {}
    /// One unit of progress.
    virtual void stepDone(ProjectElement* /*node*/, const QString& /*configuration*/) {}
    virtual void endProject(ProjectElement* /*node*/, const QString& /*configuration*/) {}
    virtual void buildDone() {}
    /// The run goes round with these workers busy. A host may sleep here until one of them has something to
    /// tell.
    virtual void waitForWorkers(std::span<Builder* const> /*workers*/) { idle(); }
};

/// Does nothing; with `NoTools` it serves to ask whether anything would be built.
class NullBuilder : public Builder {
public:
    void beginStep(ProjectElement*, const QString&, const QString&, int) override {}
    void endStep(ProjectElement*, const QString&) override {}
    void run(const QString&, const QStringList&, const QString&) override {}
    void error(const QString&) override {}
};

}  // namespace build
