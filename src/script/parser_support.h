#pragma once

#include "script/context.h"
#include "script/limits.h"
#include "script/parser.h"

namespace script {

/// A level of nested syntax, counted while it stands.
class ESParser::Nesting {
public:
    explicit Nesting(ESParser& parser) : parser_(parser) {
        if (++parser.nesting_ > limits::syntaxDepth)
            parser.throwSyntaxError(QStringLiteral("source nested too deeply"));
        ESContext::checkNativeStack();
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --parser_.nesting_; }

private:
    ESParser& parser_;
};

/// A list of nodes that grows at its end.
class NodeList {
public:
    void append(ESNode* node) {
        (last_ != nullptr ? last_->next : first_) = node;
        last_ = node;
        hasEffects_ = hasEffects_ || node->hasEffects;
    }
    ESNode* first() const { return first_; }
    bool hasEffects() const { return hasEffects_; }

private:
    ESNode* first_ = nullptr;
    ESNode* last_ = nullptr;
    bool hasEffects_ = false;
};

}  // namespace script
