#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<GeneralProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row buildRows[] = {
    {&GeneralProperties::project_type, "project_type", Kind::Enumeration, "Project Type", "Executable", -1000, 0, 0, "Specifies the type of project to build. The options are <b>%1</b>."},
    {&GeneralProperties::project_directory, "project_directory", Kind::String, "Project Directory", "", -239, 0, AllConfigurations, "Path of the project directory relative to the directory containing the project file. The macro $(ProjectDir) is set to the absolute path of this property."},
    {&GeneralProperties::project_dependencies, "project_dependencies", Kind::StringList, "Project Dependencies", "", -140, 0, 0, "Specifies the projects the current project depends upon."},
    {&GeneralProperties::project_can_build_in_parallel, "project_can_build_in_parallel", Kind::Enumeration, "Project Can Build In Parallel", "Default", -150, 0, 0, "Specifies that dependent projects can be built in parallel. Default is No for Staging and Combining project types, Yes for all other project types."},
    {&GeneralProperties::macros, "macros", Kind::StringList, "Project Macros", "", -210, 0, 0, "Specifies macro values which are expanded in project properties and for file names in Common configuration only. Each macro is defined as <b>name=value</b> and are seperated by <b>;</b>."},
    {&GeneralProperties::batch_build_configurations, "batch_build_configurations", Kind::StringList, "Batch Build Configurations", "", -160, 0, 0, "The set of configurations to batch build."},
    {&GeneralProperties::build_toolchain_directory, "build_toolchain_directory", Kind::DirPath, "Toolchain Directory", "$(AtelisDir)", -100, CompileC | CompileCpp | Assemble | Link, 0, "Specify the root of the toolchain directory. This property will have macro expansion applied to it. The macro $(ToolChainDir) is set to this value."},
    {&GeneralProperties::build_treat_warnings_as_errors, "build_treat_warnings_as_errors", Kind::Boolean, "Treat Warnings as Errors", "No", -170, CompileC | CompileCpp | Assemble | Link, 0, "Treat all warnings as errors."},
    {&GeneralProperties::build_suppress_warnings, "build_suppress_warnings", Kind::Boolean, "Suppress Warnings", "No", -180, CompileC | CompileCpp | Assemble | Link, 0, "Don't report warnings."},
    {&GeneralProperties::build_intermediate_directory, "build_intermediate_directory", Kind::DirPath, "Intermediate Directory", "Output/$(Configuration)/Obj/$(ProjectName)", -230, 0, 0, "Specifies a relative path to the intermediate file directory. This property will have macro expansion applied to it. The macro $(IntDir) is set to this value."},
    {&GeneralProperties::build_output_directory, "build_output_directory", Kind::DirPath, "Output Directory", "Output/$(Configuration)/Exe", -235, 0, 0, "Specifies a relative path to the output file directory. This property will have macro expansion applied to it. The macro $(OutDir) is set to this value. The macro $(RootRelativeOutDir) is set relative to the <b>Root Output Directory</b> if specified."},
    {&GeneralProperties::build_root_output_directory, "build_root_output_directory", Kind::DirPath, "Root Output Directory", "", -229, 0, 0, "Allows a common root output directory to be specified that can be referenced using the $(RootOutDir) macro."},
    {&GeneralProperties::build_object_file_name, "build_object_file_name", Kind::FileName, "Object File Name", "$(IntDir)/$(InputName)$(OBJ)", -224, 0, 0, "Specifies a name to override the default object file name."},
    {&GeneralProperties::build_output_file_name, "build_output_file_name", Kind::FileName, "Executable File Name", "$(OutDir)/$(ProjectName)$(EXE)", -225, 0, 0, "Specifies a name to override the default executable file name."},
    {&GeneralProperties::build_quietly, "build_quietly", Kind::Boolean, "Build Quietly", "Yes", -190, CompileC | CompileCpp | Assemble | Link, 0, "Suppress the display of startup banners and information messages."},
    {&GeneralProperties::build_debug_information, "build_debug_information", Kind::Boolean, "Include Debug Information", "Yes", -120, CompileC | CompileCpp | Assemble | Link, 0, "Specifies whether symbolic debug information is generated."},
    {&GeneralProperties::build_exclude_from_build, "build_exclude_from_build", Kind::Boolean, "Exclude From Build", "No", -1001, 0, 0, "Specifies whether or not to exclude the project/folder/file from the build."},
    {&GeneralProperties::build_always_rebuild, "build_always_rebuild", Kind::Boolean, "Always Rebuild", "No", -200, 0, 0, "Specifies whether or not to always rebuild the project/folder/file."},
    {&GeneralProperties::property_groups_file_path, "property_groups_file_path", Kind::ProjFileName, "Property Groups File", "", -80, 0, 0, "The file containing the property groups for this project. This is applicable to <b>Executable</b> and <b>Externally Built Executable</b> project types only."},
};

constexpr Row libraryRows[] = {
    {&GeneralProperties::library_output_file_name, "build_output_file_name", Kind::FileName, "Library File Name", "$(OutDir)/$(ProjectName)$(LIB)", -224, 0, 0, "Specifies a name to override the default library file name."},
};

constexpr Row stagingRows[] = {
    {&GeneralProperties::stage_output_filepath, "stage_output_filepath", Kind::String, "Output File Path", "$(OutDir)/$(RelInputPath)", 0, Stage, 0, "The output file path the stage command will create. This property will have macro expansion applied to it."},
    {&GeneralProperties::stage_command, "stage_command", Kind::Command, "Stage Command", "cp \"$(RelInputPath)\" \"$(StageOutputFilePath)\"", 0, Stage, 0, "The command to execute. This property will have macro expansion applied to it with the additional <b>$(StageOutputFilePath)</b> macro set to the output filepath of the stage command."},
    {&GeneralProperties::stage_command_wd, "stage_command_wd", Kind::String, "Stage Command Working Directory", "$(ProjectDir)", 0, Stage, 0, "The working directory in which the stage command is run. This property will have macro expansion applied to it."},
    {&GeneralProperties::stage_set_readonly, "stage_set_readonly", Kind::Enumeration, "Set To Read-only", "No", 0, Stage, 0, "Set the output file permissions to read only or read/write."},
    {&GeneralProperties::stage_post_build_command, "stage_post_build_command", Kind::Command, "Stage Project Command", "", 0, 0, 0, "The command to execute after staging commands have executed. This property will have macro expansion applied to it."},
    {&GeneralProperties::stage_post_build_command_wd, "stage_post_build_command_wd", Kind::String, "Stage Project Command Working Directory", "$(ProjectDir)", 0, 0, 0, "The working directory where the post build command runs. This property will have macro expansion applied to it."},
};

constexpr Row combiningRows[] = {
    {&GeneralProperties::combine_output_filepath, "combine_output_filepath", Kind::String, "Output File Path", "", 0, Combine, 0, "The output file path the stage command will create. This property will have macro expansion applied to it."},
    {&GeneralProperties::combine_command, "combine_command", Kind::Command, "Combine Command", "", 0, Combine, 0, "The command to execute. This property will have macro expansion applied to it with the macro <b>$(CombiningOutputFilePath)</b> set to the output filepath of the combine command and the macro <b>$(CombiningRelInputPaths)</b> is set to the (project relative) names of all of the files in the project."},
    {&GeneralProperties::combine_command_wd, "combine_command_wd", Kind::String, "Combine Command Working Directory", "$(ProjectDir)", 0, Combine, 0, "The working directory in which the combine command is run. This property will have macro expansion applied to it."},
    {&GeneralProperties::combine_set_readonly, "combine_set_readonly", Kind::Enumeration, "Set To Read-only", "No", 0, Combine, 0, "Set the output file to read only or read/write."},
};

constexpr Row userBuildStepRows[] = {
    {&GeneralProperties::pre_build_command, "pre_build_command", Kind::Command, "Pre-Build Command", "", 0, 0, 0, "The command to execute before a project build. This property will have macro expansion applied to it."},
    {&GeneralProperties::pre_build_command_wd, "pre_build_command_wd", Kind::String, "Pre-Build Command Working Directory", "$(ProjectDir)", 0, 0, 0, "The working directory in which the pre-build command is run. This property will have macro expansion applied to it."},
    {&GeneralProperties::pre_build_command_control, "pre_build_command_control", Kind::Enumeration, "Pre-Build Command Control", "Run When Build Required", 0, 0, 0, "Controls when the pre-build command is run, either <b>Always Run</b> or when <b>Run When Build Required</b>."},
    {&GeneralProperties::post_build_command, "post_build_command", Kind::Command, "Post-Build Command", "", 0, 0, 0, "The command to execute after a project build. This property will have macro expansion applied to it."},
    {&GeneralProperties::post_build_command_wd, "post_build_command_wd", Kind::String, "Post-Build Command Working Directory", "$(ProjectDir)", 0, 0, 0, "The working directory in which the post-build command is run. This property will have macro expansion applied to it."},
    {&GeneralProperties::post_build_command_control, "post_build_command_control", Kind::Enumeration, "Post-Build Command Control", "Run When Build Has Occurred", 0, 0, 0, "Controls when the post-build command is run, either <b>Always Run</b> or when <b>Run When Build Has Occurred</b>."},
};

constexpr PropertyTable<GeneralProperties> tables[] = {
    {"General", "Build Options", buildRows},
    {"General", "Library Options", libraryRows},
    {"General", "Staging Options", stagingRows},
    {"General", "Combining Options", combiningRows},
    {"General", "User Build Step Options", userBuildStepRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<GeneralProperties>> buildTables() {
    return tables;
}

}  // namespace properties
