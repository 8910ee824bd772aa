#pragma once

#include "manifest/env.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

class Edge;
class Node;

/// The variables of one edge as a rule's bindings see them: `in`, `in_newline` and `out`, the statement's
/// variables, the rule's own bindings and the enclosing scopes. It lives on the stack for one query.
///
/// The reserved names bound the nesting, and a value put together from pieces is put together once, so the
/// work is that of the rule's text and the length of the values; a query whose values exceed
/// `maxExpandedBytes` together is fatal. So is a cycle.
class EdgeEnv : public Env {
public:
    enum class EscapeMode { Shell = 0, None };

    EdgeEnv(const Edge& edge, EscapeMode mode) : edge_(edge), mode_(mode) {}

    /// The view lives as long as this object.
    std::string_view lookupVariable(std::string_view name) override;

    /// Bytes and pieces that the query has put together so far.
    std::size_t work() const { return work_; }

private:
    std::string_view ruleVariable(std::string_view name);
    void checkForCycle(std::string_view name) const;
    std::string pathList(std::span<Node* const> nodes, char separator);
    void charge(std::size_t work);

    const Edge& edge_;
    EscapeMode mode_;
    bool recursive_ = false;
    std::vector<std::string_view> lookups_;  ///< names under expansion, outermost first
    std::map<std::string, std::string, std::less<>> expanded_;
    std::size_t work_ = 0;
};

/// Appends a path as the Windows command line takes it: as it stands, or in double quotes when it holds a
/// blank or a double quote, with backslashes doubled in front of a double quote.
void appendShellEscaped(std::string_view path, std::string* result);

}  // namespace manifest
