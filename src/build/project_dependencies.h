#pragma once

#include "build/node_properties.h"

#include <QList>
#include <QStringList>

/// What a project depends on, by its property `project_dependencies`.
namespace build {

/// The names, in order; a name with "*" stands for the projects of the solution that it matches, other than
/// the project itself.
QStringList dependencyNames(const NodeProperties& project);

/// The project and all that it depends on, near or far, each once, in the order in which they are first seen.
/// Names of no project are passed over.
QList<ProjectElement*> withDependencies(const NodeProperties& project);

}  // namespace build
