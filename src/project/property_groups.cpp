#include "project/property_groups.h"

#include "project/project_system.h"
#include "project/property_lookup.h"

#include <QFileInfo>

namespace project {

namespace {

using properties::PropertyValueGroupClass;
using properties::PropertyValueGroupFile;

/// The conditions under which a "macro" element counts.
class MacroConditions {
public:
    MacroConditions(ProjectSystem& engine, const PropertyValueGroupFile& file, ProjectElement& node,
                    const QString& configuration)
        : engine_(engine), file_(file), node_(node), configuration_(configuration) {}

    bool hold(const xml::XMLElement& element) const { return holdsIn(element) && holdsFor(element); }

private:
    bool holdsIn(const xml::XMLElement& element) const {
        if (!element.hasAttribute("configuration")) return true;
        const QString wanted = element.text("configuration");
        return wanted == commonConfiguration || wanted == configuration_ ||
               inheritedConfigurationsAt(&node_, configuration_).contains(wanted);
    }

    bool holdsFor(const xml::XMLElement& element) const {
        if (!element.hasAttribute("property") || !element.hasAttribute("property_value")) return true;
        const QString key = element.text("property");
        const PropertyClass* property = engine_.schema().find(key);
        if (!property) property = file_.find(key);
        return property &&
               engine_.propertyValue(&node_, property, configuration_) == element.text("property_value");
    }

    ProjectSystem& engine_;
    const PropertyValueGroupFile& file_;
    ProjectElement& node_;
    const QString& configuration_;
};

}  // namespace

const xml::XMLElement* chosenEntry(const PropertyValueGroupClass& group, const QString& value) {
    const xml::XMLElement* found = nullptr;
    forEachChildElement(*group.element(), [&](const xml::XMLElement& entry) {
        if (!found && entry.tagName() == "groupEntry" && entry.text("name") == value) found = &entry;
    });
    return found;
}

bool changesPaths(const xml::XMLElement& groupEntry) {
    bool found = false;
    forEachChildElement(groupEntry, [&](const xml::XMLElement& entry) {
        found = found || (entry.tagName() == "property" && projectSystem->pathsDependOn(entry.text("name")));
    });
    return found;
}

QString projectFilePath(ProjectSystem& engine, ProjectElement* node, const QString& name) {
    if (name.isEmpty() || name == u"None" || isAbsolutePath(name) || QFileInfo(name).isFile()) return name;
    return Path(engine.projectDirectoryOf(node) + u'/' + name).normalised();
}

PropertyValueGroupFile* ProjectSystem::propertyGroupFile(ProjectElement* node, const QString& configuration) {
    return propertyGroupFiles_.find(
        expandedFilePath(node, schema().general.property_groups_file_path, configuration));
}

QList<const xml::XMLElement*> ProjectSystem::propertyGroupElements(ProjectElement* node,
                                                                   const QString& configuration,
                                                                   const QByteArray& tag) {
    QList<const xml::XMLElement*> elements;
    const PropertyValueGroupFile* const file = node ? propertyGroupFile(node, configuration) : nullptr;
    if (!file) return elements;
    for (const PropertyValueGroupClass* group : file->groups()) {
        const xml::XMLElement* const entry = chosenEntry(*group, propertyValue(node, group, configuration));
        if (!entry) continue;
        forEachChildElement(*entry, [&](const xml::XMLElement& element) {
            if (element.tagName() == tag) elements.append(&element);
        });
    }
    return elements;
}

const PropertyClass* ProjectSystem::propertyClassAt(ProjectElement* node, const QString& configuration,
                                                    const QString& key) {
    loadToolDescriptions(node, configuration);
    if (const PropertyClass* const found = schema().find(key)) return found;
    const PropertyValueGroupFile* const file = node ? propertyGroupFile(node, configuration) : nullptr;
    return file ? file->find(key) : nullptr;
}

/// The choices themselves and the macros of what they choose. The name of the file can only hold global
/// macros here: those of the node are being made.
void ProjectSystem::addGroupMacros(ProjectElement& node, const QString& configuration, MacroTable& table) {
    const QString name =
        expandGlobalMacros(propertyValue(&node, schema().general.property_groups_file_path, configuration));
    if (name.isEmpty()) return;
    const PropertyValueGroupFile* const file = propertyGroupFiles_.find(projectFilePath(*this, &node, name));
    if (!file) return;
    const MacroConditions conditions(*this, *file, node, configuration);
    for (const PropertyValueGroupClass* group : file->groups()) {
        const QString value = propertyValue(&node, group, configuration);
        table.insert(group->name, value);
        const xml::XMLElement* const entry = chosenEntry(*group, value);
        if (!entry) continue;
        forEachChildElement(*entry, [&](const xml::XMLElement& element) {
            if (element.tagName() == "macro" && conditions.hold(element))
                table.insert(element.text("name"), element.text("value"));
        });
    }
}

}  // namespace project
