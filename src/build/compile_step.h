#pragma once

#include "build/node_step.h"

namespace build {

/// Compiles or assembles a source file, or a folder that is compiled as one.
class CompileStep : public NodeStep {
public:
    CompileStep(const BuildRequest& request, const NodeState& state);
    bool build();
    /// The files that a compilation leaves.
    QStringList outputs() const;

private:
    bool isUpToDate();
    /// Answers the file that the compiler reads.
    QString preCompile() const;
    void compile(const QString& source) const;
    void compileExternally() const;
    MacroTable compileMacros() const;
    void postCompile() const;

    Target object_;
    const PropertyClass* externalCommand_;
};

}  // namespace build
