#include "properties/property_row.h"

namespace properties {

namespace {

// clang-format off
// member, key, kind, group, short name, default, order of the first, description
constexpr IndexedRow rows[] = {
    {&ToolProperties::external_debug_symbols_file_name, "external_debug_symbols_file_name", Kind::ProjFileName, "Debugger Options", "Debug Symbols File", "", 1, "The name of the debug symbols file. This property will have macro expansion applied to it. If it is not defined then the main load file is used."},
    {&ToolProperties::external_debug_symbols_load_address, "external_debug_symbols_load_address", Kind::String, "Debugger Options", "Debug Symbols Load Address", "", 2, "The (code) address to be added to the debug symbol (code) addresses."},
    {&ToolProperties::debug_additional_load_file, "debug_additional_load_file", Kind::ProjFileName, "Loader Options", "Additional Load File", "", -80, "Additional file to load on debug load. This property will have macro expansion applied to it."},
    {&ToolProperties::debug_additional_load_file_type, "debug_additional_load_file_type", Kind::Enumeration, "Loader Options", "Additional Load File Type", "Detect", -79, "The file type of the additional load file. The options are <b>%1</b>."},
    {&ToolProperties::debug_additional_load_file_address, "debug_additional_load_file_address", Kind::String, "Loader Options", "Additional Load File Address", "", -78, "The address to load the additional load file."},
};
// clang-format on

}  // namespace

std::span<const IndexedRow> indexedRows() {
    return rows;
}

}  // namespace properties
