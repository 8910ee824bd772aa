#pragma once

#include "build/node_step.h"

namespace build {

/// Archives a library project.
class ArchiveStep : public NodeStep {
public:
    ArchiveStep(const BuildRequest& request, const NodeState& state);
    bool build();

private:
    bool isUpToDate();
    void cleanOutputs() const;
    // These answer false when the build was stopped meanwhile.
    bool archive() const;
    bool archiveExternally() const;
    bool postArchive() const;

    Target library_;
    QStringList objects_;
};

}  // namespace build
