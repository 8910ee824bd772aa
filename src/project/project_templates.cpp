#include "project/project_templates.h"

#include "project/base/path.h"
#include "project/project_system.h"
#include "project/template_expander.h"

#include <QFileInfo>

#include <algorithm>

namespace project {

namespace {

const QString templateNameKey = QStringLiteral("template_name");
const QString templateConfigurationsKey = QStringLiteral("template_configurations");

bool isBelowConfigurations(const xml::XMLNode& node) {
    const xml::XMLElement* const parent = xml::asElement(node.parent());
    return parent && parent->tagName() == "configurations";
}

/// Takes an attribute off a node.
QString takeAttribute(ProjectElement& node, const QString& key) {
    QString value = node.attributes.value(key);
    node.attributes.remove(key);
    node.modified = true;
    return value;
}

SolutionLoadError tooManyFiles(const QString& path) {
    return {path, path + QStringLiteral(" is or stands for one template file too many")};
}

}  // namespace

void ProjectTemplateNodeList::sort() {
    std::reverse(entries_.begin(), entries_.end());
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const Entry& a, const Entry& b) { return a.name < b.name; });
}

const xml::XMLElement* ProjectTemplateNodeList::find(const QString& name) const {
    const auto place =
        std::lower_bound(entries_.begin(), entries_.end(), name,
                         [](const Entry& entry, const QString& wanted) { return entry.name < wanted; });
    return place != entries_.end() && place->name == name ? place->element : nullptr;
}

QStringList ProjectTemplateNodeList::names() const {
    QStringList names;
    for (const Entry& entry : entries_)
        if (names.isEmpty() || names.last() != entry.name) names.append(entry.name);
    return names;
}

ProjectTemplates::ProjectTemplates(const QString& files, LoadWork& work) : work_(work) {
    for (const QString& entry : files.split(u';', Qt::SkipEmptyParts)) {
        QStringList paths;
        if (!Path(entry).expandWildcards(paths)) throw tooManyFiles(entry);
        for (const QString& path : paths) read(path);
    }
    projectTemplates_.sort();
    configurationTemplates_.sort();
}

void ProjectTemplates::read(const QString& path) {
    if (!work_.addFile(QFileInfo(path).size())) throw tooManyFiles(path);
    files_.push_back(std::make_unique<ProjectTemplateFile>());
    ProjectTemplateFile& file = *files_.back();
    if (!file.parseRegularFile(path)) {
        file.setRoot(nullptr);
        return;
    }
    file.processConditionals(path, {}, false);
    if (const xml::XMLElement* const root = xml::asElement(file.root())) collect(*root);
}

/// Goes over all levels without recursion. A configuration template counts as added behind what is below it.
void ProjectTemplates::collect(const xml::XMLElement& top) {
    const xml::XMLNode* node = &top;
    while (node) {
        const xml::XMLElement* const element = xml::asElement(node);
        if (element && element->tagName() == "project")
            projectTemplates_.add(element->text("template_name"), element);
        const xml::XMLNode* next = node->firstChild();
        while (!next && node) {
            const xml::XMLElement* const left = xml::asElement(node);
            if (node != &top && left && isBelowConfigurations(*node))
                configurationTemplates_.add(left->text("name"), left);
            if (node == &top) return;
            next = node->nextSibling();
            if (!next) node = node->parent();
        }
        node = next;
    }
}

void ProjectTemplates::expandTemplate(ProjectElement& solution, ProjectElement& project,
                                      const xml::XMLElement& templateElement,
                                      const QStringList& configurations) {
    TemplateExpander expander(configurationTemplates_, work_, solution, project, configurations);
    expander.expand(templateElement);
}

namespace {

void expandProject(ProjectTemplates& templates, ProjectElement& project,
                   TemplateNotFoundErrorHandler* handler, Progress* progress) {
    const QString name = project.attributes.value(keys::name);
    const ProgressLevel level(progress, QStringLiteral("Expanding project ") + name, 0);
    QString templateName = takeAttribute(project, templateNameKey);
    const QString configurations = takeAttribute(project, templateConfigurationsKey);
    if (templateName.isEmpty() && !(handler && handler->chooseTemplate(templates, name, templateName)))
        throw SolutionLoadError(QStringLiteral("no template for project "), name);
    const xml::XMLElement* const element = templates.projectTemplates().find(templateName);
    if (!element) throw SolutionLoadError(templateName, QStringLiteral("project template not found"));
    templates.expandTemplate(*project.enclosingSolution(), project, *element,
                             configurations.split(u';', Qt::SkipEmptyParts));
}

}  // namespace

void ProjectSystem::expandTemplatedProjects(TemplateNotFoundErrorHandler* handler, Progress* progress) {
    if (templatedNodes_.isEmpty()) return;
    {
        const ProgressLevel level(progress, QStringLiteral("Expanding templated projects"), 0);
        ProjectTemplates templates(templatesFilePath(), *loadWork_);
        // A template can link a solution that has further templated projects.
        for (qsizetype place = 0; place < templatedNodes_.size(); ++place) {
            if (progress)
                progress->setProgress(static_cast<int>(place), static_cast<int>(templatedNodes_.size()));
            ProjectElement& node = *templatedNodes_[place];
            // What a configuration stores under the key is a property.
            if (!node.isConfiguration()) expandProject(templates, node, handler, progress);
        }
        templatedNodes_.clear();
    }
    markClean();
}

}  // namespace project
