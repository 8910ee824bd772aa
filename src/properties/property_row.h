#pragma once

#include "properties/build_kind.h"
#include "properties/property_class.h"
#include "properties/property_members.h"

#include <cstdint>
#include <span>

/// The form of the schema's fixed tables, which read like their documentation.
namespace properties {

/// The kinds of build step that a change of a property makes out of date, as bits.
enum Step : std::uint32_t {
    CompileC = 1U << static_cast<unsigned>(BuildKind::CompileC),
    CompileCpp = 1U << static_cast<unsigned>(BuildKind::CompileCpp),
    Assemble = 1U << static_cast<unsigned>(BuildKind::Assemble),
    Link = 1U << static_cast<unsigned>(BuildKind::Link),
    Archive = 1U << static_cast<unsigned>(BuildKind::Archive),
    Stage = 1U << static_cast<unsigned>(BuildKind::Stage),
    Combine = 1U << static_cast<unsigned>(BuildKind::Combine),
};

enum RowFlag : std::uint32_t {
    ReadOnly = 1,
    AllConfigurations = 2,  ///< one value for all, stored in "Common"
    NotFoundByKey = 4,      ///< reached through its member only
};

/// One property. Texts are UTF-8; in the description "%1" stands for the values, joined by ", ".
template <typename Members>
struct PropertyRow {
    PropertyClass* Members::*member;
    const char* key;
    Kind kind;
    const char* shortName;
    const char* defaultValue;
    int order;
    std::uint32_t steps;
    std::uint32_t flags;
    const char* description;
};

/// The properties under one heading of one page.
template <typename Members>
struct PropertyTable {
    const char* page;
    const char* group;
    std::span<const PropertyRow<Members>> rows;
};

/// Four properties that differ in their index. The first has the key alone, the others the index behind it;
/// an order is `orderOfFirst` plus four times the index.
struct IndexedRow {
    ToolProperties::Indexed ToolProperties::*member;
    const char* key;
    Kind kind;
    const char* group;
    const char* shortName;
    const char* defaultValue;
    int orderOfFirst;
    const char* description;
};

// The tables in the order in which their classes are made.
std::span<const PropertyTable<GeneralProperties>> generalTables();
std::span<const PropertyTable<GeneralProperties>> buildTables();
std::span<const IndexedRow> indexedRows();
std::span<const PropertyTable<ToolProperties>> compilerTables();
std::span<const PropertyTable<ToolProperties>> linkerTables();
std::span<const PropertyTable<ToolProperties>> debuggerTables();
std::span<const PropertyTable<ToolProperties>> externalBuildTables();

}  // namespace properties
