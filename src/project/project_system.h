#pragma once

#include "project/base/macro_engine.h"
#include "project/change_log.h"
#include "project/configurations.h"
#include "project/memory_segment.h"
#include "project/project_element.h"
#include "project/project_maps.h"
#include "project/property_lookup.h"
#include "project/property_value.h"
#include "project/solution_loader.h"
#include "project/solution_saver.h"
#include "properties/build_kind.h"
#include "properties/property_value_group_file.h"
#include "properties/schema.h"

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace build {
class Builder;
class Idler;
}  // namespace build

namespace project {

using properties::BuildFlags;
using properties::BuildKind;
using properties::PropertyClass;

/// A refusal that a host shows to the user.
struct Refusal {
    QString title;
    QString text;
};

/// The project engine: it owns the tree of the open solution and the property schema, and every operation on
/// them is one of its members. This class holds what does not depend on a tool chain; a host derives from
/// `StandardProjectSystem`.
///
/// Nodes that operations take and answer belong to the tree unless an operation says otherwise. The virtual
/// operations answer a null node with a null text, false or an empty list. Only loads and saves throw, and
/// say so. One thread only; signals are direct calls.
class ProjectSystem : public QObject {
    Q_OBJECT

public:
    /// `fileTypes` and `projectTypes` are the values that the rows `file_type` and `project_type` offer.
    ProjectSystem(const QStringList& fileTypes, const QStringList& projectTypes,
                  const QString& defaultTemplatesFile);
    ~ProjectSystem() override;

    // --- The tree, and what a host may vary ---

    /// Makes an empty solution of the name in `directory`, and the directory. The caller has closed any
    /// earlier one.
    virtual ProjectElement* newSolution(const QString& name, const QString& directory);
    /// Appends a project, with `project_directory` (made relative to the solution's) and `project_type` in
    /// "Common".
    virtual ProjectElement* newProject(ProjectElement* solution, const QString& name,
                                       const QString& directory, const QString& projectType);
    /// Destroys the tree and puts the engine back into the state in which it was made. Emits no signal.
    virtual void closeSolution();
    /// The tool options that apply to a node, for a view.
    virtual PropertyValueList propertyValues(ProjectElement* node, const QString& configuration);
    /// File, folder: the directory of their project. Project: its own. Solution: its absolute directory.
    /// Null: the root's.
    virtual QString projectDirectoryOf(ProjectElement* node);
    /// The type of a file node by its property, its name or its content; may be empty.
    virtual QString fileType(ProjectElement* node, const QString& configuration);
    /// The extensions of the tool chain with their dots; null means the tools' default.
    virtual QString objectExtension();
    virtual QString libraryExtension();
    virtual QString executableExtension();
    /// The templates file with system macros expanded.
    virtual QString templatesFilePath();
    /// ASCII text as text to show.
    virtual QString displayText(const char* text);
    /// Called when a load is complete.
    virtual void afterLoad();
    /// Appends the node's memory segments to `segments`; false when nothing describes them.
    virtual bool memorySegments(ProjectElement* node, const QString& configuration,
                                QList<MemorySegment>& segments);
    /// The target of this build of the system by name and by number.
    virtual QString platformName();
    virtual int targetNumber();
    /// Searches a readable file: as named, in `directory`, then in the include directories of the node. Empty
    /// when it is nowhere; null when it cannot be searched further for want of a node.
    virtual QString locateFile(const QString& directory, const QString& file, ProjectElement* node,
                               const QString& configuration);
    virtual QString objectFileName(ProjectElement* node, const QString& configuration, bool absolute);
    /// Appends what a build of the node reads: the entries of a dependency file, objects, libraries. With
    /// `withDependencies` a link also reads what the projects make that it depends on.
    virtual void inputsOfNode(ProjectElement* node, const QString& configuration, bool absolute, bool noUnity,
                              bool withDependencies, QStringList& inputs);
    /// Appends the files that a build of the node leaves.
    virtual void outputFiles(ProjectElement* node, const QString& configuration, QStringList& list);
    virtual bool isExecutableProject(ProjectElement* node, const QString& configuration);
    virtual bool hasOutput(ProjectElement* node, const QString& configuration);
    virtual bool hasBuiltOutput(ProjectElement* node, const QString& configuration);
    virtual bool isCompiled(ProjectElement* node, const QString& configuration);
    virtual bool isExcludedFromBuild(ProjectElement* node, const QString& configuration);
    /// A host's own text; null here.
    virtual QString hostText();
    virtual QStringList baseCodeModelArguments(ProjectElement* node, const QString& configuration);
    /// The compiler arguments by which a code model reads the node.
    virtual QStringList codeModelArguments(ProjectElement* node, const QString& configuration);
    virtual void baseCodeModelArgumentsInto(ProjectElement* node, const QString& configuration,
                                            QStringList& list);
    /// How many progress steps `buildNode` will report.
    virtual int countBuildSteps(ProjectElement* node, const QString& configuration, std::uint32_t flags);
    /// True when the node did something, or would have; false when it is up to date or failed.
    virtual bool buildNode(ProjectElement* node, const QString& configuration, build::Builder* builder,
                           build::Idler* idler, std::uint32_t flags);
    /// Adds a host's macros to the table of a node.
    virtual void addMacros(ProjectElement* node, const QString& configuration, MacroTable& table);
    /// Whether the folder is compiled as one source file.
    virtual bool isUnityFolder(ProjectElement* node, const QString& configuration, bool noUnity);
    virtual bool hostPredicate();
    virtual void hostAction();
    /// Whether the file type is "C" or "C++".
    virtual bool isCLikeType(const QString& fileType);
    /// Runs the static analyzer on the file.
    virtual void analyzeFile(ProjectElement* node, const QString& configuration, build::Builder* builder);
    /// The absolute path of a file in the intermediate directory of the node.
    virtual QString intermediateFilePath(ProjectElement* node, const QString& configuration,
                                         const QString& fileName);
    /// The file into which a compiler writes what an object depends on.
    virtual QString dependencyFileName(ProjectElement* node, const QString& configuration,
                                       const QString& objectName, bool absolute);
    /// Brings the tool options of the node's project into the schema, unless they are there; see
    /// properties/tool_description.h. Options that users put into a list by hand move to their own
    /// properties.
    virtual void loadToolDescriptions(ProjectElement* node, const QString& configuration);

    // --- Property groups (property_groups.h) ---

    /// The property groups file of the node, or null when it can't be read; owned by the engine.
    properties::PropertyValueGroupFile* propertyGroupFile(ProjectElement* node, const QString& configuration);
    /// The elements of a tag inside the groups that are chosen for the node, in file order.
    QList<const xml::XMLElement*> propertyGroupElements(ProjectElement* node, const QString& configuration,
                                                        const QByteArray& tag);
    /// The class of a key at a node: of the schema, of the project's tool description, or of its property
    /// groups file. Null when there is none.
    const PropertyClass* propertyClassAt(ProjectElement* node, const QString& configuration,
                                         const QString& key);

    // --- What a view offers (property_lists.cpp) ---

    /// The tool options that apply to the node and the properties of the node itself.
    PropertyValueList nodePropertyValues(ProjectElement* node, const QString& configuration);
    /// What one configuration child of the node stores.
    PropertyValueList storedPropertyValues(ProjectElement* node, ProjectElement* configurationChild);

    // --- Building the tree ---

    /// The direct child folder of the name, or a new one; a non-empty `filter` is stored on a new one.
    ProjectElement* findOrAddFolder(ProjectElement* parent, const QString& name, const QString& filter);
    /// The new one, without looking for another of its name.
    ProjectElement* addFolder(ProjectElement* parent, const QString& name, const QString& filter);
    /// Appends a configuration without looking for an existing one.
    ProjectElement* createConfiguration(ProjectElement* parent, const QString& name);
    /// A new file in `parent`, or, unless that is a folder, in the first child folder whose filter takes its
    /// extension.
    ProjectElement* addFile(ProjectElement* parent, const QString& fileName);
    /// The one way in which a child enters the tree; takes over `child`.
    void appendChild(ProjectElement* parent, ProjectElement* child);
    /// Takes `node` out of the tree; without `destroy` it then belongs to the caller.
    void removeElement(ProjectElement* node, bool destroy = true);
    /// Destroys the configuration of that name on every node of the subtree.
    void removeConfiguration(ProjectElement* node, const QString& name);
    /// Refuses a name that a sibling has.
    std::optional<Refusal> rename(ProjectElement* node, const QString& newName);
    /// Stores a value on the node itself, not in a configuration. A null node is ignored.
    void setElementAttribute(ProjectElement* node, const QString& name, const QString& value);
    /// Fills a dynamic folder from the disk; see dynamic_folder.h. What does not exist or cannot be read
    /// yields nothing. False when there is more to look at than a load may (LoadWork), and then a part is
    /// there.
    bool populateDynamicFolder(ProjectElement* folder);
    /// Makes `folder` a dynamic folder of that description (lists are joined by ";") and fills it afresh:
    /// its children go, but for its configurations. Answers what `populateDynamicFolder` does.
    bool setDynamicFolder(ProjectElement* folder, const QString& path, const QString& filter, bool recurse,
                          const QString& exclude);
    /// Makes a dynamic folder a plain one that keeps what it found, and with `recursive` those below it.
    void clearDynamicFolder(ProjectElement* folder, bool recursive);
    /// Rebuilds the tables of project and solution names.
    void rebuildProjectMaps(Progress* progress = nullptr);

    // --- Finding nodes ---

    ProjectElement* findFolder(ProjectElement* parent, const QString& name) const;
    /// By the `file_name` as stored, among the direct children.
    ProjectElement* findFile(ProjectElement* parent, const QString& fileName) const;
    /// Depth first, the node before its children.
    ProjectElement* findElement(ProjectElement* node, const QString& name) const;
    bool hasChildNamed(ProjectElement* node, const QString& name) const;
    /// From the nearest solution outwards, by qualified name.
    ProjectElement* findProject(ProjectElement* node, const QString& qualifiedName) const;
    /// The projects in `node`, its following siblings and below them.
    int countProjects(ProjectElement* node) const;
    /// The files below `node`, not looking into projects.
    int countFiles(ProjectElement* node) const;

    // --- Values ---

    QString propertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                          const QString& configuration, PropertyTrace* trace = nullptr) const;
    QString localPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                               const QString& configuration) const;
    void setPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                          const QString& configuration, const QString& value);
    void clearPropertyValue(ProjectElement* node, const PropertyClass* propertyClass,
                            const QString& configuration);
    /// The entries of the value in force, each behind `prefix`, with macros expanded if `expand` is set.
    QStringList propertyValueList(const QString& prefix, ProjectElement* node,
                                  const PropertyClass* propertyClass, const QString& configuration,
                                  bool expand, bool escaped);
    /// Adds a name to `project_dependencies` unless it is there.
    void addProjectDependency(ProjectElement* project, const QString& configuration, const QString& name);
    /// The same for many names at the cost of one.
    void addProjectDependencies(ProjectElement* project, const QString& configuration,
                                const QStringList& names);
    /// Adds `text` behind a ";" to what this place stores; no test for duplicates.
    void appendPropertyValue(ProjectElement* node, const QString& configuration,
                             const PropertyClass* propertyClass, const QString& text);
    /// Forgets the paths of a project and its files after a change of what they depend on, and tells of it.
    void invalidatePaths(ProjectElement* project);
    /// The same for the project around `node`, or where there is none, for all below it.
    void invalidatePathsAt(ProjectElement* node);
    /// Whether the paths of a project and its files depend on what is stored under the key.
    bool pathsDependOn(const QString& key) const;
    const ChangeLog& changeLog() const { return changeLog_; }

    // --- Configurations ---

    QStringList inheritedConfigurations(ProjectElement* solution, const QString& configuration) const;
    void setInheritedConfigurations(ProjectElement* node, const QString& configuration,
                                    const QStringList& names);
    /// The names offered for a node, sorted, never none; `flags` are ConfigurationFlags.
    QStringList configurationNames(ProjectElement* node, unsigned flags);
    /// Renames throughout the subtree; false when the new name is taken at `solution`.
    bool renameConfiguration(ProjectElement* solution, const QString& oldName, const QString& newName);
    /// Makes a configuration of a solution from what a user typed.
    std::optional<Refusal> addConfiguration(ProjectElement* solution, const QString& name, bool isPrivate);

    // --- Macros ---

    /// The macros of a node in a configuration. A null node has those that need none.
    MacroTable macroTable(ProjectElement* node, const QString& configuration);
    /// `text` with the macros of the node; a text without "$" costs nothing.
    QString expandMacros(ProjectElement* node, const QString& configuration, const QString& text);
    /// The same for a list, at the cost of one table.
    QStringList expandMacroList(ProjectElement* node, const QString& configuration, const QStringList& list);
    /// `text` with the macros of the user and the environment alone.
    QString expandGlobalMacros(const QString& text) const;
    /// The value in force as the path of a file: macros expanded, a relative name taken from the working
    /// directory if there is such a file, else from the directory of the project. Empty when no value is set.
    QString expandedFilePath(ProjectElement* node, const PropertyClass* propertyClass,
                             const QString& configuration);
    QString expandProperty(ProjectElement* node, const PropertyClass* propertyClass,
                           const QString& configuration);
    /// The same with further macros, which overrule those of the node.
    QString expandPropertyWith(ProjectElement* node, const PropertyClass* propertyClass,
                               const QString& configuration, const MacroTable& macros);

    // --- Files ---

    /// Closes what is open and loads a solution with all that it links. Handlers and progress may be null.
    /// With `checkTarget`, refuses a solution for another target. Throws SolutionLoadError, and then no
    /// solution is open.
    void loadSolution(const QString& fileName, ProjectFileNotFoundErrorHandler* notFoundHandler,
                      TemplateNotFoundErrorHandler* templateHandler, Progress* progress, bool checkTarget);
    /// Reads one file, and what it links, into a tree that belongs to the caller; see SolutionLoader.
    std::unique_ptr<ProjectElement> loadSolutionFile(const QString& baseDirectory, const QString& fileName,
                                                     ProjectFileNotFoundErrorHandler* notFoundHandler,
                                                     Progress* progress, const QString& macros);
    /// Links a file into `solution`, and answers the linked root: the one that is there, where the file is
    /// linked already. Throws SolutionLoadError.
    ProjectElement* insertSolutionLink(ProjectElement* solution, const QString& fileName,
                                       ProjectFileNotFoundErrorHandler* notFoundHandler, Progress* progress);
    /// Writes the solution node to its file, in tree order or sorted; see solution_saver.h.
    bool saveSolution(ProjectElement* solution, bool sorted);
    /// Writes every solution that has changed. Throws SolutionSaveError; a null handler answers no.
    void saveAllSolutions(ProjectFileSaveErrorHandler* handler);
    /// Whether the node or one below it is modified; linked solutions below it count with `includeLinks`.
    bool isModified(ProjectElement* node, bool includeLinks) const;
    /// Why the last save failed, as bytes.
    const QByteArray& saveErrorText() const { return saveErrorText_; }

    // --- State ---

    /// The root of the open solution, or null.
    ProjectElement* solution() const { return solution_.get(); }
    const properties::Schema& schema() const { return *schema_; }
    properties::Schema& schema() { return *schema_; }
    /// The names of all projects seen from the root, and of all solutions, both sorted.
    QStringList solutionProjectNames() const;
    QStringList solutionNames() const { return solutionIndex_.keys(); }
    const QMap<QString, ProjectElement*>& solutionIndex() const { return solutionIndex_; }
    const QString& solutionFileName() const { return solutionFileName_; }
    const QString& templatesFile() const { return templatesFile_; }
    /// When the solution was loaded.
    const QDateTime& loadTime() const { return loadTime_; }

    /// Whether a load runs the commands that a solution asks for.
    bool runsLoadCommands = true;

    bool buildFailed = false;
    bool buildTerminated = false;

Q_SIGNALS:
    void solutionLoaded();
    void fileSaved(project::Path filename);
    void configurationsChanged(project::ProjectElement* solution);
    void projectChanged(project::ProjectElement* project);
    void propertyChanged(project::ProjectElement* node, QString configuration,
                         const properties::PropertyClass* propertyClass);

protected:
    /// For classes that are about to go; see ChangeLog.
    template <typename Test>
    void detachChanges(Test isGoing) {
        changeLog_.detach(isGoing);
    }
    void forgetChanges() { changeLog_.clear(); }

private:
    QString expandWith(const MacroTable& table, const QString& text) const;
    void addGroupMacros(ProjectElement& node, const QString& configuration, MacroTable& table);
    void expandTemplatedProjects(TemplateNotFoundErrorHandler* handler, Progress* progress);
    void populateDynamicFolders(Progress* progress);
    /// What the load made of the tree counts as what is stored.
    void markClean();
    void recordChange(ProjectElement* node, const PropertyClass* propertyClass, const QString& configuration,
                      const QString& oldText, bool nodeWasModified, bool configurationWasModified);

    std::unique_ptr<properties::Schema> schema_;
    std::unique_ptr<ProjectElement> solution_;
    std::vector<std::unique_ptr<ProjectElement>>
        leftOpen_;  // what newSolution replaced; it may still be pointed at
    QMap<QString, ProjectElement*> solutionIndex_;
    QString solutionFileName_;
    QString templatesFile_;
    QString defaultTemplatesFile_;
    QStringList filesUnderLoad_;
    LoadWork* loadWork_ = nullptr;           ///< while `loadSolution` runs
    QList<ProjectElement*> templatedNodes_;  ///< of the last load, to be expanded
    QList<ProjectElement*> dynamicFolders_;  ///< of the last load, to be filled
    QDateTime loadTime_;
    properties::PropertyValueGroupFiles propertyGroupFiles_;
    ChangeLog changeLog_;
    QByteArray saveErrorText_;
};

/// The one engine of the process, set before anything else runs; not owned.
extern ProjectSystem* projectSystem;

}  // namespace project
