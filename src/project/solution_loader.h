#pragma once

#include "project/load_work.h"
#include "project/progress.h"
#include "project/project_element.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <exception>
#include <memory>
#include <vector>

/// Reading solution files into the tree, with what they link and the commands that they run.
namespace project {

class ProjectSystem;
class ProjectTemplates;

/// Why a solution could not be loaded.
class SolutionLoadError : public std::exception {
public:
    SolutionLoadError(const QString& fileName, const QString& message);
    /// `line` counts from 0.
    SolutionLoadError(const QString& fileName, const QString& message, int line, int column);

    const QString& fileName() const { return fileName_; }
    bool hasPosition() const { return hasPosition_; }
    const QString& message() const { return message_; }
    int line() const { return line_; }
    int column() const { return column_; }
    const char* what() const noexcept override { return bytes_.constData(); }

private:
    QString fileName_;
    bool hasPosition_;
    QString message_;
    int line_ = 0;
    int column_ = 0;
    QByteArray bytes_;
};

/// Asked when a solution file does not exist.
class ProjectFileNotFoundErrorHandler {
public:
    virtual ~ProjectFileNotFoundErrorHandler() = default;
    /// True to go on anyway.
    virtual bool goOn(const QString& fileName) = 0;
};

/// Asked when a project names no template that is known.
class TemplateNotFoundErrorHandler {
public:
    virtual ~TemplateNotFoundErrorHandler() = default;
    /// True when `templateName` now is the one to use for the project.
    virtual bool chooseTemplate(const ProjectTemplates& templates, const QString& projectName,
                                QString& templateName) = 0;
};

/// What a load leaves for its caller beside the tree.
struct LoadFindings {
    QList<ProjectElement*> templatedNodes;  ///< to be expanded from templates
    QList<ProjectElement*> dynamicFolders;  ///< to be filled from the disk
    QString templatesFile;                  ///< the last that a solution named, expanded; may be empty
};

/// One load: a solution file with all that it links. After an error nothing of it is left.
class SolutionLoader {
public:
    /// Solutions nest so deep, whether they are linked or stand in one file.
    static constexpr int maxSolutionDepth = 100;

    /// `underLoad` are the absolute paths of the files into which this one is being linked, outermost first.
    /// `work` outlives the object. Handler and progress may be null.
    SolutionLoader(ProjectSystem& engine, LoadWork& work, const QStringList& underLoad,
                   ProjectFileNotFoundErrorHandler* notFoundHandler, Progress* progress);

    /// Reads one file, and through itself what it links. A relative name is taken against `baseDirectory`
    /// unless that is empty or there is no such file. `macros` is a "name=value" list for the pre-processor;
    /// null for none. Throws SolutionLoadError.
    std::unique_ptr<ProjectElement> loadFile(const QString& baseDirectory, const QString& fileName,
                                             const QString& macros);

    const LoadFindings& findings() const { return findings_; }

private:
    struct File {
        QString name;  ///< as errors tell it
        QString path;  ///< absolute
        QString directory;
    };

    File find(const QString& baseDirectory, const QString& fileName) const;
    std::unique_ptr<ProjectElement> parse(const File& file, const QString& macros);
    void runLoadCommands(const ProjectElement& root, const File& file);
    void setTemplatesFile(const ProjectElement& root, const File& file);
    void readNodes(ProjectElement& root, const File& file);
    void readNode(ProjectElement& node);
    static void indexChildren(ProjectElement& parent);
    ProjectElement* readLink(ProjectElement& import, const File& file);
    void enterEnvironment(ProjectElement& root);

    ProjectSystem& engine_;
    LoadWork& work_;
    QStringList underLoad_;
    qsizetype outermost_;  ///< how many files were under load before
    ProjectFileNotFoundErrorHandler* notFoundHandler_;
    Progress* progress_;
    LoadFindings findings_;
};

/// Marks a solution that was just loaded as a link, whose file the linking file spells `storedName`.
void makeLink(ProjectElement& root, const QString& storedName, bool canModify);

/// Throws SolutionLoadError when the solution is made for another target than `systemTarget`.
void checkTarget(const ProjectElement& root, int systemTarget, const QString& fileName);

}  // namespace project
