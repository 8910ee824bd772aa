#pragma once

#include "build/node_properties.h"

#include <QList>
#include <QString>

/// Folders that are compiled as one generated source file, which includes their members.
namespace build {

class BuildSystem;

struct UnityFolder {
    QString path;                     ///< of the generated file
    QList<ProjectElement*> members;   ///< what it includes, in tree order
    QList<ProjectElement*> excluded;  ///< what the folder's filter leaves out; built file by file
};

/// Files that are excluded from the build are in neither list.
UnityFolder readUnityFolder(const NodeProperties& folder);

/// Writes the file of includes, and its directory. A file that can't be opened stays as it is; one that can't
/// be written in full is deleted, so that its compilation fails.
void writeUnityFile(const BuildSystem& engine, const UnityFolder& folder, const QString& configuration);

}  // namespace build
