#pragma once

#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

class Edge;

/// A file of the build graph, one for each distinct canonical path. The `State` owns it and its path, and it
/// stays at its address as long as the `State` lives.
class Node {
public:
    /// The list of consumers lives in `memory`, which outlives the node.
    Node(std::string_view path, std::uint64_t slashBits, std::pmr::memory_resource* memory)
        : path_(path), slashBits_(slashBits), consumerEdges_(memory) {}

    /// The canonical path, with forward slashes only.
    std::string_view path() const { return path_; }

    /// Bit i is set when the i-th slash of the path was a backslash at the first mention.
    std::uint64_t slashBits() const { return slashBits_; }

    /// The path with its backslashes put back.
    std::string writtenPath() const;

    /// The edge that outputs this node; null for a source file.
    Edge* producingEdge() const { return producingEdge_; }

    /// The edges that have this node as input, in order of parsing, one entry for each mention.
    std::span<Edge* const> consumerEdges() const { return consumerEdges_; }

private:
    friend class State;

    std::string_view path_;
    std::uint64_t slashBits_;
    Edge* producingEdge_ = nullptr;
    std::pmr::vector<Edge*> consumerEdges_;
};

}  // namespace manifest
