#pragma once

#include "manifest/eval_string.h"

#include <string_view>
#include <utility>
#include <vector>

namespace manifest {

/// How a kind of output is made. Its bindings are kept unexpanded, since they are expanded for each edge,
/// with
/// `$in` and `$out` known. The texts of name and bindings belong to the `State`.
class Rule {
public:
    explicit Rule(std::string_view name) : name_(name) {}

    std::string_view name() const { return name_; }

    /// Whether a rule may bind the name; there are ten.
    static bool isReservedBinding(std::string_view name);

    /// Sets or replaces. The name must be reserved.
    void addBinding(std::string_view name, EvalString value);

    /// The unexpanded value, or null.
    const EvalString* binding(std::string_view name) const;

private:
    std::string_view name_;
    std::vector<std::pair<std::string_view, EvalString>> bindings_;
};

}  // namespace manifest
