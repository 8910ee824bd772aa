#include "properties/property_row.h"

namespace properties {

namespace {

using enum Step;
using enum RowFlag;
using Row = PropertyRow<ToolProperties>;

// clang-format off
// member, key, kind, short name, default, order, steps, flags, description
constexpr Row debuggerRows[] = {
    {&ToolProperties::debug_register_definition_file, "debug_register_definition_file", Kind::ProjFileName, "Register Definition File", "", -50, 0, 0, "The name of the file containing register definitions."},
    {&ToolProperties::external_start_address, "external_start_address", Kind::String, "Start Address", "", 0, 0, 0, "The address to start the externally built executable running from."},
    {&ToolProperties::debug_target_connection, "debug_target_connection", Kind::Enumeration, "Target Connection", "Simulator", -100, 0, 0, "Specifies the target to connect to for debugging actions."},
    {&ToolProperties::debug_working_directory, "debug_working_directory", Kind::DirPath, "Working Directory", "$(ProjectDir)", -20, 0, 0, "The working directory for a debug session. This property will have macro expansion applied to it."},
    {&ToolProperties::debug_command_arguments, "debug_command_arguments", Kind::String, "Command Arguments", "$(ProjectName)$(EXE)", -10, 0, 0, "The command arguments passed to the executable. This property will have macro expansion applied to it."},
    {&ToolProperties::debug_start_from_entry_point_symbol, "debug_start_from_entry_point_symbol", Kind::Boolean, "Start From Entry Point Symbol", "Yes", -70, 0, 0, "If yes the debugger will start execution from the entry point symbol.If no the debugger will start execution from the core specific location."},
    {&ToolProperties::debug_entry_point_symbol, "debug_entry_point_symbol", Kind::String, "Entry Point Symbol", "", 0, 0, 0, "Debugger will start execution at symbol if defined."},
    {&ToolProperties::debug_startup_completion_point, "debug_startup_completion_point", Kind::String, "Startup Completion Point", "main", -80, 0, 0, "Specifies the point in the program where startup is complete. Software breakpoints and debugIO will be enabled after this point has been reached."},
    {&ToolProperties::debug_load_additional_projects, "debug_load_additional_projects", Kind::StringList, "Load Additional Projects", "", 0, 0, 0, "The debugger will load the outputs of the specified additional projects."},
    {&ToolProperties::debug_dependent_projects, "debug_dependent_projects", Kind::StringList, "Debug Additional Projects", "No", 0, 0, 0, "The debugger will load (if not already loaded by Load Additional Projects) and debug the specified additional projects."},
    {&ToolProperties::debug_initial_breakpoint, "debug_initial_breakpoint", Kind::String, "Run To", "main", -90, 0, 0, "The initial breakpoint to set"},
    {&ToolProperties::debug_initial_breakpoint_set_option, "debug_initial_breakpoint_set_option", Kind::Enumeration, "Run To Control", "Always", -91, 0, 0, "Specify when the initial breakpoint should be set"},
    {&ToolProperties::debug_leave_target_running, "debug_leave_target_running", Kind::Boolean, "Leave Target Running", "No", -60, 0, NotFoundByKey, "Debugger will leave the target running on debug stop."},
    {&ToolProperties::debug_threads_script, "debug_threads_script", Kind::ProjFileName, "Threads Script File", "", -40, 0, 0, "The threads script used by the debugger."},
    {&ToolProperties::debug_threads_max, "debug_threads_max", Kind::IntegerRange, "Thread Maximum", "25", -30, 0, 0, "The maximum number of threads to display."},
    {&ToolProperties::debug_terminal_log_file, "debug_terminal_log_file", Kind::SaveFileName, "Debug Terminal Log File", "", -41, 0, 0, "A file to write the output from the debug terminal to."},
};

constexpr Row loaderRows[] = {
    {&ToolProperties::external_build_file_name, "external_build_file_name", Kind::ProjFileName, "Load File", "", -100, 0, 0, "The name of the main load file. This property will have macro expansion applied to it. If it is not defined then the output filepath of the linker command is used."},
    {&ToolProperties::external_load_address, "external_load_address", Kind::String, "Load File Address", "", -90, 0, 0, "The address to download the main load file to."},
    {&ToolProperties::external_load_file_type, "external_load_file_type", Kind::Enumeration, "Load File Type", "Detect", -95, 0, 0, "The file type of the main load file. The options are <b>%1</b>."},
};

constexpr PropertyTable<ToolProperties> tables[] = {
    {"Debugging", "Debugger Options", debuggerRows},
    {"Debugging", "Loader Options", loaderRows},
};
// clang-format on

}  // namespace

std::span<const PropertyTable<ToolProperties>> debuggerTables() {
    return tables;
}

}  // namespace properties
