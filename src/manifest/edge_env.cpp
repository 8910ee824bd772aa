#include "manifest/edge_env.h"

#include "manifest/binding_env.h"
#include "manifest/edge.h"
#include "manifest/eval_string.h"
#include "manifest/limits.h"
#include "manifest/message.h"
#include "manifest/node.h"
#include "manifest/rule.h"

#include <algorithm>

namespace manifest {

void appendShellEscaped(std::string_view path, std::string* result) {
    if (path.find_first_of(" \"") == std::string_view::npos) {
        result->append(path);
        return;
    }
    std::size_t backslashes = 0;
    result->push_back('"');
    for (const char c : path) {
        if (c == '"') result->append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        result->push_back(c);
    }
    result->append(backslashes, '\\');
    result->push_back('"');
}

std::string_view EdgeEnv::lookupVariable(std::string_view name) {
    if (const auto found = expanded_.find(name); found != expanded_.end()) return found->second;
    const auto keep = [&](std::string text) -> std::string_view {
        return expanded_.emplace(name, std::move(text)).first->second;
    };
    if (name == "in") return keep(pathList(edge_.explicitInputs(), ' '));
    if (name == "in_newline") return keep(pathList(edge_.explicitInputs(), '\n'));
    if (name == "out") return keep(pathList(edge_.explicitOutputs(), ' '));
    return ruleVariable(name);
}

std::string_view EdgeEnv::ruleVariable(std::string_view name) {
    if (recursive_) checkForCycle(name);
    const EvalString* eval = edge_.rule()->binding(name);
    const bool recorded = recursive_ && eval != nullptr;
    if (recorded) lookups_.push_back(name);
    recursive_ = true;

    std::string buffer;
    std::string_view value = edge_.scope()->lookupWithFallback(name, eval, *this, &buffer);
    if (recorded) lookups_.pop_back();
    if (eval != nullptr) charge(value.size() + eval->size());
    const bool putTogether = value.data() == buffer.data();
    return putTogether ? expanded_.emplace(name, value).first->second : value;
}

void EdgeEnv::checkForCycle(std::string_view name) const {
    auto step = std::find(lookups_.begin(), lookups_.end(), name);
    if (step == lookups_.end()) return;
    std::string chain;
    for (; step != lookups_.end(); ++step) chain.append(*step).append(" -> ");
    fatal("cycle in rule variables: %s", chain.append(name).c_str());
}

std::string EdgeEnv::pathList(std::span<Node* const> nodes, char separator) {
    std::string result;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i > 0) result.push_back(separator);
        const std::string path = nodes[i]->writtenPath();
        if (mode_ == EscapeMode::Shell)
            appendShellEscaped(path, &result);
        else
            result.append(path);
        if (result.size() > maxExpandedBytes) break;
    }
    charge(result.size());
    return result;
}

void EdgeEnv::charge(std::size_t work) {
    work_ += work;
    if (work_ > maxExpandedBytes) fatal("expanded value is longer than %zu bytes", maxExpandedBytes);
}

}  // namespace manifest
