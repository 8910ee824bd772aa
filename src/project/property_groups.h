#pragma once

#include "properties/property_value_group_file.h"
#include "xml/element.h"

#include <QString>

/// The named choices that a project's property groups file offers, and what they bring with them.
namespace project {

class ProjectElement;
class ProjectSystem;

/// Calls `visit` with each child that is an element.
template <typename Visit>
void forEachChildElement(const xml::XMLElement& parent, Visit visit) {
    for (const xml::XMLNode* node = parent.firstChild(); node; node = node->nextSibling())
        if (const xml::XMLElement* element = xml::asElement(node)) visit(*element);
}

/// The entry of a group that a value chooses, or null.
const xml::XMLElement* chosenEntry(const properties::PropertyValueGroupClass& group, const QString& value);

/// Whether a group entry sets a property that the paths of a project depend on.
bool changesPaths(const xml::XMLElement& groupEntry);

/// `name` if there is such a file or if it is absolute, else the same name in the directory of the project.
QString projectFilePath(ProjectSystem& engine, ProjectElement* node, const QString& name);

}  // namespace project
