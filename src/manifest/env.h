#pragma once

#include <string_view>

namespace manifest {

/// Where the variables of a value are looked up.
class Env {
public:
    Env() = default;
    Env(const Env&) = delete;
    Env& operator=(const Env&) = delete;
    virtual ~Env() = default;

    /// The value of the variable, empty when nobody defined it. Who implements it says how long the view
    /// lives.
    virtual std::string_view lookupVariable(std::string_view name) = 0;
};

}  // namespace manifest
