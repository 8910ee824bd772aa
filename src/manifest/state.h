#pragma once

#include "manifest/binding_env.h"
#include "manifest/edge.h"
#include "manifest/hash_index.h"
#include "manifest/node.h"
#include "manifest/path_hash.h"
#include "manifest/pool.h"
#include "manifest/rule.h"
#include "manifest/string_pool.h"
#include "support/huge_pages.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

/// The build graph of a manifest. A `ManifestParser` fills it; afterwards it is only read.
///
/// It owns everything: nodes, edges, rules, pools, the scopes of all files and statements, and all their
/// texts. Pointers and views that it hands out live as long as it does. Equal texts are held once. An
/// operation that can fail answers false and sets the error text.
class State {
public:
    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// The one built-in rule, "phony", which has no bindings. All `State` objects share it.
    static const Rule& phonyRule();
    /// The built-in pools: the one of every edge, unnamed and unbounded, and "console" of depth 1. All
    /// `State` objects share them.
    static const Pool& defaultPool();
    static const Pool& consolePool();

    // Reading the graph.

    /// The top-level scope of the manifest.
    BindingEnv& bindings() { return bindings_; }
    /// All edges in order of parsing.
    const std::vector<const Edge*>& edges() const { return edges_; }
    std::size_t nodeCount() const { return nodes_.size(); }
    /// The node of a canonical path, or null.
    Node* lookupNode(std::string_view path) const;
    /// The pool of that name, or null.
    const Pool* lookupPool(std::string_view name) const;

    /// Every output that feeds no edge, in order of parsing. When there are edges and no such output, the
    /// error is "could not determine root nodes of build graph"; otherwise the error stays as it is.
    std::vector<Node*> rootNodes(std::string* error) const;
    /// The targets of the `default` statements in order, with repeats; without any, the root nodes.
    std::vector<Node*> defaultNodes(std::string* error) const;

    // Filling it.

    /// A new edge with the default pool and the top-level scope.
    Edge* addEdge(const Rule* rule);
    /// Takes back the edge added last, which must not have inputs or outputs.
    void removeLastEdge();
    /// The node of a canonical path, created with these slash bits when it is missing.
    Node* getNode(std::string_view path, std::uint64_t slashBits);
    /// False, changing nothing, when the node has a producing edge already.
    bool addOutput(Edge* edge, std::string_view path, std::uint64_t slashBits);
    void addInput(Edge* edge, std::string_view path, std::uint64_t slashBits);
    /// Removes every input that is `node` from the edge that was added last, and that edge from the node's
    /// consumers. Answers how many went.
    std::size_t removeInput(Edge* edge, Node* node);
    /// False with the error "unknown target 'PATH'" when no such node exists yet.
    bool addDefault(std::string_view path, std::string* error);
    void addPool(Pool pool);
    /// Keeps the rule; the caller enters it in a scope.
    const Rule* addRule(Rule rule) { return &rules_.emplace_back(std::move(rule)); }
    /// A new scope, of a file or a build statement.
    BindingEnv* addScope(BindingEnv* parent) { return &scopes_.emplace_back(parent, &memory_); }

    /// Where names, values and the texts of rules live.
    StringPool& strings() { return strings_; }

private:
    friend class ManifestParser;

    /// What the limits on hostile input are measured on.
    struct Consumption {
        std::size_t files = 0;
        std::uint64_t bytesRead = 0;
        std::uint64_t bytesExpanded = 0;
    };

    std::string_view keepPath(std::string_view path);

    /// What grows by the million: texts, nodes, edges, scopes and their lists. It is freed at one stroke.
    std::pmr::monotonic_buffer_resource memory_{support::hugePageMemory()};
    StringPool strings_{memory_};
    std::pmr::deque<Node> nodes_{&memory_};
    HashIndex<Node*> nodesByPath_{hashPath};
    std::pmr::deque<Edge> edgeStore_{&memory_};
    std::vector<const Edge*> edges_;
    std::deque<Rule> rules_;
    std::pmr::deque<BindingEnv> scopes_{&memory_};
    std::deque<Pool> poolStore_;
    std::map<std::string_view, const Pool*> pools_;
    BindingEnv bindings_{nullptr, &memory_};
    std::vector<Node*> defaults_;
    Consumption consumption_;
};

}  // namespace manifest
