#pragma once

#include "build/node_step.h"

namespace build {

/// What staging and combining share: one output made by the commands of a text, which may then be made
/// read-only or writable.
class CopyStep : public NodeStep {
protected:
    struct Texts {
        const char* title;
        const PropertyClass* command;
        const PropertyClass* workingDirectory;
        const PropertyClass* setReadonly;
    };

    CopyStep(const BuildRequest& request, const NodeState& state);
    /// Cleans when asked to, and runs the commands.
    bool make(const Texts& texts, const MacroTable& macros) const;
    bool hasOutput() const { return !output_.name.isEmpty(); }

    Target output_;
};

/// Copies a file of a staging project.
class StageStep : public CopyStep {
public:
    StageStep(const BuildRequest& request, const NodeState& state) : CopyStep(request, state) {}
    bool build();

private:
    bool isUpToDate();
};

/// Runs the command of a staging project once its files are copied.
class StageProjectStep : public NodeStep {
public:
    StageProjectStep(const BuildRequest& request, const NodeState& state) : NodeStep(request, state) {}
    bool build();
};

/// Makes one file of the files of a combining project.
class CombineStep : public CopyStep {
public:
    CombineStep(const BuildRequest& request, const NodeState& state) : CopyStep(request, state) {}
    bool build();

private:
    bool isUpToDate(const QStringList& inputs);
};

}  // namespace build
