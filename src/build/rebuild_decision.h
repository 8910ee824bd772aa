#pragma once

#include "build/builder.h"
#include "build/node_properties.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// When a target has to be made again. A target is compared with its inputs by file time, in whole seconds;
/// it is also stale when a property that its kind of step depends on has changed since, or a file of options.
/// Nothing is cached: every question asks the disk afresh.
namespace build {

class Rehearsal;

/// What the tests say to the log: reasons and remarks, or nothing at all. The decision is the same.
class DecisionLog {
public:
    /// `builder` may be null when `quiet`.
    DecisionLog(Builder* builder, bool quiet) : builder_(quiet ? nullptr : builder) {}
    void reason(const QString& text) const {
        if (builder_) builder_->reason(text);
    }
    void note(const QString& text) const {
        if (builder_) builder_->note(text);
    }
    bool isQuiet() const { return !builder_; }

private:
    Builder* builder_;
};

/// A file that a step makes.
struct Target {
    QString name;                                     ///< as the properties spell it
    QString path;                                     ///< in full
    std::optional<std::int64_t> time = std::nullopt;  ///< nothing when it does not exist

    /// Looks for the target, and gives the reason when it is not there.
    bool exists(const DecisionLog& log);
};

/// Whether every input exists and none is newer than the target. Relative inputs stand below `directory`.
/// What a `rehearsal` makes is newer than everything.
bool inputsOlderThan(const QString& directory, const Target& target, const QStringList& inputs,
                     const DecisionLog& log, const Rehearsal* rehearsal = nullptr);

/// Whether nothing that a step of `kind` depends on has been set or cleared at the node or above it since
/// `time`, in this configuration or one that counts for it, and no file of options is newer.
bool propertiesUnchangedSince(const NodeProperties& properties, std::int64_t time, BuildKind kind,
                              const DecisionLog& log);

}  // namespace build
