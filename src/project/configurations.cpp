#include "project/configurations.h"

#include "project/project_system.h"

#include <QSet>

#include <vector>

namespace project {

namespace {

const QString inheritedKey = QStringLiteral("inherited_configurations");

/// Renames at one node; false when the name is taken there.
bool renameAt(ProjectElement& node, const QString& oldName, const QString& newName) {
    if (node.configurations.contains(newName)) return false;
    node.modified = true;
    for (const auto& [name, child] : node.configurations) {
        const QString* const inherited = child->attributes.find(inheritedKey);
        if (!inherited) continue;
        QStringList names = listEntries(*inherited, false);
        for (QString& entry : names)
            if (entry == oldName) entry = newName;
        child->attributes.insert(inheritedKey, storedText(names.join(u';')));
        child->modified = true;
    }
    if (ProjectElement* const renamed = node.configurations.value(oldName)) {
        node.configurations.remove(oldName);
        renamed->attributes.insert(keys::name, newName);
        renamed->modified = true;
        node.configurations.insert(newName, renamed);
    }
    if (node.isSolution()) rebuildInheritanceIndex(node);
    return true;
}

bool isHidden(const ProjectElement& configuration) {
    return configuration.attributes.value(keys::hidden) == u"Yes";
}

}  // namespace

void rebuildInheritanceIndex(ProjectElement& solution) {
    auto& index = solution.solution->inheritanceIndex;
    index.clear();
    for (const auto& [name, child] : solution.configurations)
        if (const QString* const names = child->attributes.find(inheritedKey))
            index.insert(name, listEntries(*names, false));
}

bool renameConfigurationBelow(ProjectElement* top, const QString& oldName, const QString& newName) {
    if (oldName == newName) return true;
    if (newName == commonConfiguration) return false;
    if (!renameAt(*top, oldName, newName)) return false;
    std::vector<ProjectElement*> pending{top};
    while (!pending.empty()) {
        ProjectElement* const node = pending.back();
        pending.pop_back();
        for (ProjectElement* child = node->firstChildElement(); child; child = child->nextSiblingElement())
            if (!child->isConfiguration() && renameAt(*child, oldName, newName)) pending.push_back(child);
    }
    return true;
}

QStringList ProjectSystem::inheritedConfigurations(ProjectElement* solution,
                                                   const QString& configuration) const {
    return solution && solution->isSolution() ? solution->solution->inheritanceIndex.value(configuration)
                                              : QStringList();
}

void ProjectSystem::setInheritedConfigurations(ProjectElement* node, const QString& configuration,
                                               const QStringList& names) {
    ProjectElement* const owner = node ? node->enclosingSolution() : nullptr;
    if (!owner || inheritedConfigurations(owner, configuration) == names) return;
    ProjectElement* child = owner->configurations.value(configuration);
    if (!child) child = createConfiguration(owner, configuration);
    child->attributes.insert(inheritedKey, storedText(names.join(u';')));
    child->modified = true;
    rebuildInheritanceIndex(*owner);
    Q_EMIT configurationsChanged(owner);
}

QStringList ProjectSystem::configurationNames(ProjectElement* node, unsigned flags) {
    QSet<QString> names;
    if (flags & WithCommon) names.insert(commonConfiguration);
    ProjectElement* above = node ? node->enclosingSolution() : solution();
    for (; above; above = above->parentElement()) {
        if (!above->isSolution()) continue;
        for (const auto& [name, child] : above->configurations) {
            if (names.contains(name)) continue;
            const bool offered =
                isHidden(*child)
                    ? (flags & PrivateConfigurations) != 0
                    : (flags & PublicConfigurations) != 0 && name != commonConfiguration &&
                          propertyValue(above, schema().general.Platform, name) == platformName();
            if (offered) names.insert(name);
        }
    }
    if (names.isEmpty()) names.insert(commonConfiguration);
    QStringList sorted(names.begin(), names.end());
    sorted.sort();
    return sorted;
}

bool ProjectSystem::renameConfiguration(ProjectElement* solution, const QString& oldName,
                                        const QString& newName) {
    return renameConfigurationBelow(solution, oldName, newName);
}

std::optional<Refusal> ProjectSystem::addConfiguration(ProjectElement* solution, const QString& name,
                                                       bool isPrivate) {
    const QString wanted = name.simplified();
    for (const QChar character : wanted) {
        if (QStringLiteral("/<>:\"\\|?*").contains(character))
            return Refusal{
                QStringLiteral("Invalid Configuration"),
                QStringLiteral("The character '%1' is not allowed in configuration names").arg(character)};
    }
    if (wanted == commonConfiguration || solution->configurations.contains(wanted))
        return Refusal{QStringLiteral("Configuration exists"),
                       QStringLiteral("The configuration '%1' already exists in solution %2")
                           .arg(wanted, solution->elementName())};
    ProjectElement* const child = createConfiguration(solution, wanted);
    if (isPrivate) setElementAttribute(child, keys::hidden, QStringLiteral("Yes"));
    return std::nullopt;
}

}  // namespace project
