#include "project/property_value.h"

#include "project/dynamic_folder.h"
#include "project/project_system.h"
#include "project/property_groups.h"
#include "support/log.h"

#include <algorithm>

namespace project {

using properties::PropertyClass;
using properties::PropertyValueGroupClass;

namespace {

/// "name=value", or whichever of the two the element has, in HTML.
QString assignmentText(const xml::XMLElement& element) {
    QStringList parts;
    for (const char* attribute : {"name", "value"})
        if (element.hasAttribute(attribute)) parts.append(element.text(attribute).toHtmlEscaped());
    return parts.join(u'=');
}

/// The property that an entry of a group is about, or null: what configurations are known by is none.
const PropertyClass* propertyOf(const xml::XMLElement& entry) {
    const QString key = entry.text("name");
    return properties::isStorableKey(key) ? projectSystem->schema().find(key) : nullptr;
}

/// The configuration in which a value of the class is stored.
const QString& storingConfiguration(const PropertyClass& propertyClass, const QString& asked) {
    return propertyClass.perConfiguration ? asked : commonConfiguration;
}

}  // namespace

PropertyValue::PropertyValue(const PropertyClass* propertyClass)
    : readOnly_(propertyClass && propertyClass->readOnly), class_(propertyClass) {}

PropertyValue::~PropertyValue() = default;

QString PropertyValue::helpText() const {
    return class_->longDescription();
}

SimplePropertyValue::SimplePropertyValue(const PropertyClass* propertyClass, const QString& text)
    : PropertyValue(propertyClass), text_(text) {
    readOnly_ = true;
    ownedByList_ = true;
}

std::unique_ptr<PropertyValue> SimplePropertyValue::clone() const {
    return std::make_unique<SimplePropertyValue>(propertyClass(), text_);
}

DynamicFolderPropertyValue::DynamicFolderPropertyValue(const PropertyClass* propertyClass,
                                                       ProjectElement* folder)
    : SimplePropertyValue(propertyClass, folder->attributes.value(propertyClass->name)), folder_(folder) {
    readOnly_ = false;
}

std::unique_ptr<PropertyValue> DynamicFolderPropertyValue::clone() const {
    return std::make_unique<DynamicFolderPropertyValue>(propertyClass(), folder_);
}

ProjectPropertyValue::ProjectPropertyValue(const PropertyClass* propertyClass, const QString& configuration,
                                           ProjectElement* node)
    : PropertyValue(propertyClass),
      node_(node),
      configuration_(storingConfiguration(*propertyClass, configuration)) {}

std::unique_ptr<PropertyValue> ProjectPropertyValue::clone() const {
    return std::make_unique<ProjectPropertyValue>(propertyClass(), configuration_, node_);
}

bool ProjectPropertyValue::isInherited() const {
    const ProjectElement* const child = node_->configurations.value(configuration_);
    return !child || !child->attributes.contains(propertyClass()->name);
}

void ProjectPropertyValue::setValue(const QString& text) {
    projectSystem->setPropertyValue(node_, propertyClass(), configuration_, text);
}

QString ProjectPropertyValue::value() const {
    return propertyClass()->kind == properties::Kind::StringList
               ? projectSystem->localPropertyValue(node_, propertyClass(), configuration_)
               : projectSystem->propertyValue(node_, propertyClass(), configuration_);
}

std::unique_ptr<PropertyValue> ProjectDirectoryProjectPropertyValue::clone() const {
    return std::make_unique<ProjectDirectoryProjectPropertyValue>(propertyClass(), configuration_, node_);
}

void ProjectDirectoryProjectPropertyValue::setValue(const QString& text) {
    ProjectPropertyValue::setValue(text);
    projectSystem->invalidatePaths(node_->enclosingProject());
}

std::unique_ptr<PropertyValue> ProjectMacrosProjectPropertyValue::clone() const {
    return std::make_unique<ProjectMacrosProjectPropertyValue>(propertyClass(), configuration_, node_);
}

void ProjectMacrosProjectPropertyValue::setValue(const QString& text) {
    ProjectPropertyValue::setValue(text);
    projectSystem->invalidatePaths(node_->enclosingProject());
}

PropertyValueGroupValue::PropertyValueGroupValue(const PropertyValueGroupClass* propertyClass,
                                                 const QString& configuration, ProjectElement* node)
    : ProjectPropertyValue(propertyClass, configuration, node), groupClass_(propertyClass) {}

std::unique_ptr<PropertyValue> PropertyValueGroupValue::clone() const {
    return std::make_unique<PropertyValueGroupValue>(groupClass_, configuration_, node_);
}

QString PropertyValueGroupValue::helpText() const {
    QString help = ProjectPropertyValue::helpText();
    const xml::XMLElement* const group = chosenEntry(*groupClass_, value());
    if (!group || !group->firstChild()) return help;
    help += u"<ul>";
    forEachChildElement(*group, [&](const xml::XMLElement& entry) {
        help +=
            QStringLiteral("<li><b>%1</b> ").arg(QString::fromUtf8(entry.tagName())) + assignmentText(entry);
        if (entry.hasAttribute("configuration"))
            help += QStringLiteral(" (%1)").arg(entry.text("configuration"));
        help += u"</li>";
    });
    return help + QStringLiteral("</ul>");
}

void PropertyValueGroupValue::setValue(const QString& text) {
    QString choice = text;
    const xml::XMLElement* group = chosenEntry(*groupClass_, choice);
    if (!group) {
        choice = propertyClass()->defaultValue;
        group = chosenEntry(*groupClass_, choice);
    }
    if (group) {
        forEachChildElement(*group, [this](const xml::XMLElement& entry) {
            if (entry.tagName() == "property") applyProperty(entry);
            if (entry.tagName() == "file") applyFile(entry);
        });
        if (changesPaths(*group)) projectSystem->invalidatePathsAt(node_);
    }
    ProjectPropertyValue::setValue(choice);
}

void PropertyValueGroupValue::applyProperty(const xml::XMLElement& entry) {
    const PropertyClass* const target = propertyOf(entry);
    if (!target) return;
    const QString named = entry.text("configuration");
    const QString& configuration = storingConfiguration(*target, named.isEmpty() ? configuration_ : named);
    projectSystem->setPropertyValue(node_, target, configuration, entry.text("value"));
}

void PropertyValueGroupValue::applyFile(const xml::XMLElement& entry) {
    const QString name = entry.text("name");
    const QString fileName = entry.text("file_name");
    ProjectElement* const folder = projectSystem->findFolder(node_, entry.text("folder"));
    if (!folder || folder->attributes.contains(dynamicFolderKeys::path)) return;
    ProjectElement* const file = projectSystem->findElement(folder, name);
    if (!file) {
        projectSystem->setElementAttribute(projectSystem->addFile(folder, fileName), keys::name, name);
    } else if (file->attributes.value(keys::fileName) != fileName) {
        projectSystem->setElementAttribute(file, keys::fileName, fileName);
        file->pathValid = false;
    }
}

void PropertyValueGroupValue::clear() {
    projectSystem->clearPropertyValue(node_, propertyClass(), configuration_);
    const xml::XMLElement* const group = chosenEntry(*groupClass_, propertyClass()->defaultValue);
    if (!group) return;
    forEachChildElement(*group, [this](const xml::XMLElement& entry) {
        const PropertyClass* const target = propertyOf(entry);
        if (entry.tagName() != "property" || !target) return;
        const QString configuration =
            entry.hasAttribute("configuration") ? entry.text("configuration") : configuration_;
        projectSystem->clearPropertyValue(node_, target, storingConfiguration(*target, configuration));
    });
    if (changesPaths(*group)) projectSystem->invalidatePathsAt(node_);
}

PropertyValueList::PropertyValueList(PropertyValueList&& other) noexcept {
    swap(other);
}

PropertyValueList::~PropertyValueList() {
    for (PropertyValue* value : *this)
        if (value->isOwnedByList()) delete value;
}

bool PropertyValueList::appendUnique(PropertyValue* value) {
    if (!value || !value->propertyClass()) {
        if (support::logMask() & support::LogInternalErrors)
            support::logMessage(support::LogLevel::Error, support::LogLineFeed,
                                "Bad property value in PropertyValueList::appendUnique");
        return false;
    }
    const bool known = std::any_of(begin(), end(), [&](const PropertyValue* entry) {
        return entry->propertyClass() == value->propertyClass();
    });
    if (!known) append(value);
    return !known;
}

void PropertyValueList::sortByTitle() {
    std::stable_sort(begin(), end(), [](const PropertyValue* a, const PropertyValue* b) {
        return a->propertyClass()->shortName < b->propertyClass()->shortName;
    });
}

}  // namespace project
