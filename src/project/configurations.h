#pragma once

#include "project/project_element.h"

#include <QString>
#include <QStringList>

/// Which configurations a solution has, and what they inherit.
namespace project {

/// What `configurationNames` offers.
enum ConfigurationFlags : unsigned {
    WithCommon = 1,
    PrivateConfigurations = 2,
    PublicConfigurations = 4,
};

/// Enters what each configuration child of the solution node says of its inheritance into the solution's
/// index.
void rebuildInheritanceIndex(ProjectElement& solution);

/// Renames a configuration on the node and on everything below it. Where the new name is taken the walk goes
/// no further down; the answer tells whether that was so at the top.
bool renameConfigurationBelow(ProjectElement* top, const QString& oldName, const QString& newName);

}  // namespace project
