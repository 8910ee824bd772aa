#pragma once

#include "expressions/memorymap/memory_map_cache.h"
#include "project/project_system.h"
#include "properties/tool_description.h"

namespace project {

/// The project engine with its tool chain: compiler, assembler, linker, archiver and debugger. Still
/// abstract: a host says where a code model starts from.
class StandardProjectSystem : public ProjectSystem {
    Q_OBJECT

public:
    /// `genericOptionsFile` is the default of `build_generic_options_file_name`; `loadFileFormats` are the
    /// names that the load file types offer behind "Detect".
    StandardProjectSystem(const QString& genericOptionsFile, const QStringList& loadFileFormats,
                          const QString& defaultTemplatesFile);
    ~StandardProjectSystem() override;

    void closeSolution() override;
    PropertyValueList propertyValues(ProjectElement* node, const QString& configuration) override;
    bool memorySegments(ProjectElement* node, const QString& configuration,
                        QList<MemorySegment>& segments) override;
    QString locateFile(const QString& directory, const QString& file, ProjectElement* node,
                       const QString& configuration) override;
    QString objectFileName(ProjectElement* node, const QString& configuration, bool absolute) override;
    void outputFiles(ProjectElement* node, const QString& configuration, QStringList& list) override;
    bool hasOutput(ProjectElement* node, const QString& configuration) override;
    bool isCompiled(ProjectElement* node, const QString& configuration) override;
    bool isExcludedFromBuild(ProjectElement* node, const QString& configuration) override;
    QStringList baseCodeModelArguments(ProjectElement* node, const QString& configuration) override = 0;
    QStringList codeModelArguments(ProjectElement* node, const QString& configuration) override;
    bool isUnityFolder(ProjectElement* node, const QString& configuration, bool noUnity) override;
    QString intermediateFilePath(ProjectElement* node, const QString& configuration,
                                 const QString& fileName) override;
    /// Adds the path of the static analyzer, unless a table has it.
    void addMacros(ProjectElement* node, const QString& configuration, MacroTable& table) override;
    /// Moves options to what the description has for them. Whoever is told of that cannot make another
    /// description come.
    void loadToolDescriptions(ProjectElement* node, const QString& configuration) override;

    /// The tool options in force, of the project for which they were loaded last.
    const properties::ToolDescription& toolDescription() const { return toolDescription_; }
    /// The memory map of a file, or null when it can't be read; see MemoryMapCache.
    expressions::MemoryMap* memoryMap(const QString& path, const QString& macros, bool preProcess);

    // --- What a view offers: each appends the classes of its tool ---

    using PropertyClassList = properties::PropertyClassList;
    virtual void addCCompilerProperties(ProjectElement* node, const QString& configuration,
                                        PropertyClassList& classes);
    virtual void addCppCompilerProperties(ProjectElement* node, const QString& configuration,
                                          PropertyClassList& classes);
    virtual void addAssemblerProperties(ProjectElement* node, const QString& configuration,
                                        PropertyClassList& classes);
    virtual void addLinkerProperties(ProjectElement* node, const QString& configuration,
                                     PropertyClassList& classes);
    virtual void addArchiverProperties(ProjectElement* node, const QString& configuration,
                                       PropertyClassList& classes);
    virtual void addProjectTypeProperties(ProjectElement* node, const QString& configuration,
                                          PropertyClassList& classes, const QString& projectType);
    virtual void addDebugProperties(ProjectElement* node, const QString& configuration,
                                    PropertyClassList& classes);
    /// The options of the C++ compiler, for a project that has C++ files.
    void addCppProjectOptions(ProjectElement* node, const QString& configuration, PropertyClassList& classes);
    virtual void addHostProperties(ProjectElement* node, const QString& configuration,
                                   PropertyClassList& classes);

    // --- Building: what a node becomes is answered here, the work is done by `build::BuildSystem` ---

    /// What a build does with the node itself.
    BuildKind classifyNode(ProjectElement* node, const QString& configuration);

    /// The file that a step of that kind makes of the node, as its properties spell it or absolute; null when
    /// it makes none.
    virtual QString outputFileName(BuildKind kind, ProjectElement* node, const QString& configuration,
                                   bool absolute);
    /// The register definitions of the node, or null; owned by the engine.
    virtual expressions::MemoryMap* registerDefinitions(ProjectElement* node, const QString& configuration);
    /// The map file that a link of `target` writes, in `out`; false when it writes none.
    virtual bool mapFileName(ProjectElement* node, const QString& configuration, const QString& target,
                             QString& out);
    virtual bool hostToolPredicate();
    /// Hands the builder the command of the tool chain's driver that makes the target, and reports what
    /// stands in its way. `targetName` is the target as the properties spell it, `targetPath` its full path;
    /// `inputs` are one source file, or the object files and libraries of a link or an archive.
    virtual void runTool(ProjectElement* node, const QString& configuration, BuildKind kind,
                         const QString& targetName, const QString& targetPath, const QStringList& inputs,
                         build::Builder* builder, bool generateDependencies);
    /// Whether no property that a step of `kind` depends on has changed at the node since `time`. A null
    /// builder goes with `quiet`.
    virtual bool propertiesUnchangedSince(ProjectElement* node, const QString& configuration,
                                          const QDateTime& time, BuildKind kind, build::Builder* builder,
                                          bool quiet);
    /// The files that the object depends on beside its source, as its compiler wrote them down; relative ones
    /// below `directory`, when one is given.
    virtual QStringList readDependencyFile(ProjectElement* node, const QString& configuration,
                                           const QString& directory, const QString& objectName);
    /// Appends further files of a target that a cleaning deletes.
    virtual void extraOutputFiles(ProjectElement* node, const QString& configuration, BuildKind kind,
                                  const QString& target, QStringList& out);
    /// Files that a link takes beside its objects.
    virtual QStringList additionalLinkerInputs(ProjectElement* node, const QString& configuration);
    /// Appends the options of a target processor.
    virtual void addTargetOptions(ProjectElement* node, const QString& configuration, BuildKind kind,
                                  QStringList& arguments);
    /// What an executable project contributes to the link of a project that depends on it.
    virtual QString dependentExecutableInput(ProjectElement* node, const QString& configuration,
                                             bool absolute);
    /// Whether links use a linker script without being told to.
    virtual bool hasDefaultLinkerScript(ProjectElement* node, const QString& configuration, QString& out);
    /// Whether the subtree holds a C++ file that is not excluded from the build.
    virtual bool isCppProject(ProjectElement* node, const QString& configuration);

private:
    properties::ToolDescription toolDescription_;
    bool isMigrating_ = false;  ///< no other description comes meanwhile
    expressions::MemoryMapCache memoryMaps_;
};

}  // namespace project
