#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<ToolProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row buildRows[] = {
    {&ToolProperties::build_dependency_file_name, "build_dependency_file_name", Kind::FileName, "Dependency File Name", "", -130, CompileC | CompileCpp | Assemble, 0, "The file name to contain the dependencies."},
    {&ToolProperties::build_generic_options_file_name, "build_generic_options_file_name", Kind::ProjFileName, "Build Options Generic File Name", "", 0, 0, 0, "The file name containing the generic options."},
    {&ToolProperties::build_remove_unused_symbols, "build_remove_unused_symbols", Kind::Boolean, "Enable Unused Symbol Removal", "Yes", -110, CompileC | CompileCpp | Link, 0, "Enable the removal of unused symbols from the executable."},
};

constexpr Row preprocessorRows[] = {
    {&ToolProperties::c_undefine_all_preprocessor_definitions, "c_undefine_all_preprocessor_definitions", Kind::Boolean, "Undefine All Preprocessor Definitions", "No", 0, CompileC | CompileCpp | Assemble, 0, "Does not define any standard preprocessor definitions."},
    {&ToolProperties::c_preprocessor_definitions, "c_preprocessor_definitions", Kind::StringList, "Preprocessor Definitions", "", 0, CompileC | CompileCpp | Assemble, 0, "Specifies one or more preprocessor definitions. This property will have macro expansion applied to it."},
    {&ToolProperties::c_preprocessor_undefinitions, "c_preprocessor_undefinitions", Kind::StringList, "Preprocessor Undefinitions", "", 0, CompileC | CompileCpp | Assemble, 0, "Specifies one or more preprocessor undefinitions. This property will have macro expansion applied to it."},
    {&ToolProperties::c_ignore_includes, "c_ignore_includes", Kind::Boolean, "Ignore Includes", "No", 0, CompileC | CompileCpp | Assemble, 0, "Ignore the include directories properties."},
    {&ToolProperties::c_system_include_directories, "c_system_include_directories", Kind::StringList, "System Include Directories", "$(AtelisIncDir:$(AtelisDir)/include)", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the system include path. This property will have macro expansion applied to it."},
    {&ToolProperties::c_user_include_directories, "c_user_include_directories", Kind::StringList, "User Include Directories", ".", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the user include path. This property will have macro expansion applied to it."},
};

constexpr Row compilerRows[] = {
    {&ToolProperties::c_enforce_ansi_checking, "c_enforce_ansi_checking", Kind::Boolean, "Enforce ANSI Checking", "No", -119, CompileC | CompileCpp, 0, "Perform additional checks for ensure strict conformance to the selected ISO (ANSI) C or C++ standard."},
    {&ToolProperties::c_additional_options, "c_additional_options", Kind::StringList, "Additional C/C++ Compiler Options", "", -105, CompileC | CompileCpp, 0, "Enables additional options to be supplied to the C/C++ compiler. This property will have macro expansion applied to it."},
    {&ToolProperties::c_additional_options_from_file, "c_additional_options_from_file", Kind::ProjFileName, "Additional C/C++ Compiler Options From File", "", -104, CompileC | CompileCpp, 0, "Enables additional options to be supplied to the C/C++ compiler from a file. This property will have macro expansion applied to it."},
    {&ToolProperties::c_only_additional_options, "c_only_additional_options", Kind::StringList, "Additional C Compiler Only Options", "", -103, CompileC, 0, "Enables additional options to be supplied to the C compiler only. This property will have macro expansion applied to it."},
    {&ToolProperties::c_only_additional_options_from_file, "c_only_additional_options_from_file", Kind::ProjFileName, "Additional C Compiler Only Options From File", "", -102, CompileC, 0, "Enables additional options to be supplied to the C compiler only from a file. This property will have macro expansion applied to it."},
    {&ToolProperties::cpp_only_additional_options, "cpp_only_additional_options", Kind::StringList, "Additional C++ Compiler Only Options", "", -101, CompileCpp, 0, "Enables additional options to be supplied to the C++ compiler only. This property will have macro expansion applied to it."},
    {&ToolProperties::cpp_only_additional_options_from_file, "cpp_only_additional_options_from_file", Kind::ProjFileName, "Additional C++ Compiler Only Options From File", "", -100, CompileCpp, 0, "Enables additional options to be supplied to the C++ compiler only from a file. This property will have macro expansion applied to it."},
    {&ToolProperties::c_additional_options_backup, "c_additional_options_backup", Kind::String, "Backup Additional Compiler Options", "", 0, 0, 0, "Value of additional compiler options prior to generic options processing"},
    {&ToolProperties::c_only_additional_options_backup, "c_only_additional_options_backup", Kind::String, "Backup Additional C Compiler Only Options", "", 0, 0, 0, "Value of additional C compiler options prior to generic options processing"},
    {&ToolProperties::cpp_only_additional_options_backup, "cpp_only_additional_options_backup", Kind::String, "Backup Additional C++ Compiler Only Options", "", 0, 0, 0, "Value of additional C++ compiler options prior to generic options processing"},
    {&ToolProperties::c_files_are_cpp, "c_files_are_cpp", Kind::Boolean, "Compile C Files As C++", "No", 0, 0, 0, "Compile files that have the .c extension with the C++ compiler."},
};

constexpr Row codeGenerationRows[] = {
    {&ToolProperties::cpp_enable_exceptions, "cpp_enable_exceptions", Kind::Boolean, "Enable Exception Support", "No", 0, CompileCpp, 0, "Specifies whether exception support is enabled for C++ programs."},
    {&ToolProperties::cpp_enable_rtti, "cpp_enable_rtti", Kind::Boolean, "Enable RTTI Support", "No", 0, CompileCpp, 0, "Specifies whether RTTI support is enabled for C++ programs."},
};

constexpr Row assemblerRows[] = {
    {&ToolProperties::asm_additional_options, "asm_additional_options", Kind::StringList, "Additional Assembler Options", "", 0, Assemble, 0, "Enables additional options to be supplied to the assembler. This property will have macro expansion applied to it."},
    {&ToolProperties::asm_additional_options_from_file, "asm_additional_options_from_file", Kind::ProjFileName, "Additional Assembler Options From File", "", 0, Assemble, 0, "Enables additional options to be supplied to the assembler from a file. This property will have macro expansion applied to it."},
    {&ToolProperties::asm_generate_listing_file, "asm_generate_listing_file", Kind::Boolean, "Generate Assembler Listing File", "No", 0, Assemble, 0, "An assembler listing file is generated which can be found in the Ouput Files folder"},
    {&ToolProperties::asm_additional_options_backup, "asm_additional_options_backup", Kind::String, "Backup Additional Assembler Options", "", 0, 0, 0, "Value of additional assembler options prior to generic options processing."},
};

constexpr Row sectionRows[] = {
    {&ToolProperties::default_code_section, "default_code_section", Kind::String, "Code Section Name", ".text", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the program code section."},
    {&ToolProperties::default_data_section, "default_data_section", Kind::String, "Data Section Name", ".data", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the initialized, writable data section."},
    {&ToolProperties::default_zeroed_section, "default_zeroed_section", Kind::String, "Zeroed Section Name", ".bss", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the zero-initialized, writable data section."},
    {&ToolProperties::default_const_section, "default_const_section", Kind::String, "Constant Section Name", ".rodata", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the read-only constant section."},
    {&ToolProperties::default_vector_section, "default_vector_section", Kind::String, "Vector Section Name", ".vectors", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the interrupt vector section."},
    {&ToolProperties::default_isr_section, "default_isr_section", Kind::String, "ISR Section Name", ".text", 0, CompileC | CompileCpp | Assemble, 0, "Specifies the default name to use for the ISR code."},
};

constexpr Row codeAnalyzerRows[] = {
    {&ToolProperties::analyze_after_compile, "analyze_after_compile", Kind::Boolean, "Analyze After Compile", "No", 0, 0, 0, "Run the static code analyzer after compile"},
    {&ToolProperties::clang_tidy_checks_c, "clang_tidy_checks_c", Kind::StringList, "Clang Tidy Checks C", "clang-analyzer-*;-clang-analyzer-cplusplus*", 0, 0, 0, "Checks to supply to clang-tidy for C source files."},
    {&ToolProperties::clang_tidy_checks_cpp, "clang_tidy_checks_cpp", Kind::StringList, "Clang Tidy Checks C++", "clang-analyzer-*", 0, 0, 0, "Checks to supply to clang-tidy for C++ source files."},
};

constexpr Row userBuildStepRows[] = {
    {&ToolProperties::compile_pre_build_command, "compile_pre_build_command", Kind::Command, "Pre-Compile Command", "", 0, CompileC | CompileCpp | Assemble, 0, "A command to run before the compile command. This property will have macro expansion applied to it."},
    {&ToolProperties::compile_pre_build_command_output_file_name, "compile_pre_build_command_output_file_name", Kind::String, "Pre-Compile Command Output File Path", "", 0, CompileC | CompileCpp | Assemble, 0, "The pre-compile generated file name. This property will have macro expansion applied to it."},
    {&ToolProperties::compile_pre_build_command_wd, "compile_pre_build_command_wd", Kind::DirPath, "Pre-Compile Working Directory", "$(ProjectDir)", 0, CompileC | CompileCpp | Assemble, 0, "The working directory where the pre-compile command is run. This property will have macro expansion applied to it."},
    {&ToolProperties::compile_post_build_command, "compile_post_build_command", Kind::Command, "Post-Compile Command", "", 0, CompileC | CompileCpp | Assemble, 0, "A command to run after the compile command has completed. This property will have macro expansion applied to it with the additional <b>$(TargetPath)</b> macro set to the output filepath of the compiler command."},
    {&ToolProperties::compile_post_build_command_wd, "compile_post_build_command_wd", Kind::DirPath, "Post-Compile Working Directory", "$(ProjectDir)", 0, CompileC | CompileCpp | Assemble, 0, "The working directory where the post-compile command is run. This property will have macro expansion applied to it."},
};

constexpr PropertyTable<ToolProperties> tables[] = {
    {"General", "Build Options", buildRows},
    {"C/C++", "Preprocessor Options", preprocessorRows},
    {"C/C++", "Compiler Options", compilerRows},
    {"C/C++", "Code Generation Options", codeGenerationRows},
    {"C/C++", "Assembler Options", assemblerRows},
    {"C/C++", "Section Options", sectionRows},
    {"C/C++", "Code Analyzer Options", codeAnalyzerRows},
    {"C/C++", "User Build Step Options", userBuildStepRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<ToolProperties>> compilerTables() {
    return tables;
}

}  // namespace properties
