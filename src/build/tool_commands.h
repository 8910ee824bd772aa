#pragma once

#include "build/build_system.h"
#include "build/node_properties.h"

#include <QString>
#include <QStringList>

/// The commands of the tool chain. Everything is compiled, assembled, linked and archived through one driver
/// program, `$(AtelisDir)/bin/cc`; options for the tools behind it carry "-Wc,", "-Wa," or "-Wl,". A command
/// is a list of arguments, which nothing quotes.
namespace build {

/// What a step has to make, and of what.
struct ToolRequest {
    BuildKind kind;
    QString targetName;  ///< as the properties spell it
    QString targetPath;  ///< in full
    QStringList inputs;  ///< a source file; of a link or an archive, objects and libraries
    bool generateDependencies = true;
};

/// Makes one command and hands it to the builder. Where a file that the command needs can't be read or
/// written, the builder gets an error and no command.
class ToolCommand {
public:
    /// Everything outlives the object.
    ToolCommand(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                const ToolRequest& request, Builder& builder);
    void run();

private:
    void runCompilation();
    void runLink();
    void runArchive();
    void runStep(const QString& title);

    void addCommonHead();
    bool addIndirectFile(const QString& stepTitle);
    void addDependencyFile();
    void addGroupOptions();
    void addSections();
    bool addCompilerOptions();
    void addLayout();
    void addPlacement();
    void addLinkerSwitches();
    bool addLinkerLists();

    void add(const char* argument) { arguments_.append(QString::fromLatin1(argument)); }
    void add(const QString& first, const QString& second) { arguments_ << first << second; }
    void addIf(bool condition, const char* argument) {
        if (condition) add(argument);
    }
    QString compileTitle() const;

    BuildSystem& engine_;
    const ToolRequest& request_;
    Builder& builder_;
    const NodeProperties properties_;
    const QString projectDirectory_;
    QStringList arguments_;
};

/// The file in which the driver finds the inputs of a link or an archive.
QString indirectFilePath(project::ProjectSystem& engine, ProjectElement* node, const QString& configuration,
                         const QString& targetName);
/// The format of a further output file that a link makes; empty for none.
QString outputFormat(const NodeProperties& properties);
/// The code of the printf support that a link asks for.
QString printfCode(const NodeProperties& properties);
/// The same for scanf.
QString scanfCode(const NodeProperties& properties);

}  // namespace build
