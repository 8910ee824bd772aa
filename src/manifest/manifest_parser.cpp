#include "manifest/manifest_parser.h"

#include "manifest/canonical_path.h"
#include "manifest/edge_env.h"
#include "manifest/limits.h"
#include "manifest/message.h"
#include "manifest/version_check.h"

#include <utility>

// The statements but `build`, and what all statements share. `build` has a file of its own.

namespace manifest {

ManifestParser::ManifestParser(State* state, FileReader* reader, DuplicateOutputAction duplicateOutputAction,
                               PhonyCycleAction phonyCycleAction, bool quiet)
    : state_(state),
      reader_(reader),
      duplicateOutputAction_(duplicateOutputAction),
      phonyCycleAction_(phonyCycleAction),
      quiet_(quiet),
      scope_(&state->bindings()) {}

ManifestParser::ManifestParser(const ManifestParser& includer, BindingEnv* scope)
    : state_(includer.state_),
      reader_(includer.reader_),
      duplicateOutputAction_(includer.duplicateOutputAction_),
      phonyCycleAction_(includer.phonyCycleAction_),
      quiet_(false),
      scope_(scope),
      includer_(&includer),
      depth_(includer.depth_ + 1) {}

bool ManifestParser::load(const std::string& fileName, std::string* error, const ManifestLexer* parent) {
    std::string contents;
    std::string problem;
    if (!readSource(fileName, &contents, &problem)) {
        const std::string text = "loading '" + fileName + "': " + problem;
        if (parent != nullptr) return parent->error(text, error);
        *error = text;
        return false;
    }
    fileName_ = fileName;
    // The lexer wants a NUL byte at the end, and a string has one behind its last byte.
    lexer_.start(fileName_, {contents.c_str(), contents.size() + 1});
    return parse(error);
}

bool ManifestParser::readSource(const std::string& fileName, std::string* contents, std::string* error) {
    if (refuseSource(fileName, error)) return false;
    if (reader_->readFile(fileName, contents, error) != FileReader::Status::Okay) return false;
    ++state_->consumption_.files;
    state_->consumption_.bytesRead += contents->size();
    return true;
}

bool ManifestParser::refuseSource(const std::string& fileName, std::string* error) const {
    for (const ManifestParser* file = includer_; file != nullptr; file = file->includer_) {
        if (file->fileName_ != fileName) continue;
        *error = "the file includes itself";
        return true;
    }
    if (depth_ > maxIncludeDepth)
        *error = "included more than " + std::to_string(maxIncludeDepth) + " files deep";
    else if (state_->consumption_.files >= maxFilesRead)
        *error = "more than " + std::to_string(maxFilesRead) + " files in one manifest";
    else if (state_->consumption_.bytesRead > maxBytesRead)
        *error = "more than " + std::to_string(maxBytesRead) + " bytes in one manifest";
    else
        return false;
    return true;
}

bool ManifestParser::parse(std::string* error) {
    for (;;) {
        const Token token = lexer_.readToken();
        if (token == Token::TEOF) return true;
        if (token != Token::NEWLINE && !parseStatement(token, error)) return false;
    }
}

bool ManifestParser::parseStatement(Token token, std::string* error) {
    switch (token) {
        case Token::RULE:
            return parseRule(error);
        case Token::POOL:
            return parsePool(error);
        case Token::BUILD:
            return parseBuild(error);
        case Token::DEFAULT:
            return parseDefault(error);
        case Token::IDENT:
            lexer_.unreadToken();
            return parseVariable(error);
        case Token::INCLUDE:
            return parseInclude(scope_, error);
        case Token::SUBNINJA:
            return parseInclude(state_->addScope(scope_), error);
        case Token::ERROR:
            return lexer_.error(lexer_.describeLastError(), error);
        default:
            return lexer_.error("unexpected " + std::string(tokenName(token)), error);
    }
}

bool ManifestParser::parseVariable(std::string* error) {
    std::string_view name;
    if (!parseLet(&name, &value_, error)) return false;
    const PooledString value = evaluateBinding(value_);
    if (name == "ninja_required_version") checkRequiredVersion(std::string(value.view()));
    scope_->addBinding(state_->strings().intern(name), value);
    return true;
}

bool ManifestParser::parseRule(std::string* error) {
    std::string_view name;
    if (!lexer_.readIdentifier(&name)) return lexer_.error("expected rule name", error);
    if (!expectToken(Token::NEWLINE, error)) return false;
    if (scope_->lookupRuleCurrentScope(name) != nullptr)
        return lexer_.error("duplicate rule '" + std::string(name) + "'", error);

    const PooledString pooledName = state_->strings().intern(name);
    Rule rule(pooledName.view());
    if (!parseRuleBindings(&rule, error)) return false;
    scope_->addRule(pooledName, state_->addRule(std::move(rule)));
    return true;
}

bool ManifestParser::parseRuleBindings(Rule* rule, std::string* error) {
    while (lexer_.peekToken(Token::INDENT)) {
        std::string_view key;
        if (!parseLet(&key, &value_, error)) return false;
        if (!Rule::isReservedBinding(key))
            return lexer_.error("unexpected variable '" + std::string(key) + "'", error);
        rule->addBinding(key, value_.persistedIn(state_->strings()));
    }
    const auto isEmpty = [rule](std::string_view key) {
        const EvalString* value = rule->binding(key);
        return value == nullptr || value->empty();
    };
    if (isEmpty("rspfile") != isEmpty("rspfile_content"))
        return lexer_.error("rspfile and rspfile_content need to be both specified", error);
    if (isEmpty("command")) return lexer_.error("expected 'command =' line", error);
    return true;
}

bool ManifestParser::parsePool(std::string* error) {
    std::string_view name;
    if (!lexer_.readIdentifier(&name)) return lexer_.error("expected pool name", error);
    if (!expectToken(Token::NEWLINE, error)) return false;
    if (state_->lookupPool(name) != nullptr)
        return lexer_.error("duplicate pool '" + std::string(name) + "'", error);

    std::int32_t depth = -1;
    if (!parsePoolDepth(&depth, error)) return false;
    state_->addPool(Pool(std::string(name), depth));
    return true;
}

bool ManifestParser::parsePoolDepth(std::int32_t* depth, std::string* error) {
    while (lexer_.peekToken(Token::INDENT)) {
        std::string_view key;
        if (!parseLet(&key, &value_, error)) return false;
        if (key != "depth") return lexer_.error("unexpected variable '" + std::string(key) + "'", error);
        *depth = toInteger(std::string(evaluate(value_, *scope_)));
        if (*depth < 0) return lexer_.error("invalid pool depth", error);
    }
    return *depth >= 0 || lexer_.error("expected 'depth =' line", error);
}

bool ManifestParser::parseDefault(std::string* error) {
    EvalString path;
    if (!lexer_.readPath(&path, error)) return false;
    if (path.empty()) return lexer_.error("expected target name", error);
    while (!path.empty()) {
        if (!evaluatePath(path, *scope_, error)) return false;
        std::string problem;
        if (!state_->addDefault(path_, &problem)) return lexer_.error(problem, error);
        path.clear();
        if (!lexer_.readPath(&path, error)) return false;
    }
    return expectToken(Token::NEWLINE, error);
}

bool ManifestParser::parseInclude(BindingEnv* scope, std::string* error) {
    EvalString path;
    if (!lexer_.readPath(&path, error)) return false;
    const std::string fileName(evaluate(path, *scope_));
    ManifestParser included(*this, scope);
    return included.load(fileName, error, &lexer_) && expectToken(Token::NEWLINE, error);
}

bool ManifestParser::parseLet(std::string_view* key, EvalString* value, std::string* error) {
    if (!lexer_.readIdentifier(key)) return lexer_.error("expected variable name", error);
    if (!expectToken(Token::EQUALS, error)) return false;
    value->clear();
    return lexer_.readValue(value, error);
}

bool ManifestParser::expectToken(Token expected, std::string* error) {
    const Token found = lexer_.readToken();
    if (found == expected) return true;
    std::string message = "expected ";
    message.append(tokenName(expected)).append(", got ").append(tokenName(found));
    return lexer_.error(message.append(tokenErrorHint(expected)), error);
}

/// Appends the paths up to the end of the list and counts them.
bool ManifestParser::readPaths(PathList* paths, std::size_t* count, std::string* error) {
    for (*count = 0;; ++*count) {
        EvalString& path = paths->add();
        if (!lexer_.readPath(&path, error)) return false;
        if (!path.empty()) continue;
        paths->removeLast();
        return true;
    }
}

/// The view is valid until the next evaluation.
std::string_view ManifestParser::evaluate(const EvalString& text, Env& scope) {
    const std::string_view value = text.evaluate(scope, &expanded_);
    if (text.size() > 1) chargeExpansion(value.size());
    return value;
}

PooledString ManifestParser::evaluateBinding(const EvalString& text) {
    return state_->strings().intern(evaluate(text, *scope_));
}

/// Sets `path_` and `slashBits_`.
bool ManifestParser::evaluatePath(const EvalString& text, Env& scope, std::string* error) {
    std::string problem;
    return canonicalizePath(evaluate(text, scope), &path_, &slashBits_, &problem) ||
           lexer_.error(problem, error);
}

std::string ManifestParser::edgeBinding(const Edge* edge, std::string_view name) {
    EdgeEnv env(*edge, EdgeEnv::EscapeMode::Shell);
    std::string value(env.lookupVariable(name));
    chargeExpansion(env.work());
    return value;
}

void ManifestParser::chargeExpansion(std::size_t bytes) {
    State::Consumption& consumption = state_->consumption_;
    consumption.bytesExpanded += bytes;
    const std::uint64_t limit = freeExpandedBytes + expandedBytesPerByteRead * consumption.bytesRead;
    if (consumption.bytesExpanded > limit)
        fatal("expanded values are longer than %llu bytes together", static_cast<unsigned long long>(limit));
}

}  // namespace manifest
