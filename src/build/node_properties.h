#pragma once

#include "project/standard_project_system.h"

#include <QString>
#include <QStringList>

/// The properties of one node in one configuration, and what the command lines make of them.
namespace build {

using project::BuildFlags;
using project::BuildKind;
using project::MacroTable;
using project::ProjectElement;
using project::PropertyClass;
using project::resolvedPath;

/// A short-lived view; engine, node and configuration outlive it.
class NodeProperties {
public:
    NodeProperties(project::StandardProjectSystem& engine, ProjectElement* node, const QString& configuration)
        : engine_(engine), node_(node), configuration_(configuration) {}

    project::StandardProjectSystem& engine() const { return engine_; }
    ProjectElement* node() const { return node_; }
    const QString& configuration() const { return configuration_; }
    const properties::GeneralProperties& general() const { return engine_.schema().general; }
    const properties::ToolProperties& tools() const { return engine_.schema().tools; }

    QString projectDirectory() const { return engine_.projectDirectoryOf(node_); }

    /// The value in force, macros unexpanded.
    QString value(const PropertyClass* propertyClass) const {
        return engine_.propertyValue(node_, propertyClass, configuration_);
    }
    bool reads(const PropertyClass* propertyClass, QStringView word) const {
        return value(propertyClass) == word;
    }
    bool isYes(const PropertyClass* propertyClass) const { return reads(propertyClass, u"Yes"); }
    bool isSet(const PropertyClass* propertyClass) const { return !value(propertyClass).isEmpty(); }
    QString expanded(const PropertyClass* propertyClass) const {
        return engine_.expandProperty(node_, propertyClass, configuration_);
    }
    QString expanded(const PropertyClass* propertyClass, const MacroTable& macros) const;
    /// The directory that a value names: that of the project, or one that stands there when it is relative.
    QString directory(const PropertyClass* propertyClass) const {
        const QString name = expanded(propertyClass);
        return name.isEmpty() ? projectDirectory() : resolvedPath(projectDirectory(), name);
    }
    /// The items of a list value, each behind `prefix`. `escaped`: a backslash takes the next character as it
    /// is.
    QStringList list(const char* prefix, const PropertyClass* propertyClass, bool expand, bool escaped) const;

    /// `c_user_include_directories` as options: -Ipath, or with `quoted` -I"path".
    QStringList includeOptions(bool escaped, bool quoted) const;

private:
    project::StandardProjectSystem& engine_;
    ProjectElement* node_;
    const QString& configuration_;
};

/// `name` in the single quotes of running text.
QString quote(const QString& name);

}  // namespace build
