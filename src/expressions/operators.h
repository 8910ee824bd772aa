#pragma once

#include "expressions/expression.h"
#include "expressions/token.h"

/// Which node each operator token makes.
namespace expressions {

/// The node of a binary operator. Raises `ParserException` for a token that is none.
ExpressionPtr makeBinary(ExpressionParser& parser, Token token, ExpressionPtr left, ExpressionPtr right);

bool isPrefixOperator(Token token);
/// The node of a prefix operator.
ExpressionPtr makePrefix(ExpressionParser& parser, Token token, ExpressionPtr operand);

/// "++" and "--", behind or in front of their operand: it is assigned one more or one less.
ExpressionPtr makeIncrement(ExpressionParser& parser, ExpressionPtr operand);
ExpressionPtr makeDecrement(ExpressionParser& parser, ExpressionPtr operand);

}  // namespace expressions
