#pragma once

#include <array>

namespace properties {

class PropertyClass;

/// The rows that every kind of project node knows, one member each, named after its key. Two keys belong to
/// two rows, so that one of each has a name of its own. The schema owns the classes.
struct GeneralProperties {
    // File Options
    PropertyClass* date_created = nullptr;
    PropertyClass* date_modified = nullptr;
    PropertyClass* full_path = nullptr;
    PropertyClass* relative_path = nullptr;
    PropertyClass* file_name = nullptr;
    PropertyClass* file_codec = nullptr;
    PropertyClass* file_open_with = nullptr;
    PropertyClass* file_type = nullptr;
    PropertyClass* file_flag = nullptr;
    PropertyClass* name = nullptr;
    PropertyClass* full_project_directory = nullptr;

    // (Information)
    PropertyClass* Platform = nullptr;
    PropertyClass* Name = nullptr;

    // Project Options
    PropertyClass* project_flag = nullptr;

    // Solution Options
    PropertyClass* solution_flag = nullptr;
    PropertyClass* properties_filter = nullptr;

    // Package Options
    PropertyClass* package_dependencies = nullptr;

    // General Options
    PropertyClass* inherited_configurations = nullptr;
    PropertyClass* public_configurations = nullptr;
    PropertyClass* private_configurations = nullptr;
    PropertyClass* environment_variables = nullptr;

    // Folder Options
    PropertyClass* filter = nullptr;
    PropertyClass* path = nullptr;
    PropertyClass* dynamic_folder_filter = nullptr;
    PropertyClass* recurse = nullptr;
    PropertyClass* exclude = nullptr;
    PropertyClass* unity_build_file_name = nullptr;
    PropertyClass* unity_build_exclude_filter = nullptr;

    // Source Code Options
    PropertyClass* project_inhibit_indexing = nullptr;
    PropertyClass* source_code_control_directory = nullptr;
    PropertyClass* code_completion_options = nullptr;

    // Build Options
    PropertyClass* project_type = nullptr;
    PropertyClass* project_directory = nullptr;
    PropertyClass* project_dependencies = nullptr;
    PropertyClass* project_can_build_in_parallel = nullptr;
    PropertyClass* macros = nullptr;
    PropertyClass* batch_build_configurations = nullptr;
    PropertyClass* build_toolchain_directory = nullptr;
    PropertyClass* build_treat_warnings_as_errors = nullptr;
    PropertyClass* build_suppress_warnings = nullptr;
    PropertyClass* build_intermediate_directory = nullptr;
    PropertyClass* build_output_directory = nullptr;
    PropertyClass* build_root_output_directory = nullptr;
    PropertyClass* build_object_file_name = nullptr;
    PropertyClass* build_output_file_name = nullptr;
    PropertyClass* build_quietly = nullptr;
    PropertyClass* build_debug_information = nullptr;
    PropertyClass* build_exclude_from_build = nullptr;
    PropertyClass* build_always_rebuild = nullptr;
    PropertyClass* property_groups_file_path = nullptr;

    // Library Options
    PropertyClass* library_output_file_name = nullptr;

    // Staging Options
    PropertyClass* stage_output_filepath = nullptr;
    PropertyClass* stage_command = nullptr;
    PropertyClass* stage_command_wd = nullptr;
    PropertyClass* stage_set_readonly = nullptr;
    PropertyClass* stage_post_build_command = nullptr;
    PropertyClass* stage_post_build_command_wd = nullptr;

    // Combining Options
    PropertyClass* combine_output_filepath = nullptr;
    PropertyClass* combine_command = nullptr;
    PropertyClass* combine_command_wd = nullptr;
    PropertyClass* combine_set_readonly = nullptr;

    // User Build Step Options
    PropertyClass* pre_build_command = nullptr;
    PropertyClass* pre_build_command_wd = nullptr;
    PropertyClass* pre_build_command_control = nullptr;
    PropertyClass* post_build_command = nullptr;
    PropertyClass* post_build_command_wd = nullptr;
    PropertyClass* post_build_command_control = nullptr;
};

/// The rows of the tools: compiler, assembler, linker, archiver, debugger, and the commands of an external
/// build.
struct ToolProperties {
    using Indexed = std::array<PropertyClass*, 4>;

    // Indexed rows
    Indexed external_debug_symbols_file_name = {};
    Indexed external_debug_symbols_load_address = {};
    Indexed debug_additional_load_file = {};
    Indexed debug_additional_load_file_type = {};
    Indexed debug_additional_load_file_address = {};

    // Build Options
    PropertyClass* build_dependency_file_name = nullptr;
    PropertyClass* build_generic_options_file_name = nullptr;
    PropertyClass* build_remove_unused_symbols = nullptr;

    // Preprocessor Options
    PropertyClass* c_undefine_all_preprocessor_definitions = nullptr;
    PropertyClass* c_preprocessor_definitions = nullptr;
    PropertyClass* c_preprocessor_undefinitions = nullptr;
    PropertyClass* c_ignore_includes = nullptr;
    PropertyClass* c_system_include_directories = nullptr;
    PropertyClass* c_user_include_directories = nullptr;

    // Compiler Options
    PropertyClass* c_enforce_ansi_checking = nullptr;
    PropertyClass* c_additional_options = nullptr;
    PropertyClass* c_additional_options_from_file = nullptr;
    PropertyClass* c_only_additional_options = nullptr;
    PropertyClass* c_only_additional_options_from_file = nullptr;
    PropertyClass* cpp_only_additional_options = nullptr;
    PropertyClass* cpp_only_additional_options_from_file = nullptr;
    PropertyClass* c_additional_options_backup = nullptr;
    PropertyClass* c_only_additional_options_backup = nullptr;
    PropertyClass* cpp_only_additional_options_backup = nullptr;
    PropertyClass* c_files_are_cpp = nullptr;

    // Code Generation Options
    PropertyClass* cpp_enable_exceptions = nullptr;
    PropertyClass* cpp_enable_rtti = nullptr;

    // Assembler Options
    PropertyClass* asm_additional_options = nullptr;
    PropertyClass* asm_additional_options_from_file = nullptr;
    PropertyClass* asm_generate_listing_file = nullptr;
    PropertyClass* asm_additional_options_backup = nullptr;

    // Section Options
    PropertyClass* default_code_section = nullptr;
    PropertyClass* default_data_section = nullptr;
    PropertyClass* default_zeroed_section = nullptr;
    PropertyClass* default_const_section = nullptr;
    PropertyClass* default_vector_section = nullptr;
    PropertyClass* default_isr_section = nullptr;

    // Code Analyzer Options
    PropertyClass* analyze_after_compile = nullptr;
    PropertyClass* clang_tidy_checks_c = nullptr;
    PropertyClass* clang_tidy_checks_cpp = nullptr;

    // User Build Step Options
    PropertyClass* compile_pre_build_command = nullptr;
    PropertyClass* compile_pre_build_command_output_file_name = nullptr;
    PropertyClass* compile_pre_build_command_wd = nullptr;
    PropertyClass* compile_post_build_command = nullptr;
    PropertyClass* compile_post_build_command_wd = nullptr;

    // Library Options
    PropertyClass* link_include_standard_libraries = nullptr;
    PropertyClass* link_standard_libraries_directory = nullptr;
    PropertyClass* link_use_multi_threaded_libraries = nullptr;

    // Linker Options
    PropertyClass* link_symbol_definitions = nullptr;
    PropertyClass* linker_keep_symbols = nullptr;
    PropertyClass* linker_additional_files = nullptr;
    PropertyClass* linker_additional_options = nullptr;
    PropertyClass* linker_additional_options_from_file = nullptr;
    PropertyClass* linker_memory_map_file = nullptr;
    PropertyClass* linker_memory_map_macros = nullptr;
    PropertyClass* linker_section_placement_file = nullptr;
    PropertyClass* linker_section_placement_macros = nullptr;
    PropertyClass* linker_section_placements_segments = nullptr;
    PropertyClass* link_use_linker_script_file = nullptr;
    PropertyClass* link_linker_script_file = nullptr;
    PropertyClass* link_dependent_projects = nullptr;
    PropertyClass* linker_output_format = nullptr;
    PropertyClass* linker_map_file = nullptr;
    PropertyClass* link_additional_options_backup = nullptr;

    // Printf/Scanf Options
    PropertyClass* linker_printf_fmt_level = nullptr;
    PropertyClass* linker_printf_width_precision_supported = nullptr;
    PropertyClass* linker_printf_fp_enabled = nullptr;
    PropertyClass* linker_printf_wchar_enabled = nullptr;
    PropertyClass* linker_scanf_fmt_level = nullptr;
    PropertyClass* linker_scanf_fp_enabled = nullptr;
    PropertyClass* linker_scanf_character_group_matching_enabled = nullptr;

    // User Build Step Options
    PropertyClass* linker_pre_build_command = nullptr;
    PropertyClass* linker_pre_build_command_wd = nullptr;
    PropertyClass* linker_patch_build_command = nullptr;
    PropertyClass* linker_patch_build_command_wd = nullptr;
    PropertyClass* linker_post_build_command = nullptr;
    PropertyClass* linker_post_build_command_wd = nullptr;
    PropertyClass* linker_post_build_command_output_file = nullptr;
    PropertyClass* archive_post_build_command = nullptr;
    PropertyClass* archive_post_build_command_wd = nullptr;

    // Debugger Options
    PropertyClass* debug_register_definition_file = nullptr;
    PropertyClass* external_start_address = nullptr;
    PropertyClass* debug_target_connection = nullptr;
    PropertyClass* debug_working_directory = nullptr;
    PropertyClass* debug_command_arguments = nullptr;
    PropertyClass* debug_start_from_entry_point_symbol = nullptr;
    PropertyClass* debug_entry_point_symbol = nullptr;
    PropertyClass* debug_startup_completion_point = nullptr;
    PropertyClass* debug_load_additional_projects = nullptr;
    PropertyClass* debug_dependent_projects = nullptr;
    PropertyClass* debug_initial_breakpoint = nullptr;
    PropertyClass* debug_initial_breakpoint_set_option = nullptr;
    PropertyClass* debug_leave_target_running = nullptr;
    PropertyClass* debug_threads_script = nullptr;
    PropertyClass* debug_threads_max = nullptr;
    PropertyClass* debug_terminal_log_file = nullptr;

    // Loader Options
    PropertyClass* external_build_file_name = nullptr;
    PropertyClass* external_load_address = nullptr;
    PropertyClass* external_load_file_type = nullptr;

    // External Build Options
    PropertyClass* external_build_command = nullptr;
    PropertyClass* external_clean_command = nullptr;
    PropertyClass* external_c_compile_command = nullptr;
    PropertyClass* external_cpp_compile_command = nullptr;
    PropertyClass* external_assemble_command = nullptr;
    PropertyClass* external_link_command = nullptr;
    PropertyClass* external_cpp_link_command = nullptr;
    PropertyClass* external_archive_command = nullptr;
    PropertyClass* external_objects_file_name = nullptr;
};

}  // namespace properties
