#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<ToolProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row libraryRows[] = {
    {&ToolProperties::link_include_standard_libraries, "link_include_standard_libraries", Kind::Boolean, "Include Standard Libraries", "Yes", -1001, Link, 0, "Specifies whether the standard libraries should be linked into your application."},
    {&ToolProperties::link_standard_libraries_directory, "link_standard_libraries_directory", Kind::String, "Standard Libraries Directory", "$(AtelisLibDir:$(AtelisDir)/lib)", -100, Link, 0, "Specifies where to find the standard libraries"},
    {&ToolProperties::link_use_multi_threaded_libraries, "link_use_multi_threaded_libraries", Kind::Boolean, "Exclude Default Library Helper Functions", "No", 0, Link, 0, "Specifies whether to exclude default library helper functions."},
};

constexpr Row linkerRows[] = {
    {&ToolProperties::link_symbol_definitions, "link_symbol_definitions", Kind::StringList, "Linker Symbol Definitions", "", -220, Link, 0, "Specifies one or more linker symbol definitions."},
    {&ToolProperties::linker_keep_symbols, "linker_keep_symbols", Kind::StringList, "Keep Symbols", "", -200, Link, 0, "Specifies the symbols that should be kept by the linker even if they are not reachable."},
    {&ToolProperties::linker_additional_files, "linker_additional_files", Kind::StringList, "Additional Input Files", "", -230, Link, 0, "Enables additional object and library files to be supplied to the linker."},
    {&ToolProperties::linker_additional_options, "linker_additional_options", Kind::StringList, "Additional Linker Options", "", -101, Link, 0, "Enables additional options to be supplied to the linker."},
    {&ToolProperties::linker_additional_options_from_file, "linker_additional_options_from_file", Kind::ProjFileName, "Additional Linker Options From File", "", -100, Link, 0, "Enables additional options to be supplied to the linker from a file."},
    {&ToolProperties::linker_memory_map_file, "linker_memory_map_file", Kind::ProjFileName, "Memory Map File", "", -321, Link, 0, "The name of the file containing the memory map description."},
    {&ToolProperties::linker_memory_map_macros, "linker_memory_map_macros", Kind::StringList, "Memory Map Macros", "", -320, Link, 0, "Macro values to substitue in memory map nodes. Each macro is defined as <b>name=value</b> and are seperated by <b>;</b>."},
    {&ToolProperties::linker_section_placement_file, "linker_section_placement_file", Kind::ProjFileName, "Section Placement File", "$(AtelisDir)/targets/section_placement.xml", -291, Link, 0, "The name of the file containing section placement description."},
    {&ToolProperties::linker_section_placement_macros, "linker_section_placement_macros", Kind::StringList, "Section Placement Macros", "", -290, Link, 0, "Macro values to substitue in section placement nodes - MACRO1=value1;MACRO2=value2."},
    {&ToolProperties::linker_section_placements_segments, "linker_section_placements_segments", Kind::String, "Memory Segments", "", -300, Link, 0, "The start, access and size of named segments in the target, these are used when no memory map file is available.Each segment is specified by NAME RWX HEXSTART HEXSIZE for example FLASH RX 0x08000000 0x00010000"},
    {&ToolProperties::link_use_linker_script_file, "link_use_linker_script_file", Kind::Boolean, "Use Manual Linker Script", "No", -331, Link, 0, "Specifies whether to use a manual linker script."},
    {&ToolProperties::link_linker_script_file, "link_linker_script_file", Kind::ProjFileName, "Linker Script File", "", -330, Link, 0, "The name of the manual linker script file."},
    {&ToolProperties::link_dependent_projects, "link_dependent_projects", Kind::Boolean, "Link Dependent Projects", "Yes", -240, Link, 0, "Specifies whether to link the output of dependent library projects."},
    {&ToolProperties::linker_output_format, "linker_output_format", Kind::Enumeration, "Additional Output Format", "", -251, Link, 0, "The format used when creating an additional linked output file."},
    {&ToolProperties::linker_map_file, "linker_map_file", Kind::Boolean, "Generate Map File", "Yes", -271, Link, 0, "Specifies whether to generate a linkage map file."},
    {&ToolProperties::link_additional_options_backup, "link_additional_options_backup", Kind::String, "Backup Additional Linker Options", "", 0, 0, 0, "Value of additional linker options prior to generic options processing"},
};

constexpr Row printfScanfRows[] = {
    {&ToolProperties::linker_printf_fmt_level, "linker_printf_fmt_level", Kind::Enumeration, "Printf Integer Support", "int", 0, Link, 0, "The largest integer type supported by the printf function group."},
    {&ToolProperties::linker_printf_width_precision_supported, "linker_printf_width_precision_supported", Kind::Boolean, "Printf Width/Precision Supported", "No", 0, Link, 0, "Enables support for width and precision specification in the printf function group."},
    {&ToolProperties::linker_printf_fp_enabled, "linker_printf_fp_enabled", Kind::Enumeration, "Printf Floating Point Supported", "No", 0, Link, 0, "Are floating point numbers supported by the printf function group."},
    {&ToolProperties::linker_printf_wchar_enabled, "linker_printf_wchar_enabled", Kind::Boolean, "Wide Characters Supported", "No", 0, Link, 0, "Are wide characters supported by the printf function group."},
    {&ToolProperties::linker_scanf_fmt_level, "linker_scanf_fmt_level", Kind::Enumeration, "Scanf Integer Support", "int", 0, Link, 0, "The largest integer type supported by the scanf function group."},
    {&ToolProperties::linker_scanf_fp_enabled, "linker_scanf_fp_enabled", Kind::Boolean, "Scanf Floating Point Supported", "No", 0, Link, 0, "Are floating point numbers supported by the scanf function group."},
    {&ToolProperties::linker_scanf_character_group_matching_enabled, "linker_scanf_character_group_matching_enabled", Kind::Boolean, "Scanf Classes Supported", "No", 0, Link, 0, "Enables support for %[...] and %[^...] character class matching in the scanf functions."},
};

constexpr Row userBuildStepRows[] = {
    {&ToolProperties::linker_pre_build_command, "linker_pre_build_command", Kind::Command, "Pre-Link Command", "", 0, Link, 0, "A command to run before the link command. This property will have macro expansion applied to it."},
    {&ToolProperties::linker_pre_build_command_wd, "linker_pre_build_command_wd", Kind::DirPath, "Pre-Link Working Directory", "$(ProjectDir)", 0, Link, 0, "The working directory where the pre-link command is run. This property will have macro expansion applied to it."},
    {&ToolProperties::linker_patch_build_command, "linker_patch_build_command", Kind::Command, "Link Patch Command", "", 0, Link, 0, "A command to run after the link but prior to additional binary file generation. This property will have macro expansion applied to it with the additional <b>$(TargetPath)</b> macro set to the output filepath of the linker command."},
    {&ToolProperties::linker_patch_build_command_wd, "linker_patch_build_command_wd", Kind::DirPath, "Link Patch Working Directory", "$(ProjectDir)", 0, Link, 0, "The working directory where the link patch command is run. This property will have macro expansion applied to it."},
    {&ToolProperties::linker_post_build_command, "linker_post_build_command", Kind::Command, "Post-Link Command", "", 0, Link, 0, "A command to run after the link command has completed.This property will have macro expansion applied to it with the additional <b>$(TargetPath)</b> macro set to the output filepath of the linker command and <b>$(PostLinkOutputFilePath)</b> set to the value of the output filepath of the post link command."},
    {&ToolProperties::linker_post_build_command_wd, "linker_post_build_command_wd", Kind::DirPath, "Post-Link Working Directory", "$(ProjectDir)", 0, Link, 0, "The working directory where the post-link command is run. This property will have macro expansion applied to it."},
    {&ToolProperties::linker_post_build_command_output_file, "linker_post_build_command_output_file", Kind::String, "Post-Link Output File", "", 0, Link, 0, "The name of the file created by the post-link command. This property will have macro expansion applied to it."},
    {&ToolProperties::archive_post_build_command, "archive_post_build_command", Kind::Command, "Post-Archive Command", "", 0, Archive, 0, "A command to run after the archive command has completed.This property will have macro expansion applied to it with the additional <b>$(TargetPath)</b> macro set to the output filepath of the archive command."},
    {&ToolProperties::archive_post_build_command_wd, "archive_post_build_command_wd", Kind::DirPath, "Post-Archive Working Directory", "$(ProjectDir)", 0, Link, 0, "The working directory where the post-archive command is run. This property will have macro expansion applied to it."},
};

constexpr PropertyTable<ToolProperties> tables[] = {
    {"Linker", "Library Options", libraryRows},
    {"Linker", "Linker Options", linkerRows},
    {"Linker", "Printf/Scanf Options", printfScanfRows},
    {"Linker", "User Build Step Options", userBuildStepRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<ToolProperties>> linkerTables() {
    return tables;
}

}  // namespace properties
