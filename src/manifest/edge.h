#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

class BindingEnv;
class Node;
class Pool;
class Rule;

/// One build statement: a rule that makes outputs from inputs. The `State` owns it and everything it points
/// at.
class Edge {
public:
    /// The lists live in `memory`, which outlives the edge.
    Edge(const Rule* rule, const Pool* pool, BindingEnv* scope, std::pmr::memory_resource* memory)
        : rule_(rule), pool_(pool), scope_(scope), inputs_(memory), outputs_(memory) {}

    const Rule* rule() const { return rule_; }
    const Pool* pool() const { return pool_; }

    /// The statement's own scope when it has bindings, else the scope of its file.
    BindingEnv* scope() const { return scope_; }

    /// All inputs: explicit, implicit, order-only.
    std::span<Node* const> inputs() const { return inputs_; }
    std::span<Node* const> explicitInputs() const;
    std::span<Node* const> implicitInputs() const;
    std::span<Node* const> orderOnlyInputs() const;

    /// All outputs: explicit, implicit.
    std::span<Node* const> outputs() const { return outputs_; }
    std::span<Node* const> explicitOutputs() const;
    std::span<Node* const> implicitOutputs() const;

    std::int32_t implicitInputCount() const { return implicitInputCount_; }
    std::int32_t orderOnlyInputCount() const { return orderOnlyInputCount_; }
    std::int32_t implicitOutputCount() const { return implicitOutputCount_; }

    /// The value of a variable for this edge, the rule's bindings expanded and paths escaped for the shell. A
    /// cycle among the rule's bindings and a value beyond `maxExpandedBytes` are fatal.
    std::string binding(std::string_view name) const;

    void setPool(const Pool* pool) { pool_ = pool; }
    void setScope(BindingEnv* scope) { scope_ = scope; }
    void setImplicitOutputCount(std::int32_t count) { implicitOutputCount_ = count; }
    void setInputCounts(std::int32_t implicitCount, std::int32_t orderOnlyCount);
    void reserve(std::size_t outputCount, std::size_t inputCount);

private:
    friend class State;

    const Rule* rule_;
    const Pool* pool_;
    BindingEnv* scope_;
    std::pmr::vector<Node*> inputs_;
    std::pmr::vector<Node*> outputs_;
    std::int32_t implicitInputCount_ = 0;
    std::int32_t orderOnlyInputCount_ = 0;
    std::int32_t implicitOutputCount_ = 0;
};

}  // namespace manifest
