#include "project/standard_project_system.h"

#include "project/property_groups.h"
#include "project/tool_option_migration.h"
#include "properties/lists.h"

#include <QFileInfo>
#include <QScopedValueRollback>

namespace project {

StandardProjectSystem::StandardProjectSystem(const QString& genericOptionsFile,
                                             const QStringList& loadFileFormats,
                                             const QString& defaultTemplatesFile)
    : ProjectSystem(properties::fileTypes(), properties::projectTypes(), defaultTemplatesFile),
      toolDescription_(schema()) {
    schema().addToolRows(loadFileFormats, genericOptionsFile);
}

StandardProjectSystem::~StandardProjectSystem() = default;

namespace {

/// "NAME ACCESS START SIZE" as a segment; false for any other number of words.
bool parseSegment(const QString& entry, MemorySegment& segment) {
    const QStringList words = entry.split(u' ', Qt::SkipEmptyParts);
    if (words.size() != 4) return false;
    const bool readOnly = words[1] == u"R" || words[1] == u"RX";
    segment.name = words[0];
    segment.access = readOnly ? MemorySegment::Access::ReadOnly : MemorySegment::Access::ReadWrite;
    segment.start = words[2].toUInt(nullptr, 0);
    segment.last = segment.start + words[3].toUInt(nullptr, 0) - 1;
    return true;
}

bool isReadableFile(const QString& path) {
    const QFileInfo file(path);
    return file.isFile() && file.isReadable();
}

/// The directory against which the include directories of a node are taken.
QString searchBase(ProjectElement& node, const QString& configuration) {
    ProjectElement* const project = node.enclosingProject();
    if (project || node.isSolution()) return projectSystem->projectDirectoryOf(project ? project : &node);
    node.resolvePaths(configuration);
    return node.directory;
}

void appendSegments(const expressions::MemoryMap& map, QList<MemorySegment>& segments) {
    for (const expressions::MemoryMapElement* element : map.memorySegments(true)) {
        if (element->size == 0) continue;
        const auto access = static_cast<MemorySegment::Access>(expressions::accessOf(*element));
        segments.append(
            {element->start, element->start + element->size - 1, access, 0, element->text("name")});
    }
}

}  // namespace

void StandardProjectSystem::closeSolution() {
    ProjectSystem::closeSolution();
    toolDescription_.unload();
}

void StandardProjectSystem::loadToolDescriptions(ProjectElement* node, const QString& configuration) {
    ProjectElement* const project = node ? node->enclosingProject() : nullptr;
    if (!project) return;
    const QString path =
        expandedFilePath(project, schema().tools.build_generic_options_file_name, configuration);
    if (path == toolDescription_.path() || isMigrating_) return;
    const QScopedValueRollback migrating(isMigrating_, true);
    detachChanges([this](const PropertyClass* changed) { return toolDescription_.owns(changed); });
    ToolOptionMigration migration(*this, *project, configuration);
    toolDescription_.load(path,
                          [&](const auto& option, const auto& tool) { migration.migrate(option, tool); });
    migration.storeBackups();
}

expressions::MemoryMap* StandardProjectSystem::memoryMap(const QString& path, const QString& macros,
                                                         bool preProcess) {
    return memoryMaps_.memoryMap(path, macros, preProcess);
}

bool StandardProjectSystem::memorySegments(ProjectElement* node, const QString& configuration,
                                           QList<MemorySegment>& segments) {
    if (!node) return false;
    loadToolDescriptions(node, configuration);
    const QString mapFile = expandedFilePath(node, schema().tools.linker_memory_map_file, configuration);
    if (!mapFile.isEmpty()) {
        const QString macros = expandProperty(node, schema().tools.linker_memory_map_macros, configuration);
        if (const expressions::MemoryMap* const map = memoryMap(mapFile, macros, true)) {
            appendSegments(*map, segments);
            return true;
        }
    }
    const QString text =
        expandProperty(node, schema().tools.linker_section_placements_segments, configuration);
    const QStringList entries = text.split(u';', Qt::SkipEmptyParts);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        MemorySegment segment{};
        if (parseSegment(*entry, segment)) segments.append(segment);
    }
    return !entries.isEmpty();
}

expressions::MemoryMap* StandardProjectSystem::registerDefinitions(ProjectElement* node,
                                                                   const QString& configuration) {
    if (!node) return nullptr;
    loadToolDescriptions(node, configuration);
    const QString file = expandedFilePath(node, schema().tools.debug_register_definition_file, configuration);
    return file.isEmpty() ? nullptr : memoryMap(file, QString(), true);
}

QString StandardProjectSystem::locateFile(const QString& directory, const QString& file, ProjectElement* node,
                                          const QString& configuration) {
    if (isReadableFile(file)) return file;
    if (!directory.isNull() && isReadableFile(directory + u'/' + file)) return directory + u'/' + file;
    if (!node) return {};
    loadToolDescriptions(node, configuration);
    const QString base = searchBase(*node, configuration);
    const auto valueOf = [&](const PropertyClass* directories) {
        return expandProperty(node, directories, configuration).split(u';', Qt::SkipEmptyParts);
    };
    const auto findIn = [&](const QStringList& directories) {
        for (const QString& entry : directories) {
            QString path = resolvedPath(base, entry) + u'/' + file;
            if (isReadableFile(path)) return path;
        }
        return QStringLiteral("");
    };
    QString found = findIn(valueOf(schema().tools.c_user_include_directories));
    if (found.isEmpty()) {
        QStringList chosen;
        for (const xml::XMLElement* include : propertyGroupElements(node, configuration, "cinclude"))
            chosen.append(include->text("value"));
        found = findIn(expandMacroList(node, configuration, chosen));
    }
    return found.isEmpty() ? findIn(valueOf(schema().tools.c_system_include_directories)) : found;
}

QString StandardProjectSystem::objectFileName(ProjectElement* node, const QString& configuration,
                                              bool absolute) {
    return outputFileName(classifyNode(node, configuration), node, configuration, absolute);
}

void StandardProjectSystem::outputFiles(ProjectElement* node, const QString& configuration,
                                        QStringList& list) {
    if (!node) return;
    const BuildKind kind = classifyNode(node, configuration);
    const QString output = outputFileName(kind, node, configuration, true);
    list.append(output);
    if (kind != BuildKind::Link) return;
    QStringList extras;
    extraOutputFiles(node, configuration, kind, output, extras);
    QString map;
    if (mapFileName(node, configuration, output, map)) extras.append(map);
    for (const QString& file : extras)
        if (QFileInfo::exists(file)) list.append(file);
}

bool StandardProjectSystem::hasOutput(ProjectElement* node, const QString& configuration) {
    if (!node) return false;
    loadToolDescriptions(node, configuration);
    return classifyNode(node, configuration) == BuildKind::Excluded || isCompiled(node, configuration);
}

bool StandardProjectSystem::isCompiled(ProjectElement* node, const QString& configuration) {
    switch (classifyNode(node, configuration)) {
        case BuildKind::CompileC:
        case BuildKind::CompileCpp:
        case BuildKind::Assemble:
        case BuildKind::Stage:
            return true;
        default:
            return false;
    }
}

bool StandardProjectSystem::isExcludedFromBuild(ProjectElement* node, const QString& configuration) {
    if (!node || !node->isFile()) return ProjectSystem::isExcludedFromBuild(node, configuration);
    const BuildKind kind = classifyNode(node, configuration);
    if (kind == BuildKind::Excluded) return true;
    if (kind != BuildKind::NoBuild) return false;
    const QString type = fileType(node, configuration);
    return (type == u"Memory Map" || type == u"Section Placement" || type == u"Linker Script") &&
           ProjectSystem::isExcludedFromBuild(node, configuration);
}

QStringList StandardProjectSystem::codeModelArguments(ProjectElement* node, const QString& configuration) {
    loadToolDescriptions(node, configuration);
    QStringList arguments = baseCodeModelArguments(node, configuration);
    const QString type = fileType(node, configuration);
    if (type == u"C") {
        arguments << QStringLiteral("-x") << QStringLiteral("c");
    } else if (type == u"C++" || type == u"Header") {
        arguments << QStringLiteral("-x") << QStringLiteral("c++");
    } else if (type == u"Assembly") {
        arguments << QStringLiteral("-x") << QStringLiteral("assembler-with-cpp");
    }
    const QString options = expandProperty(node, schema().general.code_completion_options, configuration);
    return arguments + options.split(u';', Qt::SkipEmptyParts);
}

void StandardProjectSystem::addMacros(ProjectElement*, const QString&, MacroTable& table) {
    const QString name = QStringLiteral("CLANGTIDY");
    if (!macroEngine || !table.value(name).isNull() || !macroEngine->macroValue(name).isNull()) return;
    table.insert(name,
                 macroEngine->expand(table, QStringLiteral("$(AtelisDir)/llvm/bin/clang-tidy"), true, true));
}

// --- What hosts and the build give bodies to ---

bool StandardProjectSystem::hostToolPredicate() {
    return false;
}
void StandardProjectSystem::runTool(ProjectElement*, const QString&, BuildKind, const QString&,
                                    const QString&, const QStringList&, build::Builder*, bool) {}
bool StandardProjectSystem::propertiesUnchangedSince(ProjectElement*, const QString&, const QDateTime&,
                                                     BuildKind, build::Builder*, bool) {
    return true;
}
QStringList StandardProjectSystem::readDependencyFile(ProjectElement*, const QString&, const QString&,
                                                      const QString&) {
    return {};
}
void StandardProjectSystem::extraOutputFiles(ProjectElement*, const QString&, BuildKind, const QString&,
                                             QStringList&) {}
QStringList StandardProjectSystem::additionalLinkerInputs(ProjectElement*, const QString&) {
    return {};
}
void StandardProjectSystem::addTargetOptions(ProjectElement*, const QString&, BuildKind, QStringList&) {}
QString StandardProjectSystem::dependentExecutableInput(ProjectElement*, const QString&, bool) {
    return {};
}
bool StandardProjectSystem::hasDefaultLinkerScript(ProjectElement*, const QString&, QString&) {
    return false;
}

}  // namespace project
