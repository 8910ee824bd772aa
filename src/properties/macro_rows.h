#pragma once

#include <span>

namespace properties {

/// A built-in macro by its bare name.
struct MacroRow {
    const char* name;
    const char* description;
};

/// The macros of every node, and those that are set only while a build step's command is expanded.
std::span<const MacroRow> generalMacros();
std::span<const MacroRow> buildStepMacros();

}  // namespace properties
