// What a property view offers for a node: which properties belong to which tool, project type and file type.
#include "project/property_groups.h"
#include "project/standard_project_system.h"

#include <QSet>

#include <span>
#include <utility>
#include <variant>

namespace project {

namespace {

using properties::GeneralProperties;
using properties::PropertyClassList;
using properties::PropertyValueGroupClass;
using properties::Tool;
using properties::ToolProperties;
using G = GeneralProperties;
using T = ToolProperties;
using Engine = StandardProjectSystem;

/// Rows of which each index gives one class of every row in turn.
using IndexedRows = std::span<T::Indexed T::*const>;
/// A list of a tool: one of the engine's operations, which hosts may vary.
using Operation = void (Engine::*)(ProjectElement*, const QString&, PropertyClassList&);
struct Entry;
using Entries = std::span<const Entry>;

/// One place in a table: a class, the options of a tool description, or a list inside the list.
struct Entry
    : std::variant<PropertyClass * G::*, PropertyClass * T::*, IndexedRows, Tool, Operation, Entries> {
    using variant::variant;
};

constexpr Entry baseFour[] = {
    &G::build_toolchain_directory,
    &G::build_output_directory,
    &G::build_intermediate_directory,
    &G::build_object_file_name,
};

constexpr Entry compileCommands[] = {
    &T::compile_pre_build_command,     &T::compile_pre_build_command_output_file_name,
    &T::compile_pre_build_command_wd,  &T::compile_post_build_command,
    &T::compile_post_build_command_wd,
};

constexpr Entry externalCommands[] = {
    &T::external_c_compile_command,
    &T::external_cpp_compile_command,
    &T::external_assemble_command,
};

constexpr Entry externalBuildCommands[] = {&T::external_build_command, &T::external_clean_command};

constexpr Entry analyzerChecks[] = {
    &T::clang_tidy_checks_c,
    &T::clang_tidy_checks_cpp,
    &T::analyze_after_compile,
};

// --- By tool ---

constexpr Entry commonCompileSet[] = {
    &T::c_preprocessor_definitions,
    &T::c_preprocessor_undefinitions,
    &T::c_user_include_directories,
    &T::c_system_include_directories,
    &T::c_undefine_all_preprocessor_definitions,
    &T::c_ignore_includes,
    &G::build_treat_warnings_as_errors,
    &G::build_suppress_warnings,
    &G::build_debug_information,
    &G::build_quietly,
    &T::default_code_section,
    &T::default_data_section,
    &T::default_zeroed_section,
    &T::default_const_section,
    &T::default_vector_section,
    &T::default_isr_section,
    Entries(compileCommands),
    &T::build_dependency_file_name,
    Entries(analyzerChecks),
    &T::c_files_are_cpp,
    Tool::Compiler,
};

constexpr Entry cCompiler[] = {
    &T::c_additional_options,
    &T::c_additional_options_from_file,
    &T::c_only_additional_options,
    &T::c_only_additional_options_from_file,
    &T::c_enforce_ansi_checking,
    Entries(commonCompileSet),
    Tool::CCompiler,
};

constexpr Entry cppCompiler[] = {
    &T::cpp_only_additional_options,
    &T::cpp_only_additional_options_from_file,
    &T::cpp_enable_exceptions,
    &T::cpp_enable_rtti,
    Tool::CppCompiler,
};

constexpr Entry assembler[] = {
    &T::asm_additional_options,
    &T::asm_additional_options_from_file,
    &T::asm_generate_listing_file,
    Entries(commonCompileSet),
};

constexpr Entry linkerBeforeScript[] = {
    &T::linker_memory_map_file,
    &T::linker_memory_map_macros,
    &T::linker_map_file,
};

constexpr Entry linkerWithoutScript[] = {
    &T::linker_section_placement_file,
    &T::linker_section_placement_macros,
    &T::linker_section_placements_segments,
    &T::link_use_linker_script_file,
};

constexpr Entry linkerWithScript[] = {&T::link_use_linker_script_file, &T::link_linker_script_file};

constexpr Entry linkerBehindScript[] = {
    &T::link_dependent_projects,
    &T::link_include_standard_libraries,
    &T::link_standard_libraries_directory,
    &T::link_use_multi_threaded_libraries,
    &T::linker_additional_files,
    &T::linker_additional_options,
    &T::linker_additional_options_from_file,
    &T::linker_output_format,
    &T::linker_printf_fmt_level,
    &T::linker_printf_fp_enabled,
    &T::linker_printf_wchar_enabled,
    &T::linker_printf_width_precision_supported,
    &T::linker_scanf_fmt_level,
    &T::linker_scanf_fp_enabled,
    &T::linker_scanf_character_group_matching_enabled,
    &T::linker_pre_build_command,
    &T::linker_pre_build_command_wd,
    &T::linker_patch_build_command,
    &T::linker_patch_build_command_wd,
    &T::linker_post_build_command,
    &T::linker_post_build_command_wd,
    &T::linker_post_build_command_output_file,
    &T::link_symbol_definitions,
    &T::linker_keep_symbols,
    Tool::Linker,
};

constexpr Entry archiver[] = {&T::archive_post_build_command, &T::archive_post_build_command_wd};

constexpr T::Indexed T::*additionalLoadFiles[] = {
    &T::debug_additional_load_file,
    &T::debug_additional_load_file_type,
    &T::debug_additional_load_file_address,
};

constexpr Entry debugger[] = {
    &T::debug_target_connection,
    &T::debug_command_arguments,
    &T::debug_working_directory,
    &T::debug_leave_target_running,
    &T::debug_threads_script,
    &T::debug_threads_max,
    &T::debug_terminal_log_file,
    IndexedRows(additionalLoadFiles),
    &T::debug_start_from_entry_point_symbol,
    &T::debug_entry_point_symbol,
    &T::debug_startup_completion_point,
    &T::debug_load_additional_projects,
    &T::debug_initial_breakpoint,
    &T::debug_initial_breakpoint_set_option,
    &T::debug_register_definition_file,
};

// --- By project type ---

constexpr Entry executable[] = {
    Entries(baseFour),
    &Engine::addCCompilerProperties,
    &Engine::addCppCompilerProperties,
    &Engine::addAssemblerProperties,
    &Engine::addLinkerProperties,
    &Engine::addDebugProperties,
    &G::build_output_file_name,
    &G::property_groups_file_path,
    &T::external_build_file_name,
    &T::external_load_address,
    &T::external_load_file_type,
    Entries(externalCommands),
    &T::external_link_command,
    &T::external_cpp_link_command,
    &T::external_objects_file_name,
};

constexpr Entry library[] = {
    Entries(baseFour),
    &Engine::addCCompilerProperties,
    &Engine::addCppCompilerProperties,
    &Engine::addAssemblerProperties,
    &Engine::addArchiverProperties,
    &G::library_output_file_name,
    Entries(externalCommands),
    &T::external_archive_command,
    &T::external_objects_file_name,
};

constexpr Entry objectFile[] = {
    Entries(baseFour),
    &Engine::addCCompilerProperties,
    &Engine::addCppCompilerProperties,
    &Engine::addAssemblerProperties,
};

constexpr Entry staging[] = {
    &G::build_output_directory, &G::stage_post_build_command, &G::stage_post_build_command_wd,
    &G::stage_command,          &G::stage_command_wd,         &G::stage_output_filepath,
    &G::stage_set_readonly,
};

constexpr Entry combining[] = {
    &G::build_output_directory,  &G::combine_command,      &G::combine_command_wd,
    &G::combine_output_filepath, &G::combine_set_readonly,
};

constexpr T::Indexed T::*debugSymbols[] = {
    &T::external_debug_symbols_file_name,
    &T::external_debug_symbols_load_address,
};

constexpr Entry externalExecutable[] = {
    Entries(baseFour),
    &G::build_output_file_name,
    Entries(externalBuildCommands),
    Entries(externalCommands),
    &T::external_link_command,
    &T::external_cpp_link_command,
    &T::external_objects_file_name,
    &T::asm_additional_options,
    &T::c_additional_options,
    &T::c_only_additional_options,
    &T::cpp_only_additional_options,
    &T::linker_additional_options,
    &T::c_preprocessor_definitions,
    &T::c_user_include_directories,
    &T::c_system_include_directories,
    Entries(compileCommands),
    &T::link_use_linker_script_file,
    &T::link_linker_script_file,
    &T::link_dependent_projects,
    &T::linker_pre_build_command,
    &T::linker_pre_build_command_wd,
    &T::linker_post_build_command,
    &T::linker_post_build_command_wd,
    &T::linker_post_build_command_output_file,
    &T::build_generic_options_file_name,
    Tool::Assembler,
    Tool::Compiler,
    Tool::CCompiler,
    &Engine::addCppProjectOptions,
    Tool::Linker,
    &T::asm_additional_options_backup,
    &T::c_additional_options_backup,
    &T::c_only_additional_options_backup,
    &T::cpp_only_additional_options_backup,
    &T::link_additional_options_backup,
    &T::external_build_file_name,
    &T::external_load_address,
    &T::external_load_file_type,
    IndexedRows(debugSymbols),
    &Engine::addDebugProperties,
    &G::property_groups_file_path,
    &T::linker_memory_map_file,
    &T::linker_memory_map_macros,
    &T::linker_section_placements_segments,
    &Engine::addHostProperties,
    Entries(analyzerChecks),
};

constexpr Entry externalCompilation[] = {
    &T::asm_additional_options,      &T::c_additional_options,       &T::c_only_additional_options,
    &T::cpp_only_additional_options, &T::c_preprocessor_definitions, &T::c_user_include_directories,
    Entries(compileCommands),        &Engine::addHostProperties,     Entries(analyzerChecks),
};

constexpr Entry externalLibrary[] = {
    Entries(baseFour),
    &G::library_output_file_name,
    Entries(externalBuildCommands),
    Entries(externalCommands),
    &T::external_archive_command,
    &T::external_objects_file_name,
    Entries(externalCompilation),
};

constexpr Entry externalObjectFile[] = {
    Entries(baseFour),
    Entries(externalBuildCommands),
    Entries(externalCommands),
    Entries(externalCompilation),
};

struct ProjectTypeRow {
    const char* type;
    Entries classes;
};

constexpr ProjectTypeRow projectTypeRows[] = {
    {"Executable", executable},
    {"Library", library},
    {"Object file", objectFile},
    {"Staging", staging},
    {"Combining", combining},
    {"Externally Built Executable", externalExecutable},
    {"Externally Built Library", externalLibrary},
    {"Externally Built Object file", externalObjectFile},
};

// --- By node ---

constexpr Entry anyProject[] = {&G::build_exclude_from_build, &G::build_always_rebuild, &G::file_codec};
constexpr Entry compiledFolder[] = {
    &G::build_intermediate_directory,
    &G::unity_build_file_name,
    &G::unity_build_exclude_filter,
};
constexpr Entry anyFolder[] = {
    &G::build_exclude_from_build,
    &G::build_always_rebuild,
    &G::file_type,
    &G::file_codec,
};
constexpr Entry stagedFile[] = {
    &G::stage_output_filepath,    &G::stage_command,      &G::stage_command_wd,
    &G::build_exclude_from_build, &G::stage_set_readonly,
};
constexpr Entry anyFile[] = {&G::file_codec, &G::file_open_with, &G::file_type};
constexpr Entry projectFile[] = {&G::build_exclude_from_build, &G::build_always_rebuild};

constexpr Entry cBuild[] = {&Engine::addCCompilerProperties, &G::build_object_file_name};
constexpr Entry cppBuild[] = {
    &Engine::addCCompilerProperties,
    &Engine::addCppCompilerProperties,
    &G::build_object_file_name,
};
constexpr Entry assemblyBuild[] = {&Engine::addAssemblerProperties, &G::build_object_file_name};

constexpr Entry cOptions[] = {
    Tool::Compiler,
    Tool::CCompiler,
    &T::c_additional_options,
    &T::c_only_additional_options,
};
constexpr Entry cppOptions[] = {
    Tool::Compiler,
    Tool::CppCompiler,
    &T::c_additional_options,
    &T::cpp_only_additional_options,
};
constexpr Entry assemblyOptions[] = {Tool::Assembler, &T::asm_additional_options};

constexpr Entry compiledFile[] = {
    &T::c_preprocessor_definitions,
    &T::c_user_include_directories,
    Entries(compileCommands),
    &G::build_object_file_name,
};

struct FileTypeRow {
    const char* type;
    PropertyClass* T::*externalCommand;
    Entries build;  ///< not in an externally built project
    Entries options;
};

constexpr FileTypeRow fileTypeRows[] = {
    {"C", &T::external_c_compile_command, cBuild, cOptions},
    {"C++", &T::external_cpp_compile_command, cppBuild, cppOptions},
    {"Assembly", &T::external_assemble_command, assemblyBuild, assemblyOptions},
};

// --- What the node itself has ---

constexpr PropertyClass* G::*dynamicFolderRows[] = {
    &G::path,
    &G::dynamic_folder_filter,
    &G::recurse,
    &G::exclude,
};
constexpr Entry indexing[] = {&G::project_inhibit_indexing, &G::code_completion_options};
constexpr Entry buildCommands[] = {
    &G::pre_build_command,  &G::pre_build_command_wd,  &G::pre_build_command_control,
    &G::post_build_command, &G::post_build_command_wd, &G::post_build_command_control,
};
constexpr Entry solutionItself[] = {
    Entries(indexing),
    Entries(buildCommands),
    &G::batch_build_configurations,
    &G::source_code_control_directory,
    &G::environment_variables,
};
constexpr Entry projectItself[] = {
    &G::project_dependencies,       &G::project_can_build_in_parallel,
    &G::batch_build_configurations, Entries(indexing),
    Entries(buildCommands),
};

/// Puts together the classes for one node in one configuration.
class ClassCollector {
public:
    ClassCollector(Engine& engine, ProjectElement& node, const QString& configuration,
                   PropertyClassList& classes)
        : engine_(engine), node_(node), configuration_(configuration), classes_(classes) {}

    /// The lists inside lists are a few deep.
    void add(Entries entries) {
        for (const Entry& entry : entries)
            std::visit([this](auto part) { addPart(part); }, static_cast<const Entry::variant&>(entry));
    }

    void addProjectType(const QString& type) {
        engine_.addProjectTypeProperties(&node_, configuration_, classes_, type);
    }

    void addNode() {
        if (node_.isSolution()) addSolution();
        if (node_.isProject()) addProject();
        if (node_.isFolder()) addFolder();
        if (node_.isFile()) addFile();
    }

private:
    void addPart(PropertyClass* G::*member) { classes_.append(engine_.schema().general.*member); }
    void addPart(PropertyClass* T::*member) { classes_.append(engine_.schema().tools.*member); }
    void addPart(Operation operation) { (engine_.*operation)(&node_, configuration_, classes_); }
    void addPart(Entries entries) { add(entries); }
    void addPart(Tool tool) {
        for (const properties::GenericPropertyClass* option : engine_.toolDescription().options(tool))
            classes_.append(const_cast<properties::GenericPropertyClass*>(option));
    }
    void addPart(IndexedRows rows) {
        for (std::size_t index = 0; index < T::Indexed().size(); ++index)
            for (T::Indexed T::*row : rows) classes_.append((engine_.schema().tools.*row)[index]);
    }

    QString typeOf(ProjectElement* project) const {
        return engine_.propertyValue(project, engine_.schema().general.project_type, configuration_);
    }

    void addSolution() {
        QSet<QString> done;
        for (ProjectElement* project : std::as_const(node_.solution->projectIndex)) {
            const QString type = typeOf(project);
            if (done.contains(type)) continue;
            done.insert(type);
            addProjectType(type);
        }
        classes_.append(engine_.schema().general.file_codec);
    }

    void addProject() {
        addProjectType(typeOf(&node_));
        add(anyProject);
    }

    void addFolder() {
        ProjectElement* const project = node_.enclosingProject();
        const QString type = project ? typeOf(project) : QString();
        if (type == u"Executable" || type == u"Library" || type == u"Object file") {
            addProjectType(QStringLiteral("Object file"));
            add(compiledFolder);
        } else if (type == u"Staging") {
            addProjectType(type);
        }
        add(anyFolder);
    }

    void addFile() {
        ProjectElement* const project = node_.enclosingProject();
        const QString type = project ? typeOf(project) : QString();
        if (type == u"Staging") {
            add(stagedFile);
            return;
        }
        add(anyFile);
        if (!project) return;
        add(projectFile);
        addFileType(engine_.fileType(&node_, configuration_), type.startsWith(u"Externally Built"));
    }

    void addFileType(const QString& fileType, bool isExternal) {
        for (const FileTypeRow& row : fileTypeRows) {
            if (fileType != QLatin1StringView(row.type)) continue;
            addPart(row.externalCommand);
            if (!isExternal) add(row.build);
            add(row.options);
            add(compiledFile);
        }
    }

    Engine& engine_;
    ProjectElement& node_;
    const QString& configuration_;
    PropertyClassList& classes_;
};

/// Appends a value that the list owns, unless it has one of that class.
template <typename Value, typename... Arguments>
void append(PropertyValueList& list, const Arguments&... arguments) {
    auto value = std::make_unique<Value>(arguments...);
    value->setOwnedByList(true);
    if (list.appendUnique(value.get())) static_cast<void>(value.release());
}

/// Appends a value of a class that the list is known not to have, so it is spared the search.
template <typename Value, typename... Arguments>
void appendNew(PropertyValueList& list, const Arguments&... arguments) {
    list.append(std::make_unique<Value>(arguments...).release());
    list.last()->setOwnedByList(true);
}

}  // namespace

void StandardProjectSystem::addCCompilerProperties(ProjectElement* node, const QString& configuration,
                                                   PropertyClassList& classes) {
    ClassCollector(*this, *node, configuration, classes).add(cCompiler);
}

void StandardProjectSystem::addCppCompilerProperties(ProjectElement* node, const QString& configuration,
                                                     PropertyClassList& classes) {
    ClassCollector(*this, *node, configuration, classes).add(cppCompiler);
}

void StandardProjectSystem::addAssemblerProperties(ProjectElement* node, const QString& configuration,
                                                   PropertyClassList& classes) {
    ClassCollector(*this, *node, configuration, classes).add(assembler);
}

void StandardProjectSystem::addLinkerProperties(ProjectElement* node, const QString& configuration,
                                                PropertyClassList& classes) {
    ClassCollector collector(*this, *node, configuration, classes);
    const bool usesScript =
        propertyValue(node, schema().tools.link_use_linker_script_file, configuration) == u"Yes";
    collector.add(linkerBeforeScript);
    collector.add(usesScript ? Entries(linkerWithScript) : Entries(linkerWithoutScript));
    collector.add(linkerBehindScript);
}

void StandardProjectSystem::addArchiverProperties(ProjectElement* node, const QString& configuration,
                                                  PropertyClassList& classes) {
    ClassCollector(*this, *node, configuration, classes).add(archiver);
}

void StandardProjectSystem::addDebugProperties(ProjectElement* node, const QString& configuration,
                                               PropertyClassList& classes) {
    ClassCollector(*this, *node, configuration, classes).add(debugger);
}

void StandardProjectSystem::addHostProperties(ProjectElement*, const QString&, PropertyClassList&) {}

void StandardProjectSystem::addProjectTypeProperties(ProjectElement* node, const QString& configuration,
                                                     PropertyClassList& classes, const QString& projectType) {
    for (const ProjectTypeRow& row : projectTypeRows)
        if (projectType == QLatin1StringView(row.type))
            ClassCollector(*this, *node, configuration, classes).add(row.classes);
}

void StandardProjectSystem::addCppProjectOptions(ProjectElement* node, const QString& configuration,
                                                 PropertyClassList& classes) {
    constexpr Entry options[] = {Tool::CppCompiler};
    if (isCppProject(node, configuration)) ClassCollector(*this, *node, configuration, classes).add(options);
}

PropertyValueList StandardProjectSystem::propertyValues(ProjectElement* node, const QString& configuration) {
    PropertyValueList list;
    if (!node) return list;
    loadToolDescriptions(node, configuration);
    PropertyClassList classes;
    ClassCollector(*this, *node, configuration, classes).addNode();
    const QStringList filter = propertyValue(node, schema().general.properties_filter, configuration)
                                   .split(u';', Qt::SkipEmptyParts);
    const QSet<QString> filtered(filter.begin(), filter.end());
    QSet<const PropertyClass*> known;
    for (const PropertyClass* each : std::as_const(classes)) {
        if (known.contains(each) || (!filtered.isEmpty() && !filtered.contains(each->name))) continue;
        known.insert(each);
        appendNew<ProjectPropertyValue>(list, each, configuration, node);
    }
    if (!node->isProject()) return list;
    for (const PropertyValueGroupClass* group : toolDescription_.groups())
        appendNew<PropertyValueGroupValue>(list, group, configuration, node);
    return list;
}

namespace {

QString dateText(const QDateTime& date) {
    return date.toString(Qt::ISODate);
}

/// Appends what a node has of its own to a list.
class OwnValues {
public:
    OwnValues(ProjectSystem& engine, ProjectElement& node, const QString& configuration,
              PropertyValueList& list)
        : engine_(engine), node_(node), configuration_(configuration), list_(list) {}

    void add() {
        node_.resolvePaths(configuration_);
        if (node_.isFile()) addFile();
        if (node_.isFolder()) addFolder();
        if (node_.isSolution()) addSolution();
        if (node_.isProject()) addProject();
    }

private:
    const G& general() const { return engine_.schema().general; }

    void addSimple(const PropertyClass* propertyClass, const QString& text) {
        append<SimplePropertyValue>(list_, propertyClass, text);
    }
    void addDates() {
        addSimple(general().date_created, dateText(node_.path.created()));
        addSimple(general().date_modified, dateText(node_.path.lastModified()));
    }
    template <typename Value = ProjectPropertyValue>
    void addStored(const PropertyClass* propertyClass) {
        append<Value>(list_, propertyClass, configuration_, &node_);
    }
    void addStored(Entries entries) {
        for (const Entry& entry : entries) {
            if (const auto* member = std::get_if<PropertyClass * G::*>(&entry)) {
                addStored(general().*(*member));
            } else {
                addStored(std::get<Entries>(entry));
            }
        }
    }

    void addFile() {
        addSimple(general().full_path, node_.path.normalised());
        addSimple(general().file_name, node_.attributes.value(keys::fileName));
        addDates();
        addStored(indexing);
    }

    void addFolder() {
        if (node_.attributes.contains(u"path")) {
            for (PropertyClass* G::*row : dynamicFolderRows)
                append<DynamicFolderPropertyValue>(list_, general().*row, &node_);
        } else {
            append<ProjectPropertyValue>(list_, general().filter, commonConfiguration, &node_);
        }
        addStored(indexing);
    }

    void addSolution() {
        addSimple(general().name, node_.path.normalised());
        addDates();
        addStored<ProjectMacrosProjectPropertyValue>(general().macros);
        addStored(solutionItself);
    }

    void addProject() {
        addStored(general().project_type);
        addStored<ProjectDirectoryProjectPropertyValue>(general().project_directory);
        addSimple(general().full_project_directory, node_.directory);
        addStored<ProjectMacrosProjectPropertyValue>(general().macros);
        addStored(projectItself);
        addGroups();
    }

    void addGroups() {
        const properties::PropertyValueGroupFile* const file =
            engine_.propertyGroupFile(&node_, configuration_);
        if (!file) return;
        // A question that loads tool descriptions could end the classes that are in the list already.
        const QString type = engine_.propertyValue(&node_, general().project_type, configuration_);
        const bool isExecutable = type == u"Executable" || type == u"Externally Built Executable";
        for (const PropertyValueGroupClass* group : file->groups())
            if (isExecutable || !group->isLibraryGroup())
                appendNew<PropertyValueGroupValue>(list_, group, configuration_, &node_);
    }

    ProjectSystem& engine_;
    ProjectElement& node_;
    const QString& configuration_;
    PropertyValueList& list_;
};

bool isInDynamicFolder(const ProjectElement& node) {
    const ProjectElement* const parent = node.parentElement();
    return parent && parent->isFolder() && parent->attributes.contains(u"path");
}

}  // namespace

PropertyValueList ProjectSystem::nodePropertyValues(ProjectElement* node, const QString& configuration) {
    if (!node) return {};
    // Nothing of a file that was found on the disk can be edited.
    PropertyValueList list =
        isInDynamicFolder(*node) ? PropertyValueList() : propertyValues(node, configuration);
    OwnValues(*this, *node, configuration, list).add();
    return list;
}

PropertyValueList ProjectSystem::storedPropertyValues(ProjectElement* node,
                                                      ProjectElement* configurationChild) {
    PropertyValueList list;
    if (!node || !configurationChild) return list;
    const QString configuration = configurationChild->elementName();
    loadToolDescriptions(node, configuration);
    const QStringList skipped{keys::name, schema().general.inherited_configurations->name,
                              schema().general.Platform->name};
    const properties::PropertyValueGroupFile* const groups = propertyGroupFile(node, configuration);
    for (const auto& [key, value] : configurationChild->attributes) {
        if (skipped.contains(key)) continue;
        const PropertyClass* found = schema().find(key);
        if (!found && groups) found = groups->find(key);
        if (const auto* group = dynamic_cast<const PropertyValueGroupClass*>(found)) {
            append<PropertyValueGroupValue>(list, group, configuration, node);
        } else if (found) {
            append<ProjectPropertyValue>(list, found, configuration, node);
        }
    }
    return list;
}

}  // namespace project
