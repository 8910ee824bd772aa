#include "project/standard_project_system.h"

#include "properties/lists.h"

#include <QFileInfo>

namespace project {

StandardProjectSystem::StandardProjectSystem(const QString& genericOptionsFile,
                                             const QStringList& loadFileFormats,
                                             const QString& defaultTemplatesFile)
    : ProjectSystem(properties::fileTypes(), properties::projectTypes(), defaultTemplatesFile) {
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

}  // namespace

bool StandardProjectSystem::memorySegments(ProjectElement* node, const QString& configuration,
                                           QList<MemorySegment>& segments) {
    if (!node) return false;
    const QString text =
        expandProperty(node, schema().tools.linker_section_placements_segments, configuration);
    const QStringList entries = text.split(u';', Qt::SkipEmptyParts);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        MemorySegment segment{};
        if (parseSegment(*entry, segment)) segments.append(segment);
    }
    return !entries.isEmpty();
}

QString StandardProjectSystem::locateFile(const QString& directory, const QString& file, ProjectElement* node,
                                          const QString& configuration) {
    if (isReadableFile(file)) return file;
    if (!directory.isNull() && isReadableFile(directory + u'/' + file)) return directory + u'/' + file;
    if (!node) return {};
    const QString base = searchBase(*node, configuration);
    for (const PropertyClass* directories :
         {schema().tools.c_user_include_directories, schema().tools.c_system_include_directories}) {
        const QString list = expandProperty(node, directories, configuration);
        for (const QString& entry : list.split(u';', Qt::SkipEmptyParts)) {
            QString path = (isAbsolutePath(entry) ? entry : base + u'/' + entry) + u'/' + file;
            if (isReadableFile(path)) return path;
        }
    }
    return QStringLiteral("");
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

void StandardProjectSystem::addCCompilerProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addCppCompilerProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addAssemblerProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addLinkerProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addArchiverProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addProjectTypeProperties(ProjectElement*, const QString&, PropertyClassList&,
                                                     const QString&) {}
void StandardProjectSystem::addDebugProperties(ProjectElement*, const QString&, PropertyClassList&) {}
void StandardProjectSystem::addHostProperties(ProjectElement*, const QString&, PropertyClassList&) {}

expressions::MemoryMap* StandardProjectSystem::registerDefinitions(ProjectElement*, const QString&) {
    return nullptr;
}
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
