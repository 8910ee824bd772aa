#include "manifest/state.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace manifest {

namespace {

std::string_view pathOf(const Node* node) {
    return node->path();
}

}  // namespace

State::State() {
    bindings_.addRule(strings_.intern(phonyRule().name()), &phonyRule());
    for (const Pool* pool : {&defaultPool(), &consolePool()}) pools_.emplace(pool->name(), pool);
}

const Rule& State::phonyRule() {
    static const Rule rule("phony");
    return rule;
}

const Pool& State::defaultPool() {
    static const Pool pool("", 0);
    return pool;
}

const Pool& State::consolePool() {
    static const Pool pool("console", 1);
    return pool;
}

Node* State::lookupNode(std::string_view path) const {
    return nodesByPath_.find(path, pathOf);
}

const Pool* State::lookupPool(std::string_view name) const {
    const auto found = pools_.find(name);
    return found == pools_.end() ? nullptr : found->second;
}

std::vector<Node*> State::rootNodes(std::string* error) const {
    std::vector<Node*> roots;
    for (const Edge* edge : edges_)
        std::copy_if(edge->outputs().begin(), edge->outputs().end(), std::back_inserter(roots),
                     [](const Node* output) { return output->consumerEdges().empty(); });
    if (!edges_.empty() && roots.empty()) *error = "could not determine root nodes of build graph";
    return roots;
}

std::vector<Node*> State::defaultNodes(std::string* error) const {
    return defaults_.empty() ? rootNodes(error) : defaults_;
}

Edge* State::addEdge(const Rule* rule) {
    Edge& edge = edgeStore_.emplace_back(rule, &defaultPool(), &bindings_, &memory_);
    edges_.push_back(&edge);
    return &edge;
}

void State::removeLastEdge() {
    edges_.pop_back();
    edgeStore_.pop_back();
}

Node* State::getNode(std::string_view path, std::uint64_t slashBits) {
    if (Node* node = lookupNode(path)) return node;
    Node* node = &nodes_.emplace_back(keepPath(path), slashBits, &memory_);
    nodesByPath_.insert(node, pathOf);
    return node;
}

std::string_view State::keepPath(std::string_view path) {
    if (path.empty()) return {};
    auto* bytes = static_cast<char*>(memory_.allocate(path.size(), alignof(char)));
    std::memcpy(bytes, path.data(), path.size());
    return {bytes, path.size()};
}

bool State::addOutput(Edge* edge, std::string_view path, std::uint64_t slashBits) {
    Node* node = getNode(path, slashBits);
    if (node->producingEdge_ != nullptr) return false;
    edge->outputs_.push_back(node);
    node->producingEdge_ = edge;
    return true;
}

void State::addInput(Edge* edge, std::string_view path, std::uint64_t slashBits) {
    Node* node = getNode(path, slashBits);
    edge->inputs_.push_back(node);
    node->consumerEdges_.push_back(edge);
}

std::size_t State::removeInput(Edge* edge, Node* node) {
    const std::size_t removed = std::erase(edge->inputs_, node);
    // Nobody has consumed the node since this edge, so its entries stand at the end.
    node->consumerEdges_.resize(node->consumerEdges_.size() - removed);
    return removed;
}

bool State::addDefault(std::string_view path, std::string* error) {
    Node* node = lookupNode(path);
    if (node == nullptr) {
        *error = "unknown target '" + std::string(path) + "'";
        return false;
    }
    defaults_.push_back(node);
    return true;
}

void State::addPool(Pool pool) {
    const Pool& kept = poolStore_.emplace_back(std::move(pool));
    pools_.insert_or_assign(kept.name(), &kept);
}

}  // namespace manifest
