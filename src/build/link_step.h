#pragma once

#include "build/node_step.h"

namespace build {

/// Links an executable project.
class LinkStep : public NodeStep {
public:
    LinkStep(const BuildRequest& request, const NodeState& state);
    bool build();

private:
    bool reportDuplicate() const;
    void addAdditionalInputs();
    bool isUpToDate(const QStringList& libraries);
    bool outputsExist() const;
    void cleanOutputs() const;
    void preLink() const;
    /// False, after an error, when the command can't be made.
    bool link() const;
    bool linkExternally(const PropertyClass* command) const;
    void rehearse(Rehearsal& rehearsal) const;
    void addLinkMacros(MacroTable& macros) const;
    void postLink() const;
    /// What a link leaves beside the executable and its map.
    QStringList postLinkOutputFiles() const;

    Target executable_;
    QStringList objects_;
};

}  // namespace build
