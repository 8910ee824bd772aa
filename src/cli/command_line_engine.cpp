#include "cli/command_line_engine.h"

#include "build/tool_commands.h"
#include "project/tree_walk.h"

namespace cli {

CommandLineEngine::CommandLineEngine() : BuildSystem(QString(), {}, QString()) {}

QString CommandLineEngine::objectExtension() {
    return QStringLiteral(".o");
}

QString CommandLineEngine::libraryExtension() {
    return QStringLiteral(".a");
}

QString CommandLineEngine::executableExtension() {
    return QStringLiteral(".elf");
}

void CommandLineEngine::extraOutputFiles(project::ProjectElement* node, const QString& configuration,
                                         project::BuildKind kind, const QString& target, QStringList& out) {
    if (kind != project::BuildKind::Link && kind != project::BuildKind::Archive) return;
    out.append(build::indirectFilePath(*this, node, configuration, target));
    const QString objects = expandProperty(node, schema().tools.external_objects_file_name, configuration);
    if (!objects.isEmpty()) out.append(project::resolvedPath(projectDirectoryOf(node), objects));
}

void CommandLineEngine::settleToolDescriptions(const QString& configuration) {
    project::forEachElement(*solution(), [&](project::ProjectElement& node) {
        if (node.isProject()) loadToolDescriptions(&node, configuration);
        return node.isSolution() || node.isFolder();
    });
    forgetChanges();
}

QStringList CommandLineEngine::baseCodeModelArguments(project::ProjectElement*, const QString&) {
    return {};
}

}  // namespace cli
