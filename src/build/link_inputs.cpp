#include "build/link_inputs.h"

#include "build/project_dependencies.h"
#include "build/unity_folder.h"
#include "project/tree_walk.h"

#include <QFileInfo>

namespace build {

QStringList collectObjectFiles(BuildSystem& engine, ProjectElement* parent, const QString& configuration,
                               bool absolute, bool noUnity) {
    QStringList files;
    const auto add = [&](ProjectElement* node) {
        const QString name = engine.objectFileName(node, configuration, absolute);
        if (!name.isEmpty()) files.append(name);
    };
    project::forEachElement(*parent, [&](ProjectElement& node) {
        if (&node == parent) return true;
        if (node.isConfiguration()) return false;
        add(&node);
        if (!engine.isUnityFolder(&node, configuration, noUnity)) return true;
        for (ProjectElement* file : readUnityFolder({engine, &node, configuration}).excluded) add(file);
        return false;
    });
    return files;
}

QStringList collectCombineInputs(BuildSystem& engine, ProjectElement* project, const QString& configuration) {
    QStringList files;
    project::forEachElement(*project, [&](ProjectElement& node) {
        const NodeProperties file(engine, &node, configuration);
        if (!node.isFile() || !file.reads(file.general().build_exclude_from_build, u"No")) return;
        node.resolvePaths(configuration);
        files.append(node.resolvedFileName);
    });
    return files;
}

QStringList collectLibraries(BuildSystem& engine, ProjectElement* project, const QString& configuration,
                             bool noUnity) {
    QStringList files;
    for (ProjectElement* each : withDependencies({engine, project, configuration})) {
        engine.loadToolDescriptions(each, configuration);  // as when its output was made
        const NodeProperties properties(engine, each, configuration);
        if (!properties.reads(properties.general().build_exclude_from_build, u"No")) continue;
        const QString type = properties.value(properties.general().project_type);
        QString file;
        if (type == u"Library" || type == u"Externally Built Library") {
            file = engine.outputFileName(BuildKind::Archive, each, configuration, true);
        } else if (type == u"Object file" || type == u"Externally Built Object file") {
            files += collectObjectFiles(engine, each, configuration, true, noUnity);
        } else if (type == u"Executable" && each != project) {
            file = engine.dependentExecutableInput(each, configuration, true);
        }
        if (!file.isEmpty()) files.append(file);
    }
    engine.loadToolDescriptions(project, configuration);
    return files;
}

namespace {

struct LayoutRow {
    const char* step;
    const char* warning;
};

constexpr LayoutRow linkerScriptRow{"Locating Linker Script File", "Linker script file "};
constexpr LayoutRow memoryMapRow{"Locating Memory Map File", "Memory map file "};
constexpr LayoutRow sectionPlacementRow{"Locating Section Placement File", "Section placement file "};

bool resolve(const NodeProperties& properties, const PropertyClass* propertyClass, const LayoutRow& row,
             Builder* builder, QString& path) {
    const QString value = properties.value(propertyClass);
    if (value.isEmpty()) return false;
    path = properties.expanded(propertyClass);
    if (QFileInfo(path).isFile()) return true;
    path = resolvedPath(properties.projectDirectory(), path);
    if (QFileInfo(path).isFile()) return true;
    if (!builder) return false;
    builder->beginStep(properties.node(), QString::fromLatin1(row.step), properties.configuration(), 0);
    builder->warning(QString::fromLatin1(row.warning) + quote(value) + QStringLiteral(" does not exist."));
    builder->endStep(properties.node(), properties.configuration());
    return false;
}

}  // namespace

bool resolveLinkerScript(const NodeProperties& properties, Builder* builder, QString& path) {
    const auto& tools = properties.tools();
    QString unused;
    const bool isUsed =
        properties.isYes(tools.link_use_linker_script_file) ||
        properties.engine().hasDefaultLinkerScript(properties.node(), properties.configuration(), unused);
    return isUsed && resolve(properties, tools.link_linker_script_file, linkerScriptRow, builder, path);
}

bool resolveMemoryMap(const NodeProperties& properties, Builder* builder, QString& path) {
    return resolve(properties, properties.tools().linker_memory_map_file, memoryMapRow, builder, path);
}

bool resolveSectionPlacement(const NodeProperties& properties, Builder* builder, QString& path) {
    return resolve(properties, properties.tools().linker_section_placement_file, sectionPlacementRow, builder,
                   path);
}

QStringList layoutFiles(const NodeProperties& properties) {
    QString path;
    if (resolveLinkerScript(properties, nullptr, path)) return {path};
    QStringList files;
    if (resolveMemoryMap(properties, nullptr, path)) files.append(path);
    if (resolveSectionPlacement(properties, nullptr, path)) files.append(path);
    return files;
}

QStringList linkInputs(BuildSystem& engine, ProjectElement* project, const QString& configuration,
                       const LinkInputForm& form) {
    const NodeProperties properties(engine, project, configuration);
    const auto named = [&](const QString& file) {
        return form.absolute ? file : project::relativeFilePath(properties.projectDirectory(), file);
    };
    QStringList inputs = collectObjectFiles(engine, project, configuration, form.absolute, form.noUnity);
    if (form.withDependencies)
        for (const QString& file : collectLibraries(engine, project, configuration, form.noUnity))
            inputs.append(named(file));
    const QStringList layout = layoutFiles(properties);
    for (auto file = layout.rbegin(); file != layout.rend(); ++file) inputs.append(named(*file));
    return inputs + engine.additionalLinkerInputs(project, configuration);
}

}  // namespace build
