#pragma once

#include "expressions/lexer.h"

namespace expressions {

/// The tokens of a C-like expression. No identifier stands for other text.
class CStyleLexer : public Lexer {
public:
    CStyleLexer();
    QString lookup(const QString& name) override;
};

}  // namespace expressions
