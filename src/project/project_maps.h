#pragma once

#include "project/project_element.h"

#include <QMap>
#include <QString>

/// The tables that name projects across linked solutions. A project "lib" of a solution "B" that a solution
/// "A" links is "lib" in B and "lib(B)" in A; a chain of solutions is named from the outside in, "lib(A,B)".
namespace project {

class Progress;

/// Rebuilds the tables below `root` from nothing; `solutions` gets every solution by name.
void rebuildProjectMaps(ProjectElement& root, QMap<QString, ProjectElement*>& solutions, Progress* progress);

/// How many characters the names of the projects below `root` have together in these tables. `around` is the
/// solution that `root` is to be appended to, or null.
qint64 mappedNamesLength(ProjectElement& root, ProjectElement* around = nullptr);

/// Enters one project that was appended as the last child of its parent, with the solutions around it, at
/// the cost of one. Where its place in the order of equal names cannot be told, answers false and has entered
/// nothing.
bool enterAppendedProject(ProjectElement& project, QMap<QString, ProjectElement*>& solutions);

/// The projects in `node`, its following siblings and below them.
int countProjects(ProjectElement* node);

}  // namespace project
