#include "project/template_expander.h"

#include "project/project_system.h"
#include "project/property_groups.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace project {

namespace {

const QString configurationReference = QStringLiteral("$(Configuration)");
const QString inheritedKey = QStringLiteral("inherited_configurations");

QString textOf(const xml::XMLElement& element, const char* attribute) {
    return QString::fromUtf8(element.attribute(attribute));
}

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

TemplateExpander::TemplateExpander(const ProjectTemplateNodeList& configurationTemplates, TemplateWork& work,
                                   ProjectElement& solution, ProjectElement& project,
                                   const QStringList& configurations)
    : configurationTemplates_(configurationTemplates),
      work_(work),
      solution_(solution),
      project_(project),
      configurations_(configurations) {}

void TemplateExpander::expand(const Element& templateElement) {
    store(project_, commonConfiguration, projectSystem->schema().general.project_type->name,
          textOf(templateElement, "type"));
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
    count(TemplateWork::unitsOfPass);
    for (const ActionRow& row : actionRows)
        if (element.tagName() == row.tag) return (this->*row.act)(element, node);
    return nullptr;
}

ProjectElement* TemplateExpander::enterFolder(const Element& element, ProjectElement& node) {
    const QString name = textOf(element, "name");
    const QString filter = textOf(element, "filter");
    if (ProjectElement* const folder = findChild(node, ProjectElement::Kind::Folder, name)) {
        const QString& key = projectSystem->schema().general.filter->name;
        if (!filter.isEmpty() && localValue(folder, key, commonConfiguration).isNull())
            store(*folder, commonConfiguration, key, filter);
        return folder;
    }
    if (!element.hasAttribute("path")) return projectSystem->addFolder(&node, name, filter);
    if (element.hasAttribute("choose")) return nullptr;
    ProjectElement* const folder = projectSystem->addFolder(&node, name, QString());
    projectSystem->setDynamicFolder(folder, textOf(element, "path"), filter, element.hasAttribute("recurse"),
                                    textOf(element, "exclude"));
    return folder;
}

ProjectElement* TemplateExpander::enterFile(const Element& element, ProjectElement& node) {
    QString name = textOf(element, "name");
    if (!isWord(textOf(element, "expand"), u"no")) name = expanded(node, commonConfiguration, name);
    if (element.hasAttribute("source")) return addSourceFile(element, node, name);
    ProjectElement* const file = findChild(node, ProjectElement::Kind::File, name);
    return file ? file : projectSystem->addFile(&node, name);
}

ProjectElement* TemplateExpander::addSourceFile(const Element& element, ProjectElement& node,
                                                const QString& name) {
    if (!isWord(project_.attributes.value(u"with_source"), u"yes")) return nullptr;
    const QString source = textOf(element, "source");
    if (ProjectElement* const file = findChild(node, ProjectElement::Kind::File, source)) return file;
    ProjectElement* const file = projectSystem->addFile(&node, source);
    projectSystem->setElementAttribute(file, keys::name, name);
    return file;
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
    const QString key = textOf(element, "name");
    if (!isKey(key) || !localValue(&node, key, configuration).isNull()) return;
    QString value = textOf(element, "value");
    if (value.isEmpty()) value = textOf(element, "value_win32");
    if (isWord(textOf(element, "expand"), u"yes")) value = expanded(node, configuration, value);
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
    const QString key = textOf(element, "name");
    QString value = localValue(&node, key, configuration);
    if (value.isNull()) value = textOf(element, "value");
    refreshInheritance();
    const properties::PropertyValueGroupFile* const file =
        projectSystem->propertyGroupFile(&node, configuration);
    const properties::PropertyValueGroupClass* const group = file ? file->find(key) : nullptr;
    if (group) PropertyValueGroupValue(group, configuration, &node).setValue(value);
}

ProjectElement* TemplateExpander::addConfiguration(const Element& element, ProjectElement&) {
    forEachConfiguration(element, "name", [&](const QString& name, const QString& configuration) {
        if (name.isEmpty()) return;
        if (configurationTemplates_.find(name)) {
            applyConfigurationTemplates({name});
        } else if (element.hasAttribute("inherited_configurations")) {
            QString inherited = textOf(element, "inherited_configurations");
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
    projectSystem->insertSolutionLink(&solution_, textOf(element, "name"), nullptr, nullptr);
    return nullptr;
}

/// Applies templates and what they inherit, each before the next. A name without a template is passed over.
void TemplateExpander::applyConfigurationTemplates(const QStringList& names) {
    QStringList pending(names.rbegin(), names.rend());
    while (!pending.isEmpty()) {
        const QString name = pending.takeLast();
        count(1);
        const Element* const element = configurationTemplates_.find(name);
        if (!element || applied_.contains(name)) continue;
        applied_.insert(name);
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
        const QString key = child ? textOf(*child, "name") : QString();
        const QString value = child ? textOf(*child, "value") : QString();
        if (!isKey(key) || value.isEmpty()) continue;
        count(TemplateWork::unitsOfPass);
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
    const QString text = textOf(element, attribute);
    if (configurations_.isEmpty() || !text.contains(configurationReference)) {
        visit(text, configurations_.value(0));
        return;
    }
    for (const QString& configuration : std::as_const(configurations_)) {
        count(TemplateWork::unitsOfPass);
        visit(QString(text).replace(configurationReference, configuration), configuration);
    }
}

/// The direct child of the kind: a folder by its name, a file by its stored file name.
ProjectElement* TemplateExpander::findChild(ProjectElement& node, ProjectElement::Kind kind,
                                            const QString& name) {
    std::int64_t looks = 0;
    ProjectElement* child = node.firstChildElement();
    for (; child; child = child->nextSiblingElement(), ++looks) {
        if (child->kind != kind) continue;
        const bool found = kind == ProjectElement::Kind::File
                               ? child->attributes.value(keys::fileName) == name
                               : child->elementName() == name;
        if (found) break;
    }
    count(looks);
    return child;
}

void TemplateExpander::store(ProjectElement& node, const QString& configuration, const QString& key,
                             const QString& value) {
    projectSystem->setElementAttribute(&findOrAddConfiguration(node, configuration), key, value);
    if (key == inheritedKey) inheritanceIsStale_ = true;
}

ProjectElement& TemplateExpander::findOrAddConfiguration(ProjectElement& node, const QString& name) {
    ProjectElement* const present = node.configurations.value(name);
    return present ? *present : *projectSystem->createConfiguration(&node, name);
}

QString TemplateExpander::expanded(ProjectElement& node, const QString& configuration, const QString& text) {
    if (!text.contains(u'$')) return text;
    refreshInheritance();
    return projectSystem->expandMacros(&node, configuration, text);
}

/// What is looked up on the way must know what the template has made configurations inherit.
void TemplateExpander::refreshInheritance() {
    if (std::exchange(inheritanceIsStale_, false)) rebuildInheritanceIndex(solution_);
}

void TemplateExpander::count(std::int64_t units) {
    work_.add(units);
    if (work_.isTooMuch())
        throw SolutionLoadError(project_.elementName(),
                                QStringLiteral("project template asks for too much work"));
}

}  // namespace project
