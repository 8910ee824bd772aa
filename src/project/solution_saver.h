#pragma once

#include "project/project_element.h"

#include <QByteArray>
#include <QString>

#include <exception>

/// Writing solutions: the file form is the tree itself, one element a node, its attributes the node's.
namespace project {

/// A solution that could not be written, thrown by `saveAllSolutions`.
class SolutionSaveError : public std::exception {
public:
    explicit SolutionSaveError(ProjectElement* solution) : solution_(solution) {}
    ProjectElement* solution() const { return solution_; }
    const char* what() const noexcept override { return "solution could not be saved"; }

private:
    ProjectElement* solution_;
};

/// Asked when a solution could not be written.
class ProjectFileSaveErrorHandler {
public:
    virtual ~ProjectFileSaveErrorHandler() = default;
    /// True to try once more.
    virtual bool retry(ProjectElement* solution) = 0;

    bool continueWithoutSaving = false;  ///< for the caller, once the save is over
};

/// Writes the subtree of a solution node to `filePath`, replacing what is there; false with "couldn't write
/// PATH" in `errorText` when it cannot be written, and then what was there is still there. With `sorted`,
/// children stand in groups (configurations, folders, files, others), by name in each. A linked solution is
/// written as a plain one. Nodes lose an empty `Name`, and folders a `file_name`.
bool writeSolutionFile(ProjectElement& solution, const QString& filePath, bool sorted, QByteArray& errorText);

}  // namespace project
