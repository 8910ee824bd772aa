#pragma once

#include "project/project_element.h"
#include "project/project_templates.h"
#include "properties/property_value_group_class.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace project {

/// Fills in one project from a template. What is stored already wins over the template.
///
/// The body is a language of elements: "folder" and "file" find or add a node and go on inside it,
/// "property", "solutionproperty", "propertygroup" and "configuration" set something once, or once for each
/// configuration where they name "$(Configuration)", and "import" links a solution. Elements of other tags
/// are passed over with all that is in them.
class TemplateExpander {
public:
    /// Everything but `configurations` outlives the object.
    TemplateExpander(const ProjectTemplateNodeList& configurationTemplates, LoadWork& work,
                     ProjectElement& solution, ProjectElement& project, const QStringList& configurations);

    /// Throws SolutionLoadError.
    void expand(const xml::XMLElement& templateElement);

private:
    using Element = xml::XMLElement;
    /// Acts for an element in the node that is being filled, and answers the node inside which its children
    /// are to be expanded, or null.
    using Action = ProjectElement* (TemplateExpander::*)(const Element&, ProjectElement&);
    struct ActionRow {
        const char* tag;
        Action act;
    };
    static const ActionRow actionRows[];
    /// The direct children of a node that elements look for; of several of one name the first.
    struct Children {
        QHash<QString, ProjectElement*> folders;  ///< by name
        QHash<QString, ProjectElement*> files;    ///< by stored file name
    };

    void expandBody(const Element& templateElement);
    ProjectElement* act(const Element& element, ProjectElement& node);

    ProjectElement* enterFolder(const Element& element, ProjectElement& node);
    ProjectElement* enterFile(const Element& element, ProjectElement& node);
    ProjectElement* addSourceFile(const Element& element, ProjectElement& node, const QString& name);
    ProjectElement* setProperty(const Element& element, ProjectElement& node);
    ProjectElement* setPropertyGroup(const Element& element, ProjectElement& node);
    ProjectElement* addConfiguration(const Element& element, ProjectElement& node);
    ProjectElement* import(const Element& element, ProjectElement& node);

    void setPropertyIn(const QString& configuration, const Element& element, ProjectElement& node);
    void setGroupIn(const QString& configuration, const Element& element, ProjectElement& node);
    void countGroup(const properties::PropertyValueGroupClass& group, const QString& value,
                    ProjectElement& node);
    void applyConfigurationTemplates(const QStringList& names);
    QStringList applyConfigurationTemplate(const QString& name, const Element& element);

    /// Calls `visit(text, name)` with the text of the attribute for each configuration in turn, or once with
    /// the text as it is and the first configuration when it does not hold "$(Configuration)". `name` is null
    /// when there are no configurations.
    template <typename Visit>
    void forEachConfiguration(const Element& element, const char* attribute, Visit visit);

    Children& childrenOf(ProjectElement& node);
    void addToChildren(Children& children, ProjectElement& child);
    ProjectElement& findOrAddFile(ProjectElement& node, const QString& fileName);
    void store(ProjectElement& node, const QString& configuration, const QString& key, const QString& value);
    ProjectElement& findOrAddConfiguration(ProjectElement& node, const QString& name);
    QString expanded(ProjectElement& node, const QString& configuration, const QString& text);
    void refreshInheritance();
    void count(std::int64_t units);
    void countText(const QString& text) { count(text.size() / charactersOfUnit); }
    void countElement(const Element& element);
    void countNodes(ProjectElement& node);
    [[noreturn]] void refuse() const;

    static constexpr std::int64_t unitsOfPass = 20;  // over an element, or over a configuration in it
    static constexpr std::int64_t unitsOfFilter = 10;
    static constexpr std::int64_t charactersOfUnit = 8;
    static constexpr std::int64_t entriesOfUnit = 32;  // moved to make room for another

    const ProjectTemplateNodeList& configurationTemplates_;
    LoadWork& work_;
    ProjectElement& solution_;
    ProjectElement& project_;
    QStringList configurations_;
    QHash<const ProjectElement*, Children> children_;  // of nodes in which something was looked for
    bool inheritanceIsStale_ = true;
};

}  // namespace project
