#pragma once

#include "project/project_element.h"
#include "properties/property_class.h"
#include "properties/property_value_group_class.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

/// Property values as a view sees them: short-lived adapters that hold a class and a place and read and write
/// through the engine. They store nothing of a project; its values are texts in the tree.
namespace project {

/// A value of one class at one place. The class is not owned.
class PropertyValue {
public:
    virtual ~PropertyValue();
    virtual std::unique_ptr<PropertyValue> clone() const = 0;
    virtual bool isReadOnly() const { return readOnly_; }
    /// True when this place stores no value of its own.
    virtual bool isInherited() const { return true; }
    virtual QString helpText() const;
    virtual void setValue(const QString& text) = 0;
    virtual QString value() const = 0;

    const properties::PropertyClass* propertyClass() const { return class_; }
    /// Whether a PropertyValueList deletes this object.
    bool isOwnedByList() const { return ownedByList_; }
    void setOwnedByList(bool owned) { ownedByList_ = owned; }

    /// A view's editor for the value, or null; owned.
    QObject* editor() const { return editor_.get(); }
    void setEditor(std::unique_ptr<QObject> editor) { editor_ = std::move(editor); }

protected:
    explicit PropertyValue(const properties::PropertyClass* propertyClass);

    bool readOnly_;
    bool ownedByList_ = false;

private:
    const properties::PropertyClass* class_;
    std::unique_ptr<QObject> editor_;
};

/// A fact that is computed and not stored, such as a date or a size; the object holds the text.
class SimplePropertyValue : public PropertyValue {
public:
    SimplePropertyValue(const properties::PropertyClass* propertyClass, const QString& text);
    std::unique_ptr<PropertyValue> clone() const override;
    void setValue(const QString& text) override { text_ = text; }
    QString value() const override { return text_; }

private:
    QString text_;
};

/// One of the four keys of a dynamic folder, read once. An edit changes this object only; the folder's editor
/// writes all four together.
class DynamicFolderPropertyValue : public SimplePropertyValue {
public:
    DynamicFolderPropertyValue(const properties::PropertyClass* propertyClass, ProjectElement* folder);
    std::unique_ptr<PropertyValue> clone() const override;
    ProjectElement* folder() const { return folder_; }

private:
    ProjectElement* folder_;
};

/// A stored value of a node in a configuration; a class without configurations is always at "Common".
class ProjectPropertyValue : public PropertyValue {
public:
    ProjectPropertyValue(const properties::PropertyClass* propertyClass, const QString& configuration,
                         ProjectElement* node);
    std::unique_ptr<PropertyValue> clone() const override;
    bool isInherited() const override;
    void setValue(const QString& text) override;
    /// Of a StringList what this place adds, of any other kind what is in force.
    QString value() const override;

    ProjectElement* node() const { return node_; }
    const QString& configuration() const { return configuration_; }

protected:
    ProjectElement* node_;
    QString configuration_;
};

/// `project_directory`: a new value moves all files of the project.
class ProjectDirectoryProjectPropertyValue : public ProjectPropertyValue {
public:
    using ProjectPropertyValue::ProjectPropertyValue;
    std::unique_ptr<PropertyValue> clone() const override;
    void setValue(const QString& text) override;
};

/// `macros`: a new value changes what file names resolve to.
class ProjectMacrosProjectPropertyValue : public ProjectPropertyValue {
public:
    using ProjectPropertyValue::ProjectPropertyValue;
    std::unique_ptr<PropertyValue> clone() const override;
    void setValue(const QString& text) override;
};

/// The choice of one named group, which sets other values and files along with it.
class PropertyValueGroupValue : public ProjectPropertyValue {
public:
    PropertyValueGroupValue(const properties::PropertyValueGroupClass* propertyClass,
                            const QString& configuration, ProjectElement* node);
    std::unique_ptr<PropertyValue> clone() const override;
    /// The description, and as an HTML list what the chosen group holds.
    QString helpText() const override;
    /// Applies the group of that name, or of the default when there is none, and stores the choice.
    void setValue(const QString& text) override;
    /// Clears the choice, and the properties that the default group names.
    void clear();

private:
    void applyProperty(const xml::XMLElement& entry);
    void applyFile(const xml::XMLElement& entry);

    const properties::PropertyValueGroupClass* groupClass_;
};

/// The values that a view shows for a node.
class PropertyValueList : public QList<PropertyValue*> {
public:
    PropertyValueList() = default;
    PropertyValueList(PropertyValueList&& other) noexcept;
    PropertyValueList(const PropertyValueList&) = delete;
    PropertyValueList& operator=(PropertyValueList&&) = delete;
    PropertyValueList& operator=(const PropertyValueList&) = delete;
    /// Deletes those entries whose owned-by-list flag is set.
    ~PropertyValueList();

    /// Appends the value unless the list has one of its class; answers whether it did. A value that is not
    /// appended stays with the caller. A null value, or one without class, is a fault that is logged when
    /// asked for.
    bool appendUnique(PropertyValue* value);
    void sortByTitle();
};

}  // namespace project
