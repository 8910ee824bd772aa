#pragma once

#include "manifest/env.h"
#include "manifest/name_table.h"
#include "manifest/string_pool.h"

#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>

namespace manifest {

class EvalString;
class Rule;

/// A scope of variables and rules, of a file or of a build statement, with the scope round it as parent.
/// Values are evaluated text. The `State` owns the scopes and all that they point at.
class BindingEnv : public Env {
public:
    /// What the scope holds lives in `memory`, which outlives it. `parent` is null at the top level.
    BindingEnv(BindingEnv* parent, std::pmr::memory_resource* memory) : parent_(parent), bindings_(memory) {}

    BindingEnv* parent() const { return parent_; }

    /// The value in this scope, else the parent's answer, else the empty text. The view lives as long as the
    /// `State`, and equal values have the same data pointer.
    std::string_view lookupVariable(std::string_view name) override;

    /// Sets or replaces. Both texts are in the pool of the `State`.
    void addBinding(PooledString name, PooledString value) { bindings_.set(name, value); }

    /// Makes room for this many bindings, to the byte.
    void reserveBindings(std::size_t count) { bindings_.reserve(count); }

    /// Enters the rule under a name, which is the rule's own and in the pool of the `State`.
    void addRule(PooledString name, const Rule* rule);

    /// The rule of this scope alone, or null.
    const Rule* lookupRuleCurrentScope(std::string_view name) const;

    /// The rule of this scope or of the nearest parent that has one, or null.
    const Rule* lookupRule(std::string_view name) const;

    /// The value in this scope; without one, `eval` evaluated against `env` when it is given; else the
    /// parent's plain answer. `buffer` takes an evaluated text, and the view then lives as long as the
    /// buffer.
    std::string_view lookupWithFallback(std::string_view name, const EvalString* eval, Env& env,
                                        std::string* buffer);

private:
    BindingEnv* parent_;
    NameTable<PooledString> bindings_;
    /// Only files declare rules, and build statements by the million do not.
    std::unique_ptr<NameTable<const Rule*>> rules_;
};

}  // namespace manifest
