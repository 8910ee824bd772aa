#pragma once

#include "build/build_system.h"
#include "build/node_properties.h"
#include "build/rebuild_decision.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace build {

/// A request, as it applies to every node. Everything outlives the steps; `builder` may be null.
struct BuildRequest {
    BuildSystem& engine;
    const QString& configuration;
    Builder* builder;
    Idler& idler;
    std::uint32_t flags;

    bool has(BuildFlags flag) const { return (flags & flag) != 0; }
    bool isQuiet() const { return has(BuildFlags::Quiet); }
};

/// A node that is being built.
struct NodeState {
    ProjectElement* node;
    BuildKind kind;
    bool rebuild;              ///< out of date whatever the file times say
    QString projectDirectory;  ///< null when no project encloses the node
};

/// What the steps of all kinds share: the frame of a step in the log, checking, cleaning, and commands.
///
/// The step of a kind derives from this. Its `build` answers true when it did something or, under `NoTools`,
/// would have, false when the node is up to date, has nothing to do, or failed.
class NodeStep {
public:
    NodeStep(const BuildRequest& request, const NodeState& state);
    NodeStep(const NodeStep&) = delete;
    NodeStep& operator=(const NodeStep&) = delete;

protected:
    ~NodeStep() = default;

    ProjectElement* node() const { return state_.node; }
    BuildSystem& engine() const { return request_.engine; }
    Builder& builder() const { return *request_.builder; }
    const NodeProperties& properties() const { return properties_; }
    const QString& projectDirectory() const { return state_.projectDirectory; }
    const NodeState& state() const { return state_; }
    const BuildRequest& request() const { return request_; }
    DecisionLog log() const { return {request_.builder, request_.isQuiet()}; }
    QString quotedName() const { return quote(node()->elementName()); }
    bool isStopped() const { return request_.engine.isStopped(); }
    /// Whether only the decision was asked for.
    bool endsAtDecision() const { return request_.has(BuildFlags::NoTools) || !request_.builder; }

    Target target(const QString& name) const;
    bool exists(Target& target) const { return target.exists(log()); }
    /// Whether the file is there, or would be by now.
    bool fileExists(const QString& path) const;
    bool inputsOlderThan(const Target& target, const QStringList& inputs) const;
    bool propertiesUnchangedSince(const Target& target) const;
    QString relativeToProject(const QString& file) const;

    void beginStep(const QString& title) const;
    void endStep() const;
    // A check is silent when the request is quiet.
    void beginCheck() const;
    void endCheck() const;
    /// Ends a check that found nothing to do.
    void endUpToDate(const QString& text) const;

    /// Deletes those files that exist, in a step of its own.
    void clean(const QStringList& files) const;
    void removeFile(const QString& file) const;
    /// A step of one command; no step without arguments.
    void runStep(const QString& title, const QString& workingDirectory, const QStringList& arguments,
                 const QString& outputFile) const;
    /// Runs the commands in order. False as soon as the build is stopped.
    bool runAll(const QList<QStringList>& commands, const QString& workingDirectory,
                const QString& outputFile) const;
    /// The macros of a target: TargetPath and RelTargetPath.
    static MacroTable targetMacros(const Target& target);
    /// Adds what external commands call the inputs, and writes the file of them when one is asked for. False,
    /// after an error, when it can't be written.
    bool addObjectMacros(const QStringList& objects, MacroTable& macros) const;
    void addToolOptions(QStringList& arguments, std::initializer_list<properties::Tool> tools) const;

private:
    const BuildRequest& request_;
    const NodeState& state_;
    const NodeProperties properties_;
};

/// The texts, each in double quotes, with a blank between them.
QString quotedList(const QStringList& texts);

}  // namespace build
