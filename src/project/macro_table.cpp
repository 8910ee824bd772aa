// The macros of a node, and texts expanded with them.
#include "project/base/macro_engine.h"
#include "project/project_system.h"
#include "project/property_groups.h"

#include <algorithm>

namespace project {

namespace {

/// The names of the folders from the root down to the node, joined by "/".
QString folderPath(ProjectElement* node) {
    QStringList names;
    for (; node; node = node->parentElement())
        if (node->isFolder()) names.prepend(node->elementName());
    return names.join(u'/');
}

void addProjectMacros(MacroTable& table, ProjectElement& project) {
    project.resolvePaths(commonConfiguration);
    table.insert(QStringLiteral("ProjectDir"), project.directory);
    table.insert(QStringLiteral("ProjectName"), project.elementName());
}

void addSolutionMacros(MacroTable& table, const Path& file) {
    table.insert(QStringLiteral("SolutionDir"), file.dirPath(true));
    table.insert(QStringLiteral("SolutionName"), file.baseName(false));
    table.insert(QStringLiteral("SolutionFileName"), file.fileName());
    table.insert(QStringLiteral("SolutionPath"), file.absFilePath());
    table.insert(QStringLiteral("SolutionExt"), file.extension(true));
}

void addInputMacros(MacroTable& table, const Path& file) {
    table.insert(QStringLiteral("InputDir"), file.dirPath(true));
    table.insert(QStringLiteral("InputName"), file.baseName(true));
    table.insert(QStringLiteral("InputFileName"), file.fileName());
    table.insert(QStringLiteral("InputExt"), file.extension(false));
    table.insert(QStringLiteral("InputPath"), file.absFilePath());
}

void addNodeMacros(MacroTable& table, ProjectElement& node, const QString& configuration) {
    table.insert(QStringLiteral("ProjectNodeName"), node.elementName());
    ProjectElement* const parent = node.parentElement();
    if (parent && parent->isFolder()) table.insert(QStringLiteral("FolderName"), parent->elementName());
    table.insert(QStringLiteral("FolderPath"), folderPath(&node));
    if (ProjectElement* const project = node.enclosingProject()) addProjectMacros(table, *project);
    if (ProjectElement* const solution = node.enclosingSolution()) addSolutionMacros(table, solution->path);
    if (!node.isProject() && !node.isFolder() && !node.isFile()) return;
    node.resolvePaths(configuration);
    if (!node.isProject()) addInputMacros(table, node.path);
    table.insert(QStringLiteral("RelInputPath"), node.resolvedFileName);
    table.insert(QStringLiteral("RelInputDir"),
                 node.fileNameIsRelative ? Path(node.resolvedFileName).dirPath() : QStringLiteral("."));
}

}  // namespace

MacroTable ProjectSystem::macroTable(ProjectElement* node, const QString& configuration) {
    const auto& general = schema().general;
    const auto valueOf = [&](const PropertyClass* propertyClass) {
        return propertyValue(node, propertyClass, configuration);
    };
    MacroTable table = MacroEngine::parseMacros(expandGlobalMacros(valueOf(general.macros)));
    if (node) addNodeMacros(table, *node, configuration);
    table.insert(QStringLiteral("Configuration"), configuration);
    table.insert(QStringLiteral("OBJ"), objectExtension());
    table.insert(QStringLiteral("EXE"), executableExtension());
    table.insert(QStringLiteral("LIB"), libraryExtension());
    table.insert(QStringLiteral("PackageExt"), QStringLiteral("qxPackage"));
    if (node) addGroupMacros(*node, configuration, table);
    addMacros(node, configuration, table);

    // Each of these can use those before it.
    const auto enter = [&](const char* name, const PropertyClass* propertyClass, const char* whenEmpty) {
        const QString value = expandWith(table, valueOf(propertyClass));
        table.insert(QString::fromLatin1(name), value.isEmpty() ? QString::fromLatin1(whenEmpty) : value);
        return table.value(QString::fromLatin1(name));
    };
    enter("IntDir", general.build_intermediate_directory, ".");
    const QString rootDirectory = enter("RootOutDir", general.build_root_output_directory, "");
    const QString directory = enter("OutDir", general.build_output_directory, ".");
    QString relative;
    if (!rootDirectory.isEmpty() && relativePath(directory, rootDirectory, relative))
        table.insert(QStringLiteral("RootRelativeOutDir"), relative);
    enter("ToolChainDir", general.build_toolchain_directory, "");
    return table;
}

QString ProjectSystem::expandWith(const MacroTable& table, const QString& text) const {
    return macroEngine ? macroEngine->expand(table, text, true, true) : text;
}

QString ProjectSystem::expandMacros(ProjectElement* node, const QString& configuration, const QString& text) {
    return macroEngine && text.contains(u'$') ? expandWith(macroTable(node, configuration), text) : text;
}

QString ProjectSystem::expandGlobalMacros(const QString& text) const {
    return expandWith({}, text);
}

QString ProjectSystem::expandedFilePath(ProjectElement* node, const PropertyClass* propertyClass,
                                        const QString& configuration) {
    return projectFilePath(*this, node, expandProperty(node, propertyClass, configuration));
}

QStringList ProjectSystem::expandMacroList(ProjectElement* node, const QString& configuration,
                                           const QStringList& list) {
    const auto holdsReference = [](const QString& entry) { return entry.contains(u'$'); };
    if (!macroEngine || std::none_of(list.begin(), list.end(), holdsReference)) return list;
    const MacroTable table = macroTable(node, configuration);
    QStringList expanded;
    for (const QString& entry : list) expanded.append(expandWith(table, entry));
    return expanded;
}

QString ProjectSystem::expandProperty(ProjectElement* node, const PropertyClass* propertyClass,
                                      const QString& configuration) {
    return expandMacros(node, configuration, propertyValue(node, propertyClass, configuration));
}

QString ProjectSystem::expandPropertyWith(ProjectElement* node, const PropertyClass* propertyClass,
                                          const QString& configuration, const MacroTable& macros) {
    return expandWith(MacroEngine::mergeMacros(macroTable(node, configuration), macros),
                      propertyValue(node, propertyClass, configuration));
}

}  // namespace project
