#pragma once

#include "script/code_generator.h"
#include "script/context.h"
#include "script/limits.h"

namespace script {

/// A level of the tree that the generator follows by recursion, counted while it stands.
class ESCodeGenerator::Nesting {
public:
    Nesting(ESCodeGenerator& generator, const ESNode* node) : generator_(generator) {
        // Long chains of one operator nest to the left without having nested in the source.
        constexpr int treeDepth = 4 * limits::syntaxDepth;
        if (++generator.nesting_ > treeDepth)
            generator.refuse(node->line, QStringLiteral("source nested too deeply"));
        ESContext::checkNativeStack();
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --generator_.nesting_; }

private:
    ESCodeGenerator& generator_;
};

}  // namespace script
