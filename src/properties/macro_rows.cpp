#include "properties/macro_rows.h"

namespace properties {

namespace {

// clang-format off
constexpr MacroRow general[] = {
    {"Configuration", "The build configuration e.g. ARM Flash Debug."},
    {"EXE", "The default file extension for an executable file including the dot e.g. .elf."},
    {"FolderName", "The folder name of the containing folder."},
    {"FolderPath", "The folder path of the containing folders."},
    {"InputDir", "The absolute directory of the input file."},
    {"InputExt", "The extension of an input file not including the dot e.g cpp."},
    {"InputFileName", "The name of an input file relative to the project directory."},
    {"InputName", "The name of an input file relative to the project directory without the extension."},
    {"InputPath", "The absolute name of an input file including the extension."},
    {"IntDir", "The macro-expanded value of the <b>Intermediate Directory</b> project property."},
    {"LIB", "The default file extension for a library file including the dot e.g. .lib."},
    {"OBJ", "The default file extension for an object file including the dot e.g. .o."},
    {"OutDir", "The macro-expanded value of the <b>Output Directory</b> project property."},
    {"PackageExt", "The file extension of a package file e.g. qxPackage."},
    {"ProjectDir", "The absolute value of the <b>Project Directory</b> project property of the current proje ct. If this isn't set then the directory containing the solution file."},
    {"ProjectName", "The project name of the current project."},
    {"ProjectNodeName", "The name of the selected project node."},
    {"RootOutDir", "The macro-expanded value of the <b>Root Output Directory</b> project property."},
    {"RootRelativeOutDir", "The relative path to get from the path specified by the <b>Output Directory</b> project property to the path specified by the <b>Root Output Directory</b> project property."},
    {"RelInputPath", "The relative path to the input file from the project directory or the full path if not relative."},
    {"RelInputDir", "The relative path to the directory containing the input file from the project directory or dot if not relative."},
    {"SolutionDir", "The absolute path of the directory containing the solution file."},
    {"SolutionExt", "The extension of the solution file without the dot."},
    {"SolutionFileName", "The filename of the solution file."},
    {"SolutionName", "The basename of the solution file."},
    {"SolutionPath", "The absolute path of the solution file."},
    {"ToolChainDir", "The macro-expanded value of the <b>Toolchain Directory</b> project property."},
};

constexpr MacroRow ofBuildSteps[] = {
    {"CombiningOutputFilePath", "The full path of the output file of the combining command."},
    {"CombiningRelInputPaths", "The relative inputs to the combining command."},
    {"StageOutputFilePath", "The full path of the output file of the stage command."},
    {"TargetPath", "The full path of the output file of the link or compile command."},
    {"RelTargetPath", "The project directory relative path of the output file of the link or compile command."},
    {"PostLinkOutputFilePath", "The full path of the output file of the post link command."},
    {"MapPath", "The full path of the map file of the external link command."},
    {"RelMapPath", "The relative path of the map file of the external link command."},
    {"DependencyPath", "The path of the dependency file for the external compile command."},
    {"RelDependencyPath", "The relative path of the dependency file for the external compile command."},
    {"Defines", "The preprocessor defines property value for the external compile command."},
    {"Includes", "The user includes property value for the external compile command."},
    {"Undefines", "The preprocessor undefines property value for the external compile command."},
    {"Objects", "A space seperated list of files for the external archive or link command."},
    {"ObjectsFilePath", "The full path containing the files for the external archive or link command."},
    {"RelObjectsFilePath", "The relative path containing the files for the external archive or link command."},
    {"LinkerScriptPath", "The full path of the linker script file for the link command."},
    {"RelLinkerScriptPath", "The relative path of the linker script file for the link command."},
    {"AsmOptions", "A space seperated list of assembler options for the external assemble command."},
    {"COptions", "A space seperated list of compiler options for the external c and c++ compile commands."},
    {"COnlyOptions", "A space seperated list of compiler options for the external c compile command."},
    {"CppOnlyOptions", "A space seperated list of compiler options for the external c++ compile command."},
    {"LinkOptions", "A space seperated list of compiler options for the external link command."},
    {"CLANGTIDY", "The path to the clang-tidy command."},
};
// clang-format on

}  // namespace

std::span<const MacroRow> generalMacros() {
    return general;
}

std::span<const MacroRow> buildStepMacros() {
    return ofBuildSteps;
}

}  // namespace properties
