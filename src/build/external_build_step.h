#pragma once

#include "build/node_step.h"

namespace build {

/// Builds a project by a command of its own, which decides itself what is up to date.
class ExternalBuildStep : public NodeStep {
public:
    ExternalBuildStep(const BuildRequest& request, const NodeState& state) : NodeStep(request, state) {}
    bool build();
};

}  // namespace build
