#include "project/template_expander.h"

#include "project/project_system.h"
#include "project/property_groups.h"
#include "project/tree_walk.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace project {

namespace {

const QString configurationReference = QStringLiteral("$(Configuration)");
const QString inheritedKey = QStringLiteral("inherited_configurations");

/// Whether a template may store values under the key: in any other case the solution could not be read back.
bool isKey(const QString& text) {
    return properties::isAttributeName(text) && text != keys::name;
}

/// Whether an attribute is that word, in any case.
bool isWord(const QString& text, QStringView word) {
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

}  // namespace

const TemplateExpander::ActionRow TemplateExpander::actionRows[] = {
    {"folder", &TemplateExpander::enterFolder},
    {"file", &TemplateExpander::enterFile},
    {"property", &TemplateExpander::setProperty},
    {"solutionproperty", &TemplateExpander::setProperty},
    {"propertygroup", &TemplateExpander::setPropertyGroup},
    {"configuration", &TemplateExpander::addConfiguration},
    {"import", &TemplateExpander::import},
};

TemplateExpander::TemplateExpander(const ProjectTemplateNodeList& configurationTemplates, LoadWork& work,
                                   ProjectElement& solution, ProjectElement& project,
                                   const QStringList& configurations)
    : configurationTemplates_(configurationTemplates),
      work_(work),
      solution_(solution),
      project_(project),
      configurations_(configurations) {}

void TemplateExpander::expand(const Element& templateElement) {
    store(project_, commonConfiguration, projectSystem->schema().general.project_type->name,
          templateElement.text("type"));
    expandBody(templateElement);
}

/// A body can nest as deep as it likes, so the bodies under way are a stack.
void TemplateExpander::expandBody(const Element& templateElement) {
    struct Body {
        const xml::XMLNode* next;
        ProjectElement* node;
    };
    std::vector<Body> open{{templateElement.firstChild(), &project_}};
    while (!open.empty()) {
        const xml::XMLNode* const each = open.back().next;
        if (!each) {
            open.pop_back();
            continue;
        }
        open.back().next = each->nextSibling();
        const Element* const element = xml::asElement(each);
        if (!element) continue;
        ProjectElement* const inside = act(*element, *open.back().node);
        if (inside && element->firstChild()) open.push_back({element->firstChild(), inside});
    }
}

ProjectElement* TemplateExpander::act(const Element& element, ProjectElement& node) {
    countElement(element);
    for (const ActionRow& row : actionRows)
        if (element.tagName() == row.tag) return (this->*row.act)(element, node);
    return nullptr;
}

ProjectElement* TemplateExpander::enterFolder(const Element& element, ProjectElement& node) {
    const QString name = element.text("name");
    const QString filter = element.text("filter");
    ProjectElement*& folder = childrenOf(node).folders[name];
    if (folder) {
        const QString& key = projectSystem->schema().general.filter->name;
        if (!filter.isEmpty() && localValue(folder, key, commonConfiguration).isNull())
            store(*folder, commonConfiguration, key, filter);
        return folder;
    }
    const bool isDynamic = element.hasAttribute("path");
    if (isDynamic && element.hasAttribute("choose")) return nullptr;
    folder = projectSystem->addFolder(&node, name, isDynamic ? QString() : filter);
    if (isDynamic &&
        !projectSystem->setDynamicFolder(folder, element.text("path"), filter,
                                         element.hasAttribute("recurse"), element.text("exclude")))
        refuse();
    return folder;
}

ProjectElement* TemplateExpander::enterFile(const Element& element, ProjectElement& node) {
    QString name = element.text("name");
    if (!isWord(element.text("expand"), u"no")) name = expanded(node, commonConfiguration, name);
    if (element.hasAttribute("source")) return addSourceFile(element, node, name);
    return &findOrAddFile(node, name);
}

ProjectElement* TemplateExpander::addSourceFile(const Element& element, ProjectElement& node,
                                                const QString& name) {
    if (!isWord(project_.attributes.value(u"with_source"), u"yes")) return nullptr;
    const QString source = element.text("source");
    if (ProjectElement* const file = childrenOf(node).files.value(source)) return file;
    ProjectElement& file = findOrAddFile(node, source);
    projectSystem->setElementAttribute(&file, keys::name, name);
    return &file;
}

ProjectElement* TemplateExpander::setProperty(const Element& element, ProjectElement& node) {
    if (!element.hasAttribute("name")) return nullptr;
    if (!element.hasAttribute("value") && !element.hasAttribute("value_win32")) return nullptr;
    ProjectElement& target = element.tagName() == "solutionproperty" ? solution_ : node;
    forEachConfiguration(element, "configuration", [&](const QString& configuration, const QString&) {
        setPropertyIn(configuration.isEmpty() ? commonConfiguration : configuration, element, target);
    });
    return nullptr;
}

void TemplateExpander::setPropertyIn(const QString& configuration, const Element& element,
                                     ProjectElement& node) {
    const QString key = element.text("name");
    if (!isKey(key) || !localValue(&node, key, configuration).isNull()) return;
    QString value = element.text("value");
    if (value.isEmpty()) value = element.text("value_win32");
    if (isWord(element.text("expand"), u"yes")) value = expanded(node, configuration, value);
    store(node, configuration, key, value);
}

ProjectElement* TemplateExpander::setPropertyGroup(const Element& element, ProjectElement& node) {
    if (!element.hasAttribute("name")) return nullptr;
    forEachConfiguration(element, "configuration", [&](const QString& configuration, const QString&) {
        setGroupIn(configuration.isEmpty() ? commonConfiguration : configuration, element, node);
    });
    return nullptr;
}

void TemplateExpander::setGroupIn(const QString& configuration, const Element& element,
                                  ProjectElement& node) {
    const QString key = element.text("name");
    QString value = localValue(&node, key, configuration);
    if (value.isNull()) value = element.text("value");
    refreshInheritance();
    const properties::PropertyValueGroupFile* const file =
        projectSystem->propertyGroupFile(&node, configuration);
    if (!file) return;
    count(file->groups().size());
    const properties::PropertyValueGroupClass* const group = file->find(key);
    if (!group) return;
    countGroup(*group, value, node);
    PropertyValueGroupValue(group, configuration, &node).setValue(value);
    children_.clear();  // a group can add files
    inheritanceIsStale_ = true;
}

/// What it takes to find the value in the group and to set all that it chooses.
void TemplateExpander::countGroup(const properties::PropertyValueGroupClass& group, const QString& value,
                                  ProjectElement& node) {
    forEachChildElement(*group.element(), [this](const Element&) { count(1); });
    const Element* entry = chosenEntry(group, value);
    if (!entry) entry = chosenEntry(group, group.defaultValue);
    if (!entry) return;
    forEachChildElement(*entry, [this](const Element& each) { countElement(each); });
    if (changesPaths(*entry)) countNodes(node);
}

ProjectElement* TemplateExpander::addConfiguration(const Element& element, ProjectElement&) {
    forEachConfiguration(element, "name", [&](const QString& name, const QString& configuration) {
        if (name.isEmpty()) return;
        if (configurationTemplates_.find(name)) {
            applyConfigurationTemplates({name});
        } else if (element.hasAttribute("inherited_configurations")) {
            QString inherited = element.text("inherited_configurations");
            if (!configuration.isNull()) inherited.replace(configurationReference, configuration);
            store(solution_, name, inheritedKey, inherited);
            applyConfigurationTemplates(inherited.split(u';', Qt::SkipEmptyParts));
        } else if (!configurations_.isEmpty()) {
            findOrAddConfiguration(solution_, name);
        }
    });
    return nullptr;
}

ProjectElement* TemplateExpander::import(const Element& element, ProjectElement&) {
    for (const xml::XMLNode* each = solution_.firstChild(); each; each = each->nextSibling()) count(1);
    projectSystem->insertSolutionLink(&solution_, element.text("name"), nullptr, nullptr);
    return nullptr;
}

/// Applies templates and what they inherit, each before the next. A name without a template is passed over,
/// and so is one that has been applied: a second time would change nothing.
void TemplateExpander::applyConfigurationTemplates(const QStringList& names) {
    QSet<QString> applied;
    QStringList pending(names.rbegin(), names.rend());
    while (!pending.isEmpty()) {
        const QString name = pending.takeLast();
        count(1);
        const Element* const element = configurationTemplates_.find(name);
        if (!element || applied.contains(name)) continue;
        applied.insert(name);
        const QStringList inherited = applyConfigurationTemplate(name, *element);
        pending.append(QStringList(inherited.rbegin(), inherited.rend()));
    }
}

/// Sets what the template says of its own configuration, and answers the names that it inherits.
QStringList TemplateExpander::applyConfigurationTemplate(const QString& name, const Element& element) {
    QStringList inherited;
    ProjectElement& configuration = findOrAddConfiguration(solution_, name);
    for (const xml::XMLNode* node = element.firstChild(); node; node = node->nextSibling()) {
        const Element* const child = xml::asElement(node);
        const QString key = child ? child->text("name") : QString();
        const QString value = child ? child->text("value") : QString();
        if (!isKey(key) || value.isEmpty()) continue;
        count(unitsOfPass);
        countText(value);
        const QString* const present = configuration.attributes.find(key);
        if (key == inheritedKey || !present) {
            projectSystem->setElementAttribute(&configuration, key, value);
        } else if (*present != value) {
            store(project_, name, key, value);
        }
        if (key != inheritedKey) continue;
        inherited += value.split(u';', Qt::SkipEmptyParts);
        inheritanceIsStale_ = true;
    }
    return inherited;
}

template <typename Visit>
void TemplateExpander::forEachConfiguration(const Element& element, const char* attribute, Visit visit) {
    if (configurations_.isEmpty())
        configurations_ = project_.attributes.value(u"configurations").split(u';', Qt::SkipEmptyParts);
    const QString text = element.text(attribute);
    if (configurations_.isEmpty() || !text.contains(configurationReference)) {
        visit(text, configurations_.value(0));
        return;
    }
    for (const QString& configuration : std::as_const(configurations_)) {
        count(unitsOfPass);
        const QString replaced = QString(text).replace(configurationReference, configuration);
        countText(replaced);
        visit(replaced, configuration);
    }
}

TemplateExpander::Children& TemplateExpander::childrenOf(ProjectElement& node) {
    const auto known = children_.find(&node);
    if (known != children_.end()) return *known;
    Children& children = children_[&node];
    for (ProjectElement* child = node.firstChildElement(); child; child = child->nextSiblingElement())
        addToChildren(children, *child);
    return children;
}

void TemplateExpander::addToChildren(Children& children, ProjectElement& child) {
    count(1);
    if (!child.isFile() && !child.isFolder()) return;
    ProjectElement*& entry = child.isFile() ? children.files[child.attributes.value(keys::fileName)]
                                            : children.folders[child.elementName()];
    if (!entry) entry = &child;
}

/// A new file can go into a folder of the node instead of the node itself.
ProjectElement& TemplateExpander::findOrAddFile(ProjectElement& node, const QString& fileName) {
    if (ProjectElement* const file = childrenOf(node).files.value(fileName)) return *file;
    if (!node.isFolder()) count(node.folders.size() * unitsOfFilter);
    ProjectElement* const file = projectSystem->addFile(&node, fileName);
    const auto parent = children_.find(file->parentElement());
    if (parent != children_.end()) addToChildren(*parent, *file);
    return *file;
}

void TemplateExpander::store(ProjectElement& node, const QString& configuration, const QString& key,
                             const QString& value) {
    ProjectElement& target = findOrAddConfiguration(node, configuration);
    count(target.attributes.size() / entriesOfUnit);
    countText(value);
    projectSystem->setElementAttribute(&target, key, value);
    if (key == inheritedKey) inheritanceIsStale_ = true;
    if (!projectSystem->pathsDependOn(key)) return;
    countNodes(node);
    projectSystem->invalidatePathsAt(&node);
}

ProjectElement& TemplateExpander::findOrAddConfiguration(ProjectElement& node, const QString& name) {
    ProjectElement* const present = node.configurations.value(name);
    if (present) return *present;
    count(node.configurations.size() / entriesOfUnit);
    return *projectSystem->createConfiguration(&node, name);
}

QString TemplateExpander::expanded(ProjectElement& node, const QString& configuration, const QString& text) {
    if (!text.contains(u'$')) return text;
    refreshInheritance();
    const MacroTable table = projectSystem->macroTable(&node, configuration);
    for (const QString& value : table) countText(value);
    count(static_cast<std::int64_t>(table.size()));
    QString result = macroEngine ? macroEngine->expand(table, text, true, true) : text;
    countText(result);
    return result;
}

/// What is looked up on the way must know what the template has made configurations inherit.
void TemplateExpander::refreshInheritance() {
    if (!std::exchange(inheritanceIsStale_, false)) return;
    for (const auto& [name, configuration] : solution_.configurations) {
        count(unitsOfPass);
        countText(configuration->attributes.value(inheritedKey));
    }
    rebuildInheritanceIndex(solution_);
}

void TemplateExpander::count(std::int64_t units) {
    if (!work_.addTemplateUnits(units)) refuse();
}

void TemplateExpander::countElement(const Element& element) {
    count(unitsOfPass);
    for (const xml::XMLAttribute& attribute : element.attributes())
        count(attribute.value.size() / charactersOfUnit);
}

/// What it takes to forget the paths at the node.
void TemplateExpander::countNodes(ProjectElement& node) {
    ProjectElement* const project = node.enclosingProject();
    forEachElement(project ? *project : node, [this](ProjectElement&) { count(1); });
}

void TemplateExpander::refuse() const {
    throw SolutionLoadError(project_.elementName(),
                            QStringLiteral("project template asks for too much work"));
}

}  // namespace project
