#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<GeneralProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row fileRows[] = {
    {&GeneralProperties::date_created, "date_created", Kind::String, "Date Created", "", 0, 0, ReadOnly | NotFoundByKey, "The date/time the file was created."},
    {&GeneralProperties::date_modified, "date_modified", Kind::String, "Date Modified", "", 0, 0, ReadOnly | NotFoundByKey, "The date/time the file was last modified."},
    {&GeneralProperties::full_path, "full_path", Kind::String, "Full Path", "", 0, 0, ReadOnly | NotFoundByKey, "Specifies a full path to the file."},
    {&GeneralProperties::relative_path, "relative_path", Kind::String, "Relative Path", "", 0, 0, ReadOnly | NotFoundByKey, "Path of the file relative to the project directory."},
    {&GeneralProperties::file_name, "file_name", Kind::String, "File Name", "", 0, 0, ReadOnly, "The name of the file. This property will have global macro expansion applied to it."},
    {&GeneralProperties::file_codec, "file_codec", Kind::Enumeration, "File Encoding", "Default", 0, 0, AllConfigurations, "Specifies the encoding to use when reading and writing the file."},
    {&GeneralProperties::file_open_with, "file_open_with", Kind::Enumeration, "File Open Action", "Default", 0, 0, AllConfigurations, "Specifies how to open the file when it is double clicked."},
    {&GeneralProperties::file_type, "file_type", Kind::Enumeration, "File Type", "Default", 0, 0, AllConfigurations, "The type of file. Default setting uses the file extension to determine file type."},
    {&GeneralProperties::file_flag, "file_flag", Kind::Enumeration, "Flag", "None", 0, 0, AllConfigurations, "Flag which you can use to draw attention to important files in your project."},
    {&GeneralProperties::name, "name", Kind::String, "Solution File Name", "", 0, 0, ReadOnly | NotFoundByKey, "The name of the solution file."},
    {&GeneralProperties::full_project_directory, "full_project_directory", Kind::String, "Full Project Directory", "", 0, 0, ReadOnly | NotFoundByKey, "Specifies a full path to the project directory."},
};

constexpr Row informationRows[] = {
    {&GeneralProperties::Platform, "Platform", Kind::String, "Platform", "ARM", 0, 0, ReadOnly, "Specifies the platform for the project. The macro $(Platform) is set to this value."},
    {&GeneralProperties::Name, "Name", Kind::String, "Name", "", 0, 0, ReadOnly, "Names the item. The macro $(ProjectNodeName) is set to this value."},
};

constexpr Row projectRows[] = {
    {&GeneralProperties::project_flag, "project_flag", Kind::Enumeration, "Flag", "None", 0, 0, AllConfigurations, "Flag which you can use to draw attention to important projects in your solution."},
};

constexpr Row solutionRows[] = {
    {&GeneralProperties::solution_flag, "solution_flag", Kind::Enumeration, "Flag", "None", 0, 0, AllConfigurations, "Flag which you can use to draw attention to important projects in your solution."},
    {&GeneralProperties::properties_filter, "properties_filter", Kind::StringList, "Properties Filter", "", 0, 0, 0, "The names of project properties that can be displayed at the solution"},
};

constexpr Row packageRows[] = {
    {&GeneralProperties::package_dependencies, "package_dependencies", Kind::StringList, "Package Dependencies", "", 0, 0, AllConfigurations, "Specifies the packages the current project depends upon."},
};

constexpr Row generalRows[] = {
    {&GeneralProperties::inherited_configurations, "inherited_configurations", Kind::StringList, "Inherited Configurations", "", 0, 0, 0, "The list of configurations that are inherited by this configuration."},
    {&GeneralProperties::public_configurations, "public_configurations", Kind::StringList, "Public Configurations", "", 0, 0, NotFoundByKey, "The list of public configurations of the solution."},
    {&GeneralProperties::private_configurations, "private_configurations", Kind::StringList, "Private Configurations", "", 0, 0, NotFoundByKey, "The list of private configurations of the solution."},
    {&GeneralProperties::environment_variables, "environment_variables", Kind::StringList, "Environment Variables", "", 0, 0, AllConfigurations, "Environment variables to set on solution load."},
};

constexpr Row folderRows[] = {
    {&GeneralProperties::filter, "filter", Kind::StringList, "Filter", "", 0, 0, AllConfigurations, "A filter used when adding new files to the project."},
    {&GeneralProperties::path, "path", Kind::DirPath, "Dynamic Folder Directory", "", 0, 0, AllConfigurations, "Dynamic folder directory specification - ; seperated directory names that will have global macro expansion applied to them."},
    {&GeneralProperties::dynamic_folder_filter, "filter", Kind::String, "Dynamic Folder Filter", "", 0, 0, AllConfigurations, "Dynamic folder filter specification - ; seperated wildcards."},
    {&GeneralProperties::recurse, "recurse", Kind::Boolean, "Dynamic Folder Recurse", "No", 0, 0, AllConfigurations, "Dynamic folder recurse into subdirectories."},
    {&GeneralProperties::exclude, "exclude", Kind::StringList, "Dynamic Folder Exclude", "", 0, 0, 0, "Dynamic folder exclude specification - ; seperated wildcards."},
    {&GeneralProperties::unity_build_file_name, "unity_build_file_name", Kind::FileName, "Unity Build File Name", "", 0, CompileC | CompileCpp, 0, "The file name created that #includes all files in the folder for the unity build."},
    {&GeneralProperties::unity_build_exclude_filter, "unity_build_exclude_filter", Kind::String, "Unity Build Exclude Filter", "", 0, CompileC | CompileCpp, 0, "The filter specification to exclude from the unity build - ; seperated wildcards."},
};

constexpr Row sourceCodeRows[] = {
    {&GeneralProperties::project_inhibit_indexing, "project_inhibit_indexing", Kind::Boolean, "Inhibit Source Indexing", "No", 0, 0, AllConfigurations, "Disable source indexing and code completion for files/folders/projects that would normally be indexed (C/C++ files in executable and library projects)."},
    {&GeneralProperties::source_code_control_directory, "source_code_control_directory", Kind::DirPath, "Source Code Control Directory", "$(SolutionDir)", 0, 0, AllConfigurations, "Source code control directory root."},
    {&GeneralProperties::code_completion_options, "code_completion_options", Kind::StringList, "Additional Code Completion Compiler Options", "", 0, 0, 0, "Additional source indexing and code completion compiler options."},
};

constexpr PropertyTable<GeneralProperties> tables[] = {
    {"General", "File Options", fileRows},
    {"Properties", "(Information)", informationRows},
    {"General", "Project Options", projectRows},
    {"General", "Solution Options", solutionRows},
    {"General", "Package Options", packageRows},
    {"General", "General Options", generalRows},
    {"General", "Folder Options", folderRows},
    {"General", "Source Code Options", sourceCodeRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<GeneralProperties>> generalTables() {
    return tables;
}

}  // namespace properties
