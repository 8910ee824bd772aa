#include "manifest/manifest_parser.h"
#include "manifest/message.h"

#include <algorithm>
#include <string>

// The build statement, in the order in which it is worked off: the line, the indented bindings, then the edge
// with its pool, outputs and inputs, and the checks on the finished edge.

namespace manifest {

bool ManifestParser::parseBuild(std::string* error) {
    if (!readBuildLine(error) || !readBuildBindings(error)) return false;
    Edge* edge = state_->addEdge(build_.rule);
    edge->setScope(build_.bindings.empty() ? scope_ : makeStatementScope());
    if (!setPool(edge, error) || !addOutputs(edge, error)) return false;
    if (edge->outputs().empty()) {
        state_->removeLastEdge();
        return true;
    }
    if (!addInputs(edge, error)) return false;
    removeSelfReferences(edge);
    return checkDeps(edge, error);
}

bool ManifestParser::readBuildLine(std::string* error) {
    build_.outputs.clear();
    build_.inputs.clear();
    build_.implicitOutputs = build_.implicitInputs = build_.orderOnlyInputs = 0;

    std::size_t explicitCount = 0;
    if (!readPaths(&build_.outputs, &explicitCount, error)) return false;
    if (lexer_.peekToken(Token::PIPE) && !readPaths(&build_.outputs, &build_.implicitOutputs, error))
        return false;
    if (build_.outputs.size() == 0) return lexer_.error("expected path", error);
    if (!expectToken(Token::COLON, error)) return false;

    std::string_view rule;
    if (!lexer_.readIdentifier(&rule)) return lexer_.error("expected build command name", error);
    build_.rule = scope_->lookupRule(rule);
    if (build_.rule == nullptr) return lexer_.error("unknown build rule '" + std::string(rule) + "'", error);

    if (!readPaths(&build_.inputs, &explicitCount, error)) return false;
    if (lexer_.peekToken(Token::PIPE) && !readPaths(&build_.inputs, &build_.implicitInputs, error))
        return false;
    if (lexer_.peekToken(Token::PIPE2) && !readPaths(&build_.inputs, &build_.orderOnlyInputs, error))
        return false;
    return expectToken(Token::NEWLINE, error);
}

bool ManifestParser::readBuildBindings(std::string* error) {
    build_.bindings.clear();
    while (lexer_.peekToken(Token::INDENT)) {
        std::string_view key;
        if (!parseLet(&key, &value_, error)) return false;
        const PooledString value = evaluateBinding(value_);
        build_.bindings.push_back({state_->strings().intern(key), value});
    }
    return true;
}

BindingEnv* ManifestParser::makeStatementScope() {
    BindingEnv* scope = state_->addScope(scope_);
    scope->reserveBindings(build_.bindings.size());
    for (const auto& [name, value] : build_.bindings) scope->addBinding(name, value);
    return scope;
}

bool ManifestParser::setPool(Edge* edge, std::string* error) {
    const std::string name = edgeBinding(edge, "pool");
    if (name.empty()) return true;
    const Pool* pool = state_->lookupPool(name);
    if (pool == nullptr) return lexer_.error("unknown pool name '" + name + "'", error);
    edge->setPool(pool);
    return true;
}

bool ManifestParser::addOutputs(Edge* edge, std::string* error) {
    const std::size_t count = build_.outputs.size();
    const std::size_t explicitCount = count - build_.implicitOutputs;
    edge->reserve(count, build_.inputs.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!evaluatePath(build_.outputs[i], *edge->scope(), error)) return false;
        if (state_->addOutput(edge, path_, slashBits_)) continue;
        if (!refuseDuplicateOutput(error)) return false;
        if (i >= explicitCount) --build_.implicitOutputs;
    }
    edge->setImplicitOutputCount(static_cast<std::int32_t>(build_.implicitOutputs));
    return true;
}

bool ManifestParser::refuseDuplicateOutput(std::string* error) {
    if (duplicateOutputAction_ == DuplicateOutputAction::Error)
        return lexer_.error("multiple rules generate " + path_ + " [-w dupbuild=err]", error);
    if (!quiet_)
        warning(
            "multiple rules generate %s. builds involving this target will not be correct; "
            "continuing anyway [-w dupbuild=warn]",
            path_.c_str());
    return true;
}

bool ManifestParser::addInputs(Edge* edge, std::string* error) {
    for (std::size_t i = 0; i < build_.inputs.size(); ++i) {
        if (!evaluatePath(build_.inputs[i], *edge->scope(), error)) return false;
        state_->addInput(edge, path_, slashBits_);
    }
    edge->setInputCounts(static_cast<std::int32_t>(build_.implicitInputs),
                         static_cast<std::int32_t>(build_.orderOnlyInputs));
    return true;
}

void ManifestParser::removeSelfReferences(Edge* edge) {
    if (phonyCycleAction_ != PhonyCycleAction::Warn || edge->rule() != &State::phonyRule() ||
        edge->outputs().size() != 1 || edge->implicitOutputCount() != 0 || edge->implicitInputCount() != 0)
        return;
    Node* target = edge->outputs().front();
    const auto orderOnly = edge->orderOnlyInputs();
    const auto removedOrderOnly = std::count(orderOnly.begin(), orderOnly.end(), target);
    if (state_->removeInput(edge, target) == 0) return;
    edge->setInputCounts(0, edge->orderOnlyInputCount() - static_cast<std::int32_t>(removedOrderOnly));
    if (!quiet_)
        warning("phony target '%s' names itself as an input; ignoring [-w phonycycle=warn]",
                std::string(target->path()).c_str());
}

bool ManifestParser::checkDeps(const Edge* edge, std::string* error) {
    if (edgeBinding(edge, "deps").empty() || edge->outputs().size() < 2) return true;
    return lexer_.error(
        "multiple outputs aren't (yet?) supported by depslog; bring this up on the mailing list if it "
        "affects you",
        error);
}

}  // namespace manifest
