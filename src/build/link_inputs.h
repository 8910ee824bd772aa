#pragma once

#include "build/build_system.h"
#include "build/builder.h"
#include "build/node_properties.h"

#include <QString>
#include <QStringList>

/// What goes into a link or an archive.
namespace build {

/// What the nodes below `parent` become, in tree order: object files, and ready-made files as they stand.
/// Names are as the properties spell them or absolute. A unity folder counts as one file, followed by those
/// that it leaves out.
QStringList collectObjectFiles(BuildSystem& engine, ProjectElement* parent, const QString& configuration,
                               bool absolute, bool noUnity);

/// The names of the files below a combining project, without those that are excluded from the build.
QStringList collectCombineInputs(BuildSystem& engine, ProjectElement* project, const QString& configuration);

/// What the projects make that the project depends on, as full paths.
QStringList collectLibraries(BuildSystem& engine, ProjectElement* project, const QString& configuration,
                             bool noUnity);

/// The files that lay out an executable. Each question answers false when no such file is named, or when it
/// exists neither as named nor below the project directory; a builder then gets a warning, where one is
/// given. Else `path` is the form in which it exists.
bool resolveLinkerScript(const NodeProperties& properties, Builder* builder, QString& path);
bool resolveMemoryMap(const NodeProperties& properties, Builder* builder, QString& path);
bool resolveSectionPlacement(const NodeProperties& properties, Builder* builder, QString& path);

/// Those of the files above that a link reads.
QStringList layoutFiles(const NodeProperties& properties);

struct LinkInputForm {
    bool absolute;
    bool noUnity;
    bool withDependencies;  ///< also what the projects make that the project depends on
};

/// Everything that a link of the project reads.
QStringList linkInputs(BuildSystem& engine, ProjectElement* project, const QString& configuration,
                       const LinkInputForm& form);

}  // namespace build
