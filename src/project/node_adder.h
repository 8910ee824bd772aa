#pragma once

#include "project/project_element.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

namespace project {

class ProjectSystem;

/// Asks the user a question of yes or no.
class Prompt {
public:
    virtual ~Prompt() = default;
    virtual bool ask(const QString& title, const QString& heading, const QString& text) = 0;
};

/// Adds files and copies of nodes to the tree as a user does: it asks before it adds a file twice, and puts
/// files of special types to use. It remembers which files a project has, so it is made for one sequence of
/// additions, in one configuration, between which nothing else changes the tree.
class NodeAdder {
public:
    /// `macroNames` are those in terms of which file names may be stored; with none they are relative to the
    /// directory of the project. Everything but the texts outlives the object.
    NodeAdder(ProjectSystem& engine, const QString& configuration, Prompt& prompt,
              const QStringList& macroNames = {});

    /// Adds the file to a project or folder, and answers its node; null when it is there and is not to be
    /// there twice. `quiet` takes that for granted without asking.
    ProjectElement* addExistingFile(ProjectElement& target, const QString& path, bool quiet);

    /// Adds a copy of `source`, whose file names were taken against `sourceDirectory`, to `target`; a copy of
    /// a file goes beside a `target` that is a file. Answers the copy, or null when the user did not want it.
    ProjectElement* pasteNode(const ProjectElement& source, const QString& sourceDirectory,
                              ProjectElement& target);

    /// Whether the enclosing project of the node has the file.
    bool holdsFile(ProjectElement& node, const QString& path);

private:
    QString directoryOf(ProjectElement* project) const;
    QString storedName(const QString& path, ProjectElement& target) const;
    void offerUse(ProjectElement& file, const QString& path);
    ProjectElement* pasteFile(std::unique_ptr<ProjectElement> copy, const QString& sourceDirectory,
                              ProjectElement& target);
    void remember(ProjectElement& file);
    QSet<QString>& filesOf(ProjectElement& project);

    ProjectSystem& engine_;
    const QString configuration_;
    Prompt& prompt_;
    const QStringList macroNames_;
    QHash<ProjectElement*, QSet<QString>> files_;  // the keys of the paths in a project
};

/// Writes `file` in terms of a macro of the user's or the environment's, "$(NAME)/..."; false when it does
/// not lie in or below what the macro names.
bool abbreviatePath(const QString& macroName, const QString& file, QString& out);

}  // namespace project
