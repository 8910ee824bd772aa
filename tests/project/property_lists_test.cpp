#include "project/solution_fixture.h"

#include <QDir>

#include <map>

namespace {

using namespace project_test;

/// Lists that stand inside others, under the names by which the rows below call them.
const std::map<std::string, const char*> lists = {
    {"@base",
     "build_toolchain_directory build_output_directory build_intermediate_directory build_object_file_name"},
    {"@compile",
     "compile_pre_build_command compile_pre_build_command_output_file_name compile_pre_build_command_wd "
     "compile_post_build_command compile_post_build_command_wd"},
    {"@external", "external_c_compile_command external_cpp_compile_command external_assemble_command"},
    {"@common",
     "c_preprocessor_definitions c_preprocessor_undefinitions c_user_include_directories "
     "c_system_include_directories c_undefine_all_preprocessor_definitions c_ignore_includes "
     "build_treat_warnings_as_errors build_suppress_warnings build_debug_information build_quietly "
     "default_code_section default_data_section default_zeroed_section default_const_section "
     "default_vector_section default_isr_section @compile build_dependency_file_name clang_tidy_checks_c "
     "clang_tidy_checks_cpp analyze_after_compile c_files_are_cpp o_compiler"},
    {"@c",
     "c_additional_options c_additional_options_from_file c_only_additional_options "
     "c_only_additional_options_from_file c_enforce_ansi_checking @common o_c_compiler"},
    {"@cpp",
     "cpp_only_additional_options cpp_only_additional_options_from_file cpp_enable_exceptions "
     "cpp_enable_rtti "
     "o_cpp_compiler"},
    {"@asm", "asm_additional_options asm_additional_options_from_file asm_generate_listing_file @common"},
    {"@placement",
     "linker_section_placement_file linker_section_placement_macros linker_section_placements_segments "
     "link_use_linker_script_file"},
    {"@behind",
     "link_dependent_projects link_include_standard_libraries link_standard_libraries_directory "
     "link_use_multi_threaded_libraries linker_additional_files linker_additional_options "
     "linker_additional_options_from_file linker_output_format linker_printf_fmt_level "
     "linker_printf_fp_enabled linker_printf_wchar_enabled linker_printf_width_precision_supported "
     "linker_scanf_fmt_level linker_scanf_fp_enabled linker_scanf_character_group_matching_enabled "
     "linker_pre_build_command linker_pre_build_command_wd linker_patch_build_command "
     "linker_patch_build_command_wd linker_post_build_command linker_post_build_command_wd "
     "linker_post_build_command_output_file link_symbol_definitions linker_keep_symbols o_linker"},
    {"@map", "linker_memory_map_file linker_memory_map_macros linker_map_file"},
    {"@link", "@map @placement @behind"},
    {"@script", "@map link_use_linker_script_file link_linker_script_file @behind"},
    {"@debug",
     "debug_target_connection debug_command_arguments debug_working_directory debug_leave_target_running "
     "debug_threads_script debug_threads_max debug_terminal_log_file debug_additional_load_file "
     "debug_additional_load_file_type debug_additional_load_file_address debug_additional_load_file1 "
     "debug_additional_load_file_type1 debug_additional_load_file_address1 debug_additional_load_file2 "
     "debug_additional_load_file_type2 debug_additional_load_file_address2 debug_additional_load_file3 "
     "debug_additional_load_file_type3 debug_additional_load_file_address3 "
     "debug_start_from_entry_point_symbol debug_entry_point_symbol debug_startup_completion_point "
     "debug_load_additional_projects debug_initial_breakpoint debug_initial_breakpoint_set_option "
     "debug_register_definition_file"},
    {"@load", "external_build_file_name external_load_address external_load_file_type"},
    {"@behindlink",
     "@debug build_output_file_name property_groups_file_path @load @external external_link_command "
     "external_cpp_link_command external_objects_file_name"},
    {"@executable", "@base @c @cpp @asm @link @behindlink"},
    {"@library",
     "@base @c @cpp @asm archive_post_build_command archive_post_build_command_wd build_output_file_name "
     "@external external_archive_command external_objects_file_name"},
    {"@tidy", "clang_tidy_checks_c clang_tidy_checks_cpp analyze_after_compile"},
    {"@externalcompile",
     "asm_additional_options c_additional_options c_only_additional_options "
     "cpp_only_additional_options c_preprocessor_definitions c_user_include_directories @compile "
     "@tidy"},
    {"@node", "build_exclude_from_build build_always_rebuild file_codec"},
    {"@file", "file_codec file_open_with file_type build_exclude_from_build build_always_rebuild"},
    {"@compiled", "c_preprocessor_definitions c_user_include_directories @compile build_object_file_name"},
    {"@folder", "build_exclude_from_build build_always_rebuild file_type file_codec"},
    {"@indexing", "project_inhibit_indexing code_completion_options"},
    {"@commands",
     "pre_build_command pre_build_command_wd pre_build_command_control post_build_command "
     "post_build_command_wd post_build_command_control"},
};

/// The text with its lists spelled out, each name at its first place only.
std::string spelled(const std::string& text) {
    QStringList words = q(text).split(u' ', Qt::SkipEmptyParts);
    QStringList result;
    while (!words.isEmpty()) {
        const QString word = words.takeFirst();
        if (word.startsWith(u'@')) {
            words = q(lists.at(word.toStdString())).split(u' ') + words;
        } else if (!result.contains(word)) {
            result.append(word);
        }
    }
    return result.join(u' ').toStdString();
}

std::string keysOf(const PropertyValueList& list) {
    QStringList names;
    for (const PropertyValue* value : list) names.append(value->propertyClass()->name);
    return names.join(u' ').toStdString();
}

class PropertyLists : public SolutionTest {
protected:
    PropertyLists() {
        newSolution("s");
        std::string tools = "<root>";
        for (const char* tool : {"assembler", "compiler", "c_compiler", "cpp_compiler", "linker"})
            tools += "<property name='o_" + std::string(tool) + "' tool='" + tool + "'/>";
        toolsFile = write("tools.xml", tools + "</root>");
    }
    ProjectElement* newProject(const char* type) {
        ProjectElement* const project = engine.newProject(engine.solution(), q(type), QString(), q(type));
        set(project, "Common", "build_generic_options_file_name", toolsFile.toUtf8().constData());
        return project;
    }
    std::string offered(ProjectElement* node) { return keysOf(engine.propertyValues(node, q("Common"))); }
    std::string ownOffered(ProjectElement* node) {
        const std::string all = keysOf(engine.nodePropertyValues(node, q("Common")));
        const std::string tools = offered(node);
        EXPECT_EQ(all.substr(0, tools.size()), tools);
        return all.substr(std::min(all.size(), tools.size() + 1));
    }

    QString toolsFile;
};

TEST_F(PropertyLists, OfferByProjectType) {
    struct Row {
        const char* type;
        const char* keys;
    };
    const Row rows[] = {
        {"Executable", "@executable"},
        {"Library", "@library"},
        {"Object file", "@base @c @cpp @asm"},
        {"Staging",
         "build_output_directory stage_post_build_command stage_post_build_command_wd stage_command "
         "stage_command_wd stage_output_filepath stage_set_readonly"},
        {"Combining",
         "build_output_directory combine_command combine_command_wd combine_output_filepath "
         "combine_set_readonly"},
        {"Externally Built Executable",
         "@base build_output_file_name external_build_command external_clean_command @external "
         "external_link_command "
         "external_cpp_link_command external_objects_file_name asm_additional_options c_additional_options "
         "c_only_additional_options cpp_only_additional_options linker_additional_options "
         "c_preprocessor_definitions "
         "c_user_include_directories c_system_include_directories @compile link_use_linker_script_file "
         "link_linker_script_file link_dependent_projects linker_pre_build_command "
         "linker_pre_build_command_wd "
         "linker_post_build_command linker_post_build_command_wd linker_post_build_command_output_file "
         "build_generic_options_file_name o_assembler o_compiler o_c_compiler o_linker "
         "asm_additional_options_backup "
         "c_additional_options_backup c_only_additional_options_backup cpp_only_additional_options_backup "
         "link_additional_options_backup @load external_debug_symbols_file_name "
         "external_debug_symbols_load_address "
         "external_debug_symbols_file_name1 external_debug_symbols_load_address1 "
         "external_debug_symbols_file_name2 "
         "external_debug_symbols_load_address2 external_debug_symbols_file_name3 "
         "external_debug_symbols_load_address3 "
         "@debug property_groups_file_path linker_memory_map_file linker_memory_map_macros "
         "linker_section_placements_segments @tidy"},
        {"Externally Built Library",
         "@base build_output_file_name external_build_command external_clean_command "
         "@external external_archive_command external_objects_file_name @externalcompile"},
        {"Externally Built Object file",
         "@base external_build_command external_clean_command @external @externalcompile"},
        {"Anything", ""},
    };
    std::string all;
    for (const Row& row : rows) {
        EXPECT_EQ(offered(newProject(row.type)), spelled(std::string(row.keys) + " @node")) << row.type;
        all += std::string(row.keys) + " ";
    }
    // A solution offers what its projects do, in the order of their names.
    engine.rebuildProjectMaps();
    const std::string solution = offered(engine.solution());
    EXPECT_EQ(solution.substr(solution.size() - 10), "file_codec");
    EXPECT_EQ(solution.find("build_output_directory combine_command"), 0U);
    ProjectElement* const executable = newProject("Executable");
    set(executable, "Common", "link_use_linker_script_file", "Yes");
    EXPECT_EQ(offered(executable), spelled("@base @c @cpp @asm @script @behindlink @node"));
}

TEST_F(PropertyLists, OfferByKindAndFileType) {
    struct Row {
        const char* projectType;
        const char* file;  ///< null for the folder
        const char* keys;
    };
    const char* const cFile = "@file external_c_compile_command @c build_object_file_name @compiled";
    const Row rows[] = {
        {"Executable", nullptr,
         "@base @c @cpp @asm unity_build_file_name unity_build_exclude_filter @folder"},
        {"Staging", nullptr,
         "build_output_directory stage_post_build_command stage_post_build_command_wd stage_command "
         "stage_command_wd "
         "stage_output_filepath stage_set_readonly @folder"},
        {"Combining", nullptr, "@folder"},
        {"Executable", "a.c", cFile},
        {"Library", "a.c", cFile},
        {"Executable", "a.cpp",
         "@file external_cpp_compile_command @c @cpp build_object_file_name @compiled"},
        {"Executable", "a.s",
         "@file external_assemble_command @asm build_object_file_name o_assembler @compiled"},
        {"Executable", "a.h", "@file"},
        {"Staging", "a.c",
         "stage_output_filepath stage_command stage_command_wd build_exclude_from_build "
         "stage_set_readonly"},
        {"Externally Built Executable", "a.c",
         "@file external_c_compile_command o_compiler o_c_compiler c_additional_options "
         "c_only_additional_options "
         "@compiled"},
        {"Externally Built Library", "a.cpp",
         "@file external_cpp_compile_command o_compiler o_cpp_compiler c_additional_options "
         "cpp_only_additional_options @compiled"},
        {"Externally Built Library", "a.s",
         "@file external_assemble_command o_assembler asm_additional_options @compiled"},
    };
    for (const Row& row : rows) {
        ProjectElement* const project = newProject(row.projectType);
        ProjectElement* const node =
            row.file ? engine.addFile(project, q(row.file)) : engine.addFolder(project, q("f"), QString());
        EXPECT_EQ(offered(node), spelled(row.keys))
            << row.projectType << " " << (row.file ? row.file : "folder");
    }
    EXPECT_EQ(offered(engine.addFile(engine.solution(), q("a.c"))), "file_codec file_open_with file_type");
}

TEST_F(PropertyLists, OfferWhatTheNodeItselfHas) {
    ProjectElement* const project = newProject("Library");
    ProjectElement* const folder = engine.addFolder(project, q("f"), QString());
    QDir(directory.path()).mkpath(q("src/sub"));
    write("src/a.c", "");
    ProjectElement* const dynamic = engine.addFolder(project, q("d"), QString());
    engine.setDynamicFolder(dynamic, q("src"), QString(), true, QString());
    const std::string file = "full_path file_name date_created date_modified @indexing";
    EXPECT_EQ(ownOffered(engine.addFile(project, q("x.c"))), spelled(file));
    EXPECT_EQ(ownOffered(folder), spelled("filter @indexing"));
    EXPECT_EQ(ownOffered(dynamic),
              "path filter recurse exclude project_inhibit_indexing code_completion_options");
    EXPECT_EQ(ownOffered(engine.solution()),
              spelled("name date_created date_modified macros @indexing @commands batch_build_configurations "
                      "source_code_control_directory environment_variables"));
    EXPECT_EQ(ownOffered(project), spelled("project_type project_directory full_project_directory macros "
                                           "project_dependencies project_can_build_in_parallel "
                                           "batch_build_configurations @indexing @commands"));
    // What the disk brought has no tool options.
    EXPECT_EQ(keysOf(engine.nodePropertyValues(engine.findFile(dynamic, q("src/a.c")), q("Common"))),
              spelled(file));
    EXPECT_EQ(keysOf(engine.nodePropertyValues(engine.findFolder(dynamic, q("sub")), q("Common"))),
              "path filter recurse exclude project_inhibit_indexing code_completion_options");
    EXPECT_EQ(keysOf(engine.nodePropertyValues(nullptr, q("Common"))), "");
}

TEST_F(PropertyLists, OfferGroups) {
    write("tools.xml", "<root><group name='own' default='x'/><property name='o' tool='linker'/></root>");
    write("groups.xml", "<root><group name='g'/></root>");
    macros.systemMacros.insert(q("AtelisDir"), directory.path());
    QDir(directory.path()).mkpath(q("targets/t"));
    write("targets/t/propertyGroups.xml", "<root><group name='library'/></root>");
    struct Row {
        const char* type;
        const char* groups;
    };
    const Row rows[] = {
        {"Library", "own g"},
        {"Executable", "own g library"},
        {"Externally Built Executable", "own g library"},
    };
    for (const Row& row : rows) {
        ProjectElement* const project = newProject(row.type);
        set(project, "Common", "property_groups_file_path", "groups.xml");
        set(project, "Common", "properties_filter", "build_quietly;;build_output_directory");
        std::string groups;
        for (const PropertyValue* value : engine.nodePropertyValues(project, q("Common")))
            if (dynamic_cast<const PropertyValueGroupValue*>(value))
                groups += (groups.empty() ? "" : " ") + value->propertyClass()->name.toStdString();
        EXPECT_EQ(groups, row.groups) << row.type;
        // The filter narrows the classes of the tools and not the groups.
        EXPECT_EQ(offered(project), std::string(row.type) == "Externally Built Executable"
                                        ? "build_output_directory own"
                                        : "build_output_directory build_quietly own");
    }
}

TEST_F(PropertyLists, StandUnderOneToolDescription) {
    ProjectElement* const project = newProject("Executable");
    write("first.xml",
          "<root><property name='build_output_directory' default='second'/>"
          "<property name='o' tool='compiler' default='x'/></root>");
    write("second.xml", "<root><property name='n' tool='compiler'/></root>");
    set(project, "Common", "build_output_directory", "");
    engine.clearPropertyValue(project, engine.schema().general.build_output_directory, q("Common"));
    engine.schema().general.build_output_directory->defaultValue = q("first");
    set(project, "Common", "build_generic_options_file_name", "$(OutDir).xml");
    QString all;
    for (const PropertyValue* value : engine.nodePropertyValues(project, q("Common"))) all += value->value();
    EXPECT_TRUE(all.contains(u'x'));
    EXPECT_TRUE(engine.storedPropertyValues(project, project->configurations.value(q("Common"))).size() > 0);
}

TEST_F(PropertyLists, NameTheOutputOfTheProjectType) {
    for (const auto& [type, title] : {std::pair("Library", "Library File Name"),
                                      std::pair("Externally Built Library", "Library File Name"),
                                      std::pair("Executable", "Executable File Name")}) {
        QString titles;
        for (const PropertyValue* value : engine.nodePropertyValues(newProject(type), q("Common")))
            if (value->propertyClass()->name == u"build_output_file_name")
                titles += value->propertyClass()->shortName;
        EXPECT_EQ(titles, q(title)) << type;
    }
}

TEST_F(PropertyLists, ShowWhatIsStored) {
    ProjectElement* const project = newProject("Executable");
    write("groups.xml", "<root><group name='g'/></root>");
    for (const char* key : {"build_quietly", "o_linker"}) {
        engine.loadToolDescriptions(project, q("Common"));
        set(project, "Common", key, "v");
    }
    set(project, "Common", "property_groups_file_path", "groups.xml");
    ProjectElement* const common = project->configurations.value(q("Common"));
    for (const char* key : {"g", "unknown", "Platform", "inherited_configurations"})
        engine.setElementAttribute(common, q(key), q("v"));
    const PropertyValueList stored = engine.storedPropertyValues(project, common);
    EXPECT_EQ(keysOf(stored),
              "build_generic_options_file_name build_quietly g o_linker project_directory "
              "project_type property_groups_file_path");
    EXPECT_TRUE(dynamic_cast<PropertyValueGroupValue*>(stored[2]));
    EXPECT_EQ(stored[1]->value(), u"v");
    EXPECT_FALSE(stored[1]->isInherited());
}

}  // namespace
