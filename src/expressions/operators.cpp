#include "expressions/operators.h"

#include "expressions/leaf_expressions.h"
#include "expressions/operator_expressions.h"
#include "expressions/parser_exception.h"
#include "expressions/target_expressions.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace expressions {

namespace {

template <class Node>
ExpressionPtr make(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right) {
    return makeNode<Node>(parser, std::move(left), std::move(right));
}

template <class Operation>
ExpressionPtr makeCompound(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right) {
    ExpressionPtr target = left->clone();
    return make<AssignExpression>(parser, std::move(target),
                                  make<Operation>(parser, std::move(left), std::move(right)));
}

template <class Operation>
ExpressionPtr makeStep(ExpressionParser& parser, ExpressionPtr operand) {
    return makeCompound<Operation>(parser, std::move(operand),
                                   makeNode<IntegerConstantExpression>(parser, 1));
}

template <class Node>
ExpressionPtr makeUnary(ExpressionParser& parser, ExpressionPtr operand) {
    return makeNode<Node>(parser, std::move(operand));
}

ExpressionPtr makeNothing(ExpressionParser&, ExpressionPtr operand) {
    return operand;
}

/// What a pointer points to is its first element.
ExpressionPtr makeDereference(ExpressionParser& parser, ExpressionPtr operand) {
    return make<LeftSquareBracketExpression>(parser, std::move(operand),
                                             makeNode<ConstantExpression>(parser, Value::ofUnsigned(0, 2)));
}

struct BinaryRow {
    Token token;
    ExpressionPtr (*make)(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right);
};

constexpr BinaryRow binaryRows[] = {
    {Token::Star, make<MultiplyExpression>},
    {Token::Slash, make<DivideExpression>},
    {Token::Mod, make<ModExpression>},
    {Token::Plus, make<PlusExpression>},
    {Token::Minus, make<MinusExpression>},
    {Token::LShift, make<LshiftExpression>},
    {Token::RShift, make<RshiftExpression>},
    {Token::Lt, make<LtExpression>},
    {Token::Le, make<LeExpression>},
    {Token::Gt, make<GtExpression>},
    {Token::Ge, make<GeExpression>},
    {Token::Eq, make<EqExpression>},
    {Token::Ne, make<NeExpression>},
    {Token::BitAnd, make<BitAndExpression>},
    {Token::BitXor, make<BitXorExpression>},
    {Token::BitOr, make<BitOrExpression>},
    {Token::LogAnd, make<LogicalAndExpression>},
    {Token::LogOr, make<LogicalOrExpression>},
    {Token::Assign, make<AssignExpression>},
    {Token::PlusAssign, makeCompound<PlusExpression>},
    {Token::MinusAssign, makeCompound<MinusExpression>},
    {Token::StarAssign, makeCompound<MultiplyExpression>},
    {Token::DivAssign, makeCompound<DivideExpression>},
    {Token::ModAssign, makeCompound<ModExpression>},
    {Token::RShiftAssign, makeCompound<RshiftExpression>},
    {Token::LShiftAssign, makeCompound<LshiftExpression>},
    {Token::BitAndAssign, makeCompound<BitAndExpression>},
    {Token::BitXorAssign, makeCompound<BitXorExpression>},
    {Token::BitOrAssign, makeCompound<BitOrExpression>},
};

struct PrefixRow {
    Token token;
    ExpressionPtr (*make)(ExpressionParser& parser, ExpressionPtr operand);
};

constexpr PrefixRow prefixRows[] = {
    {Token::Increment, makeIncrement},
    {Token::Decrement, makeDecrement},
    {Token::BitNot, makeUnary<BitNotExpression>},
    {Token::LogNot, makeUnary<LogicalNotExpression>},
    {Token::Star, makeDereference},
    {Token::Plus, makeNothing},
    {Token::Minus, makeUnary<NegateExpression>},
    {Token::BitAnd, makeUnary<AddressofExpression>},
};

template <class Row, std::size_t size>
const Row* find(const Row (&rows)[size], Token token) {
    const Row* end = rows + size;
    const Row* found = std::find_if(rows, end, [token](const Row& row) { return row.token == token; });
    return found == end ? nullptr : found;
}

}  // namespace

ExpressionPtr makeBinary(ExpressionParser& parser, Token token, ExpressionPtr left, ExpressionPtr right) {
    const BinaryRow* row = find(binaryRows, token);
    if (!row) throw ParserException(QStringLiteral("operator not supported"));
    return row->make(parser, std::move(left), std::move(right));
}

bool isPrefixOperator(Token token) {
    return find(prefixRows, token) != nullptr;
}

ExpressionPtr makePrefix(ExpressionParser& parser, Token token, ExpressionPtr operand) {
    return find(prefixRows, token)->make(parser, std::move(operand));
}

ExpressionPtr makeIncrement(ExpressionParser& parser, ExpressionPtr operand) {
    return makeStep<PlusExpression>(parser, std::move(operand));
}

ExpressionPtr makeDecrement(ExpressionParser& parser, ExpressionPtr operand) {
    return makeStep<MinusExpression>(parser, std::move(operand));
}

}  // namespace expressions
