#include "build/project_dependencies.h"

#include <QRegExp>
#include <QSet>

#include <utility>

namespace build {

namespace {

QStringList matchingProjects(ProjectElement* project, const QString& pattern) {
    ProjectElement* const solution = project->enclosingSolution();
    if (!solution) return {};
    const QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::Wildcard);
    QStringList names;
    const auto& index = solution->solution->projectIndex;
    for (auto entry = index.constBegin(); entry != index.constEnd(); ++entry)
        if (entry.value() != project && expression.exactMatch(entry.key())) names.append(entry.key());
    return names;
}

/// The entries of the property: names, and patterns with "*".
QStringList dependencyEntries(const NodeProperties& project) {
    QString text = project.value(project.general().project_dependencies);
    text.remove(u'\r').remove(u'\n');
    return text.split(u';', Qt::SkipEmptyParts);
}

QStringList namesOf(ProjectElement* project, const QString& entry) {
    return entry.contains(u'*') ? matchingProjects(project, entry) : QStringList{entry};
}

}  // namespace

QStringList dependencyNames(const NodeProperties& project) {
    QStringList names;
    for (const QString& entry : dependencyEntries(project)) names += namesOf(project.node(), entry);
    return names;
}

QList<ProjectElement*> withDependencies(const NodeProperties& project) {
    QList<ProjectElement*> projects{project.node()};
    QSet<ProjectElement*> known{project.node()};
    // What a pattern stands for in a solution is found once; all of it is known then.
    QSet<std::pair<ProjectElement*, QString>> patterns;
    for (qsizetype i = 0; i < projects.size(); ++i) {
        const NodeProperties next(project.engine(), projects[i], project.configuration());
        for (const QString& entry : dependencyEntries(next)) {
            if (entry.contains(u'*')) {
                const std::pair pattern(projects[i]->enclosingSolution(), entry);
                if (patterns.contains(pattern)) continue;
                patterns.insert(pattern);
            }
            for (const QString& name : namesOf(projects[i], entry)) {
                ProjectElement* const dependency = project.engine().findProject(projects[i], name);
                if (!dependency || known.contains(dependency)) continue;
                known.insert(dependency);
                projects.append(dependency);
            }
        }
    }
    return projects;
}

}  // namespace build
