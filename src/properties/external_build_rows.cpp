#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<ToolProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row externalBuildRows[] = {
    {&ToolProperties::external_build_command, "external_build_command", Kind::Command, "Build Command", "", 0, 0, 0, "The command line to build the executable e.g. make. This property will have macro expansion applied to it."},
    {&ToolProperties::external_clean_command, "external_clean_command", Kind::Command, "Clean Command", "", 0, 0, 0, "The command line to clean the executable e.g. make clean. This property will have macro expansion applied to it."},
    {&ToolProperties::external_c_compile_command, "external_c_compile_command", Kind::Command, "C Compile Command", "", 0, CompileC | CompileCpp, 0, "The command line to compile a C source file."},
    {&ToolProperties::external_cpp_compile_command, "external_cpp_compile_command", Kind::Command, "C++ Compile Command", "", 0, 0, 0, "The command line to compile a C++ source file."},
    {&ToolProperties::external_assemble_command, "external_assemble_command", Kind::Command, "Assemble Command", "", 0, Assemble, 0, "The command line to assemble an assembly source file."},
    {&ToolProperties::external_link_command, "external_link_command", Kind::Command, "Link Command", "", 0, Link, 0, "The command line to link an executable. This property will have macro expansion applied to it with the additional macros:<ul><li>$(TargetPath) contains the full file name of the <b>Executable File Name</b> property."},
    {&ToolProperties::external_cpp_link_command, "external_cpp_link_command", Kind::Command, "C++ Link Command", "", 0, Link, 0, "The command line to link an executable. This property will have macro expansion applied to it with the additional macros:<ul><li>$(TargetPath) contains the full file name of the <b>Executable File Name</b> property."},
    {&ToolProperties::external_archive_command, "external_archive_command", Kind::Command, "Archive Command", "", 0, Archive, 0, "The command line to archive object files."},
    {&ToolProperties::external_objects_file_name, "external_objects_file_name", Kind::Command, "Objects File", "", 0, Link | Archive, 0, "The name of the file containing the list of files to archive or link, generated from the source files of the project."},
};

constexpr PropertyTable<ToolProperties> tables[] = {
    {"General", "External Build Options", externalBuildRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<ToolProperties>> externalBuildTables() {
    return tables;
}

}  // namespace properties
