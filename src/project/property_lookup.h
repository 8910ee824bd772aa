#pragma once

#include "project/project_element.h"
#include "properties/property_class.h"

#include <QList>
#include <QString>
#include <QStringList>

/// What a property is worth at a node, worked out afresh on every request by one walk up the tree. Nothing is
/// cached, no macro is expanded.
namespace project {

/// A place where a lookup found a value. The default of a class has an empty configuration and no node.
struct PropertyOrigin {
    QString value;
    QString configuration;
    ProjectElement* node = nullptr;
};
using PropertyTrace = QList<PropertyOrigin>;

/// The value in force. A single value is the first found: level by level from the node up, at each level the
/// configuration, then what it inherits in order, then "Common". A StringList gathers all levels, outermost
/// first, joined by ";". Without any value it is the class's default. `trace`, when given, gets every place
/// that counted, in the order in which they were found.
QString lookUpProperty(ProjectElement* node, const properties::PropertyClass& propertyClass,
                       const QString& configuration, PropertyTrace* trace = nullptr);

/// The configurations that `configuration` inherits at `node`: the first non-empty list of the solutions
/// around it.
QStringList inheritedConfigurationsAt(ProjectElement* node, const QString& configuration);

/// The text stored at this very place, null when there is none.
QString localValue(ProjectElement* node, const QString& key, const QString& configuration);

/// The entries of a list value, without empty ones. With `escaped` a backslash takes the next character as it
/// is.
QStringList listEntries(const QString& value, bool escaped);

}  // namespace project
