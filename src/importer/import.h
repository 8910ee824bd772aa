#pragma once

#include "importer/command_line.h"
#include "manifest/state.h"
#include "project/standard_project_system.h"

namespace importer {

/// Writes the solution "build" for the graph that was read from `manifestFile`, into the directory of that
/// file. Answers whether it could be saved; the solution is closed in either case.
bool importManifest(project::StandardProjectSystem& engine, manifest::State& state, const char* manifestFile,
                    const Targets& targets);

/// A whole run of the program in the current directory; answers its exit status.
int run(int argc, const char* const* argv);

}  // namespace importer
