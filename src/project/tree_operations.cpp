// How nodes come into the tree, leave it, and are found in it.
#include "project/dynamic_folder.h"
#include "project/project_system.h"
#include "project/tree_walk.h"

#include <QDir>
#include <QRegularExpression>

namespace project {

namespace {

const QString filterKey = QStringLiteral("filter");
const QString solutionExtension = QStringLiteral(".qxProject");

bool entersProjectMaps(const ProjectElement& node) {
    return node.isSolution() || node.isProject();
}

/// The first direct child that satisfies `test`, or null.
template <typename Test>
ProjectElement* firstChildWhere(const ProjectElement& parent, Test test) {
    ProjectElement* child = parent.firstChildElement();
    while (child && !test(*child)) child = child->nextSiblingElement();
    return child;
}

/// Takes a configuration that has left `parent` out of its map; another child of that name takes its place.
void forgetConfiguration(ProjectElement& parent, ProjectElement& configuration) {
    const auto isEntry = [&](const auto& entry) { return entry.value == &configuration; };
    const auto entry = std::find_if(parent.configurations.begin(), parent.configurations.end(), isEntry);
    if (entry == parent.configurations.end()) return;
    const QString name = entry->key;
    parent.configurations.remove(name);
    const auto hasName = [&](ProjectElement& child) {
        return child.isConfiguration() && child.elementName() == name;
    };
    if (ProjectElement* const other = firstChildWhere(parent, hasName))
        parent.configurations.insert(name, other);
}

}  // namespace

ProjectElement* ProjectSystem::newSolution(const QString& name, const QString& directory) {
    const QString filePath = directory + u'/' + name + solutionExtension;
    auto created = std::make_unique<ProjectElement>(QStringLiteral("solution"));
    created->attributes.insert(keys::name, name);
    created->attributes.insert(keys::version, QStringLiteral("2"));
    created->modified = true;
    created->path.setFile(filePath);
    created->pathValid = true;
    if (created->path.exists()) created->solution->lastModified = created->path.lastModified();
    makeDirectoryFor(filePath);
    if (solution_) leftOpen_.push_back(std::move(solution_));
    solution_ = std::move(created);
    solutionFileName_ = filePath;
    rebuildProjectMaps();
    return solution();
}

ProjectElement* ProjectSystem::newProject(ProjectElement* solution, const QString& name,
                                          const QString& directory, const QString& projectType) {
    auto* const project = new ProjectElement(QStringLiteral("project"));
    project->attributes.insert(keys::name, name);
    project->modified = true;
    appendChild(solution, project);
    if (!enterAppendedProject(*project, solutionIndex_)) rebuildProjectMaps();
    ProjectElement* const common = createConfiguration(project, commonConfiguration);
    QString stored = directory;
    if (!directory.isEmpty() && !relativePath(solution->path.dirPath(true), directory, stored))
        stored = directory;
    common->attributes.insert(schema().general.project_directory->name, storedText(stored));
    common->attributes.insert(schema().general.project_type->name, storedText(projectType));
    return project;
}

ProjectElement* ProjectSystem::findOrAddFolder(ProjectElement* parent, const QString& name,
                                               const QString& filter) {
    ProjectElement* const existing = findFolder(parent, name);
    return existing ? existing : addFolder(parent, name, filter);
}

ProjectElement* ProjectSystem::addFolder(ProjectElement* parent, const QString& name, const QString& filter) {
    auto* const folder = new ProjectElement(QStringLiteral("folder"));
    folder->attributes.insert(keys::name, name);
    folder->modified = true;
    appendChild(parent, folder);
    if (!filter.isEmpty())
        setElementAttribute(createConfiguration(folder, commonConfiguration), filterKey, filter);
    return folder;
}

ProjectElement* ProjectSystem::createConfiguration(ProjectElement* parent, const QString& name) {
    auto* const configuration = new ProjectElement(QStringLiteral("configuration"));
    configuration->attributes.insert(keys::name, name);
    configuration->modified = true;
    appendChild(parent, configuration);
    return configuration;
}

ProjectElement* ProjectSystem::addFile(ProjectElement* parent, const QString& fileName) {
    static const QRegularExpression separators(QStringLiteral("[,;]"));
    ProjectElement* target = parent;
    if (!parent->isFolder() && !parent->folders.isEmpty()) {
        const QString extension = Path(fileName).extension(false).toLower();
        for (ProjectElement* folder : std::as_const(parent->folders)) {
            if (folder->attributes.contains(dynamicFolderKeys::path)) continue;  // not stored there
            QString filter = folder->attributes.value(filterKey);
            if (filter.isNull()) filter = propertyValue(folder, schema().general.filter, commonConfiguration);
            if (!filter.split(separators, Qt::SkipEmptyParts).contains(extension)) continue;
            target = folder;
            break;
        }
    }
    auto* const file = new ProjectElement(QStringLiteral("file"));
    appendChild(target, file);
    file->attributes.insert(keys::fileName, fileName);
    file->modified = true;
    return file;
}

void ProjectSystem::appendChild(ProjectElement* parent, ProjectElement* child) {
    parent->appendChild(child);
    if (child->isConfiguration()) parent->configurations.insert(child->elementName(), child);
    if (child->isFolder()) parent->folders.append(child);
    parent->modified = true;
}

void ProjectSystem::removeElement(ProjectElement* node, bool destroy) {
    const bool entersMaps = entersProjectMaps(*node);
    if (node == solution()) {
        static_cast<void>(solution_.release());
        solutionIndex_.clear();
    }
    std::unique_ptr<ProjectElement> taken(node);
    if (ProjectElement* const parent = node->parentElement()) {
        parent->removeChild(node);
        if (node->isConfiguration()) forgetConfiguration(*parent, *node);
        if (node->isFolder()) parent->folders.removeOne(node);
        parent->modified = true;
    }
    if (!destroy) static_cast<void>(taken.release());
    taken.reset();
    if (entersMaps) rebuildProjectMaps();
}

void ProjectSystem::removeConfiguration(ProjectElement* top, const QString& name) {
    forEachElement(*top, [&](ProjectElement& node) {
        for (ProjectElement* child = node.firstChildElement(); child;) {
            ProjectElement* const next = child->nextSiblingElement();
            if (child->isConfiguration() && child->elementName() == name) removeElement(child);
            child = next;
        }
        return !node.isConfiguration();
    });
}

std::optional<Refusal> ProjectSystem::rename(ProjectElement* node, const QString& newName) {
    ProjectElement* const parent = node->parentElement();
    const auto taken = [&](ProjectElement& sibling) {
        return &sibling != node && sibling.elementName() == newName;
    };
    if (parent && firstChildWhere(*parent, taken))
        return Refusal{QStringLiteral("Rename error"), newName + QStringLiteral(" is already in use")};
    if (parent && node->isConfiguration()) {
        parent->configurations.remove(node->elementName());
        parent->configurations.insert(newName, node);
    }
    setElementAttribute(node, keys::name, newName);
    if (entersProjectMaps(*node)) rebuildProjectMaps();
    return std::nullopt;
}

void ProjectSystem::setElementAttribute(ProjectElement* node, const QString& name, const QString& value) {
    if (!node) return;
    node->attributes.insert(name, storedText(value));
    node->modified = true;
}

void ProjectSystem::rebuildProjectMaps(Progress* progress) {
    if (solution()) project::rebuildProjectMaps(*solution(), solutionIndex_, progress);
}

ProjectElement* ProjectSystem::findFolder(ProjectElement* parent, const QString& name) const {
    for (ProjectElement* folder : std::as_const(parent->folders))
        if (folder->elementName() == name) return folder;
    return nullptr;
}

ProjectElement* ProjectSystem::findFile(ProjectElement* parent, const QString& fileName) const {
    return firstChildWhere(*parent, [&](const ProjectElement& child) {
        return child.isFile() && child.attributes.value(keys::fileName) == fileName;
    });
}

ProjectElement* ProjectSystem::findElement(ProjectElement* node, const QString& name) const {
    ProjectElement* found = nullptr;
    forEachElement(*node, [&](ProjectElement& element) {
        if (!found && element.elementName() == name) found = &element;
        return !found;
    });
    return found;
}

bool ProjectSystem::hasChildNamed(ProjectElement* node, const QString& name) const {
    return firstChildWhere(*node, [&](ProjectElement& child) { return child.elementName() == name; }) !=
           nullptr;
}

ProjectElement* ProjectSystem::findProject(ProjectElement* node, const QString& qualifiedName) const {
    for (; node; node = node->parentElement()) {
        if (!node->isSolution()) continue;
        if (ProjectElement* const project = node->solution->projectIndex.value(qualifiedName)) return project;
    }
    return nullptr;
}

int ProjectSystem::countProjects(ProjectElement* node) const {
    return project::countProjects(node);
}

int ProjectSystem::countFiles(ProjectElement* top) const {
    int count = 0;
    forEachElement(*top, [&](ProjectElement& node) {
        if (&node != top && node.isFile()) ++count;
        return &node == top || !node.isProject();
    });
    return count;
}

}  // namespace project
