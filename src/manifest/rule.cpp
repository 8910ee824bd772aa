#include "manifest/rule.h"

#include <algorithm>
#include <array>

namespace manifest {

namespace {

constexpr std::array<std::string_view, 10> reservedNames = {
    "command", "depfile",         "description",      "deps", "generator", "pool", "restat",
    "rspfile", "rspfile_content", "msvc_deps_prefix",
};

}  // namespace

bool Rule::isReservedBinding(std::string_view name) {
    return std::find(reservedNames.begin(), reservedNames.end(), name) != reservedNames.end();
}

void Rule::addBinding(std::string_view name, EvalString value) {
    // The name in the table outlives every rule, whatever the caller's text does.
    const std::string_view key = *std::find(reservedNames.begin(), reservedNames.end(), name);
    for (auto& [bound, text] : bindings_) {
        if (bound != key) continue;
        text = std::move(value);
        return;
    }
    bindings_.emplace_back(key, std::move(value));
}

const EvalString* Rule::binding(std::string_view name) const {
    for (const auto& [bound, text] : bindings_)
        if (bound == name) return &text;
    return nullptr;
}

}  // namespace manifest
