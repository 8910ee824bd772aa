#include "project/project_maps.h"

#include "project/configurations.h"
#include "project/tree_walk.h"

namespace project {

namespace {

/// Calls `visit(solution, key)` for every solution from which the project can be seen.
template <typename Visit>
void forEachSolutionAround(ProjectElement& project, Visit visit) {
    const QString name = project.elementName();
    QString chain;
    for (ProjectElement* node = project.parentElement(); node; node = node->parentElement()) {
        if (!node->isSolution()) continue;
        visit(*node, chain.isEmpty() ? name : name + u'(' + chain + u')');
        chain = chain.isEmpty() ? node->elementName() : node->elementName() + u',' + chain;
    }
}

void clearIndexes(ProjectElement& root) {
    forEachElement(root, [](ProjectElement& node) {
        if (node.isSolution()) node.solution->projectIndex.clear();
    });
}

}  // namespace

void rebuildProjectMaps(ProjectElement& root, QMap<QString, ProjectElement*>& solutions,
                        MappingProgress* progress) {
    solutions.clear();
    clearIndexes(root);
    const int total = progress ? countProjects(root.firstChildElement()) : 0;
    int done = 0;
    const auto enterSolution = [&](ProjectElement& solution) {
        solutions.insert(solution.elementName(), &solution);
        rebuildInheritanceIndex(solution);
    };
    forEachElement(root, [&](ProjectElement& node) {
        if (node.isProject()) {
            forEachSolutionAround(node, [&](ProjectElement& solution, const QString& key) {
                solution.solution->projectIndex.insert(key, &node);
            });
            if (progress)
                progress->mapped(++done, total, QStringLiteral("Mapping project ") + node.elementName());
        } else if (node.isSolution() && &node != &root) {
            enterSolution(node);
        }
    });
    enterSolution(root);
}

bool enterAppendedProject(ProjectElement& project, QMap<QString, ProjectElement*>& solutions) {
    // Behind a project of the root nothing follows; elsewhere a later project may own the same name.
    const bool belowRoot = project.parentElement() && !project.parentElement()->parentElement();
    bool isLast = true;
    forEachSolutionAround(project, [&](ProjectElement& solution, const QString& key) {
        if (!belowRoot && solution.solution->projectIndex.contains(key)) isLast = false;
    });
    if (!isLast) return false;
    forEachSolutionAround(project, [&](ProjectElement& solution, const QString& key) {
        solution.solution->projectIndex.insert(key, &project);
        solutions.insert(solution.elementName(), &solution);
        rebuildInheritanceIndex(solution);
    });
    return true;
}

int countProjects(ProjectElement* node) {
    int count = 0;
    for (; node; node = node->nextSiblingElement())
        forEachElement(*node, [&](ProjectElement& element) { count += element.isProject() ? 1 : 0; });
    return count;
}

}  // namespace project
