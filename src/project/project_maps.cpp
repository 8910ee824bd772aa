#include "project/project_maps.h"

#include "project/configurations.h"
#include "project/progress.h"
#include "project/tree_walk.h"

#include <vector>

namespace project {

namespace {

/// Calls `visit(solution, key)` for every solution from which the project can be seen. `around` holds them,
/// innermost last.
template <typename Visit>
void forEachKey(ProjectElement& project, const std::vector<ProjectElement*>& around, Visit visit) {
    const QString name = project.elementName();
    QString chain;
    for (auto solution = around.rbegin(); solution != around.rend(); ++solution) {
        visit(**solution, chain.isEmpty() ? name : name + u'(' + chain + u')');
        if (solution + 1 == around.rend()) break;
        const QString solutionName = (*solution)->elementName();
        chain = chain.isEmpty() ? solutionName : solutionName + u',' + chain;
    }
}

/// The solutions from `node` upwards, innermost last.
std::vector<ProjectElement*> solutionsFrom(ProjectElement* node) {
    std::vector<ProjectElement*> around;
    for (; node; node = node->parentElement())
        if (node->isSolution()) around.insert(around.begin(), node);
    return around;
}

void clearIndexes(ProjectElement& root) {
    forEachElement(root, [](ProjectElement& node) {
        if (node.isSolution()) node.solution->projectIndex.clear();
    });
}

}  // namespace

void rebuildProjectMaps(ProjectElement& root, QMap<QString, ProjectElement*>& solutions, Progress* progress) {
    solutions.clear();
    clearIndexes(root);
    const int total = progress ? countProjects(root.firstChildElement()) : 0;
    int done = 0;
    const auto enterSolution = [&](ProjectElement& solution) {
        solutions.insert(solution.elementName(), &solution);
        rebuildInheritanceIndex(solution);
    };
    // The solutions around the node, innermost last, so that nobody climbs a deep tree for them.
    std::vector<ProjectElement*> around;
    walkElements(
        root,
        [&](ProjectElement& node) {
            if (node.isProject()) {
                forEachKey(node, around, [&](ProjectElement& solution, const QString& key) {
                    solution.solution->projectIndex.insert(key, &node);
                });
                if (!progress) return;
                progress->setProgress(++done, total);
                progress->line(QStringLiteral("Mapping project ") + node.elementName());
            } else if (node.isSolution()) {
                if (&node != &root) enterSolution(node);
                around.push_back(&node);
            }
        },
        [&](ProjectElement& node) {
            if (node.isSolution()) around.pop_back();
        });
    enterSolution(root);
}

qint64 mappedNamesLength(ProjectElement& root, ProjectElement* around) {
    qint64 total = 0;
    std::vector<qint64> chain;  // the length of each solution's name, innermost last
    for (ProjectElement* solution : solutionsFrom(around))
        chain.push_back(solution->elementName().size() + 1);
    walkElements(
        root,
        [&](ProjectElement& node) {
            if (node.isSolution()) chain.push_back(node.elementName().size() + 1);
            if (!node.isProject()) return;
            qint64 length = node.elementName().size() + 1;
            for (auto solution = chain.rbegin(); solution != chain.rend(); ++solution) {
                total += length;
                length += *solution;
            }
        },
        [&](ProjectElement& node) {
            if (node.isSolution()) chain.pop_back();
        });
    return total;
}

bool enterAppendedProject(ProjectElement& project, QMap<QString, ProjectElement*>& solutions) {
    // Behind a project of the root nothing follows; elsewhere a later project may own the same name.
    const bool belowRoot = project.parentElement() && !project.parentElement()->parentElement();
    bool isLast = true;
    const std::vector<ProjectElement*> around = solutionsFrom(project.parentElement());
    forEachKey(project, around, [&](ProjectElement& solution, const QString& key) {
        if (!belowRoot && solution.solution->projectIndex.contains(key)) isLast = false;
    });
    if (!isLast) return false;
    forEachKey(project, around, [&](ProjectElement& solution, const QString& key) {
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
