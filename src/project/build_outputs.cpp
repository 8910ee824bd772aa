// What a build makes of a node: its kind, and the file that comes of it.
#include "project/build_outputs.h"

#include "project/standard_project_system.h"
#include "project/tree_walk.h"

namespace project {

const PropertyClass* externalCompileCommand(const properties::ToolProperties& tools, BuildKind kind) {
    switch (kind) {
        case BuildKind::CompileC:
            return tools.external_c_compile_command;
        case BuildKind::CompileCpp:
            return tools.external_cpp_compile_command;
        case BuildKind::Assemble:
            return tools.external_assemble_command;
        default:
            return nullptr;
    }
}

namespace {

struct KindRow {
    const char* type;
    BuildKind kind;
};

// clang-format off
constexpr KindRow projectRows[] = {
    {"Library", BuildKind::Archive},
    {"Object file", BuildKind::NoBuild},
    {"Staging", BuildKind::Stage},
    {"Combining", BuildKind::Combine},
    {"Executable", BuildKind::Link},
};

constexpr KindRow fileRows[] = {
    {"C", BuildKind::CompileC},
    {"C++", BuildKind::CompileCpp},
    {"Assembly", BuildKind::Assemble},
    {"Object file", BuildKind::ExternalBuild},
    {"Executable", BuildKind::ExternalBuild},
    {"Library", BuildKind::ExternalBuild},
};
// clang-format on

template <std::size_t size>
BuildKind kindOf(const KindRow (&rows)[size], const QString& type) {
    for (const KindRow& row : rows)
        if (type == QLatin1StringView(row.type)) return row.kind;
    return BuildKind::NoBuild;
}

BuildKind classifyProject(StandardProjectSystem& engine, ProjectElement* project,
                          const QString& configuration) {
    const auto& tools = engine.schema().tools;
    const auto isSet = [&](const PropertyClass* propertyClass) {
        return !engine.propertyValue(project, propertyClass, configuration).isEmpty();
    };
    const QString type = engine.propertyValue(project, engine.schema().general.project_type, configuration);
    if (type == u"Externally Built Executable") {
        const bool links =
            isSet(tools.external_link_command) ||
            (isSet(tools.external_cpp_link_command) && !isSet(tools.external_build_file_name) &&
             engine.isCppProject(project, configuration));
        return links ? BuildKind::Link : BuildKind::ExternalBuild;
    }
    if (type == u"Externally Built Library")
        return isSet(tools.external_archive_command) ? BuildKind::Archive : BuildKind::ExternalBuild;
    return kindOf(projectRows, type);
}

/// Of a file, or of a folder that is built as one.
BuildKind classifyFile(StandardProjectSystem& engine, ProjectElement* node, const QString& configuration) {
    const auto& general = engine.schema().general;
    if (engine.propertyValue(node, general.build_exclude_from_build, configuration) == u"Yes")
        return BuildKind::Excluded;
    ProjectElement* const project = node->enclosingProject();
    if (!project) return BuildKind::NoBuild;
    const QString type = engine.propertyValue(project, general.project_type, configuration);
    if (type == u"Staging") return BuildKind::Stage;
    if (type == u"Combining") return BuildKind::NoBuild;
    const BuildKind kind = kindOf(fileRows, engine.fileType(node, configuration));
    const PropertyClass* const command = externalCompileCommand(engine.schema().tools, kind);
    if (command && type.startsWith(u"Externally Built") &&
        engine.propertyValue(node, command, configuration).isEmpty())
        return BuildKind::NoBuild;
    return kind;
}

}  // namespace

BuildKind StandardProjectSystem::classifyNode(ProjectElement* node, const QString& configuration) {
    if (!node) return BuildKind::NoBuild;
    if (node->isProject()) return classifyProject(*this, node, configuration);
    if (node->isFolder() && node->attributes.contains(keys::fileName)) {
        node->resolvePaths(configuration);
        return node->resolvedFileName.isEmpty() ? BuildKind::NoBuild
                                                : classifyFile(*this, node, configuration);
    }
    return node->isFile() ? classifyFile(*this, node, configuration) : BuildKind::NoBuild;
}

QString StandardProjectSystem::outputFileName(BuildKind kind, ProjectElement* node,
                                              const QString& configuration, bool absolute) {
    if (!node) return {};
    const auto expanded = [&](const PropertyClass* propertyClass) {
        return expandProperty(node, propertyClass, configuration);
    };
    // Null where no value is set, empty where the node is of the wrong sort.
    const auto valueFor = [&](bool isRightSort, const PropertyClass* propertyClass) {
        if (!isRightSort) return QStringLiteral("");
        const QString value = propertyValue(node, propertyClass, configuration);
        return value.isEmpty() ? QString() : expandMacros(node, configuration, value);
    };
    QString name;
    switch (kind) {
        case BuildKind::NoBuild:
        case BuildKind::Excluded:
            return {};
        case BuildKind::CompileC:
        case BuildKind::CompileCpp:
        case BuildKind::Assemble:
            name = expanded(schema().general.build_object_file_name);
            break;
        case BuildKind::ExternalBuild:
            if (node->isFile()) {
                node->resolvePaths(configuration);
                name = node->resolvedFileName;
            } else {
                name = valueFor(node->isProject(), schema().tools.external_build_file_name);
            }
            break;
        case BuildKind::Link:
            name = expanded(schema().general.build_output_file_name);
            break;
        case BuildKind::Archive:
            name = expanded(schema().general.library_output_file_name);
            break;
        case BuildKind::Stage:
            name = node->isProject() ? QString() : valueFor(true, schema().general.stage_output_filepath);
            break;
        case BuildKind::Combine:
            name = node->isFile() ? QString()
                                  : valueFor(node->isProject(), schema().general.combine_output_filepath);
            break;
    }
    if (!absolute || name.isEmpty() || isAbsolutePath(name)) return name;
    return projectDirectoryOf(node) + u'/' + name;
}

bool StandardProjectSystem::isUnityFolder(ProjectElement* node, const QString& configuration, bool noUnity) {
    return node && !noUnity && node->isFolder() &&
           !propertyValue(node, schema().general.unity_build_file_name, configuration).isEmpty();
}

bool StandardProjectSystem::isCppProject(ProjectElement* node, const QString& configuration) {
    bool found = false;
    const auto visit = [&](ProjectElement& each) {
        found = found ||
                (each.isFile() && fileType(&each, configuration) == u"C++" &&
                 propertyValue(&each, schema().general.build_exclude_from_build, configuration) == u"No");
        return !found;
    };
    if (node) forEachElement(*node, visit);
    return found;
}

bool StandardProjectSystem::mapFileName(ProjectElement* node, const QString& configuration,
                                        const QString& target, QString& out) {
    if (!node || propertyValue(node, schema().tools.linker_map_file, configuration) != u"Yes") return false;
    const Path path(target);
    out = path.dirPath() + u'/' + path.baseName() + QStringLiteral(".map");
    return true;
}

QString StandardProjectSystem::intermediateFilePath(ProjectElement* node, const QString& configuration,
                                                    const QString& fileName) {
    if (!node) return {};
    QString directory = expandProperty(node, schema().general.build_intermediate_directory, configuration);
    if (!isAbsolutePath(directory)) directory.prepend(projectDirectoryOf(node) + u'/');
    return directory + u'/' + fileName;
}

}  // namespace project
