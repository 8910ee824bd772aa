// Setting, clearing and asking the texts that the tree stores.
#include "project/project_system.h"
#include "project/tree_walk.h"

#include <QSet>

namespace project {

QString ProjectSystem::propertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                                     const QString& configuration, PropertyTrace* trace) const {
    return lookUpProperty(node, *propertyClass, configuration, trace);
}

QString ProjectSystem::localPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                                          const QString& configuration) const {
    return node ? localValue(node, propertyClass->name, configuration) : QString();
}

void ProjectSystem::setPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                                     const QString& configuration, const QString& value) {
    const bool nodeWasModified = node->modified;
    ProjectElement* child = node->configurations.value(configuration);
    if (!child) child = createConfiguration(node, configuration);
    const QString oldText = child->attributes.value(propertyClass->name);
    const bool childWasModified = child->modified;
    child->attributes.insert(propertyClass->name, storedText(value));
    child->modified = true;
    node->modified = nodeWasModified;
    recordChange(node, propertyClass, configuration, oldText, nodeWasModified, childWasModified);
}

void ProjectSystem::clearPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                                       const QString& configuration) {
    const QString oldText = localPropertyValue(node, propertyClass, configuration);
    const bool nodeWasModified = node->modified;
    bool childWasModified = false;
    if (ProjectElement* const child = node->configurations.value(configuration)) {
        childWasModified = child->modified;
        child->attributes.remove(propertyClass->name);
        child->modified = true;
        // A solution's configurations stay even when empty: they define which ones there are.
        if (child->attributes.size() == 1 && !node->isSolution()) removeElement(child);
    }
    recordChange(node, propertyClass, configuration, oldText, nodeWasModified, childWasModified);
}

void ProjectSystem::recordChange(ProjectElement* node, const PropertyClass* propertyClass,
                                 const QString& configuration, const QString& oldText, bool nodeWasModified,
                                 bool configurationWasModified) {
    // What a load changes counts as what is stored.
    if (!loadWork_)
        changeLog_.add(node, propertyClass, configuration, oldText, nodeWasModified,
                       configurationWasModified);
    Q_EMIT propertyChanged(node, configuration, propertyClass);
}

QStringList ProjectSystem::propertyValueList(const QString& prefix, ProjectElement* node,
                                             const PropertyClass* propertyClass, const QString& configuration,
                                             bool expand, bool escaped) {
    QStringList entries = listEntries(propertyValue(node, propertyClass, configuration), escaped);
    if (expand) entries = expandMacroList(node, configuration, entries);
    if (!prefix.isEmpty())
        for (QString& entry : entries) entry.prepend(prefix);
    return entries;
}

void ProjectSystem::addProjectDependency(ProjectElement* project, const QString& configuration,
                                         const QString& name) {
    addProjectDependencies(project, configuration, {name});
}

void ProjectSystem::addProjectDependencies(ProjectElement* project, const QString& configuration,
                                           const QStringList& names) {
    const PropertyClass* const dependencies = schema().general.project_dependencies;
    QString text = localPropertyValue(project, dependencies, configuration);
    const QStringList present = text.split(u';');
    QSet<QString> known(present.begin(), present.end());
    bool changed = false;
    for (const QString& name : names) {
        if (known.contains(name)) continue;
        if (!text.isEmpty()) text += u';';
        text += name;
        for (const QString& entry : name.split(u';')) known.insert(entry);
        changed = true;
    }
    if (changed) setPropertyValue(project, dependencies, configuration, text);
}

void ProjectSystem::appendPropertyValue(ProjectElement* node, const QString& configuration,
                                        const PropertyClass* propertyClass, const QString& text) {
    const QString present = localPropertyValue(node, propertyClass, configuration);
    setPropertyValue(node, propertyClass, configuration, present.isEmpty() ? text : present + u';' + text);
}

void ProjectSystem::invalidatePaths(ProjectElement* project) {
    if (!project) return;
    forEachElement(*project, [&](ProjectElement& node) {
        if (&node == project || node.isFile() || node.isFolder()) node.pathValid = false;
        return &node == project || node.isFolder();
    });
    Q_EMIT projectChanged(project);
}

bool ProjectSystem::pathsDependOn(const QString& key) const {
    const auto& general = schema().general;
    return key == general.project_directory->name || key == general.macros->name;
}

void ProjectSystem::invalidatePathsAt(ProjectElement* node) {
    if (ProjectElement* const project = node->enclosingProject()) return invalidatePaths(project);
    forEachElement(*node, [this](ProjectElement& below) {
        if (below.isProject()) invalidatePaths(&below);
        return !below.isProject();
    });
}

}  // namespace project
