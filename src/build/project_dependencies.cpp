#include "build/project_dependencies.h"

#include <QRegExp>
#include <QSet>

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

}  // namespace

QStringList dependencyNames(const NodeProperties& project) {
    QString text = project.value(project.general().project_dependencies);
    text.remove(u'\r').remove(u'\n');
    QStringList names;
    for (const QString& name : text.split(u';', Qt::SkipEmptyParts)) {
        if (name.contains(u'*')) {
            names += matchingProjects(project.node(), name);
        } else {
            names.append(name);
        }
    }
    return names;
}

QList<ProjectElement*> withDependencies(const NodeProperties& project) {
    QList<ProjectElement*> projects{project.node()};
    QSet<ProjectElement*> known{project.node()};
    for (qsizetype i = 0; i < projects.size(); ++i) {
        const NodeProperties next(project.engine(), projects[i], project.configuration());
        for (const QString& name : dependencyNames(next)) {
            ProjectElement* const dependency = project.engine().findProject(projects[i], name);
            if (!dependency || known.contains(dependency)) continue;
            known.insert(dependency);
            projects.append(dependency);
        }
    }
    return projects;
}

}  // namespace build
