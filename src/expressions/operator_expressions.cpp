#include "expressions/operator_expressions.h"

#include "expressions/expression_parser.h"
#include "expressions/parser_exception.h"

#include <utility>

namespace expressions {

namespace {

[[noreturn]] void fail(const char* message) {
    throw ParserException(QString::fromLatin1(message));
}

constexpr const char* noNumericOperation = "unsupported binary numeric operation";
constexpr const char* divideByZero = "divide by zero";

template <class Integer>
Integer nonZero(Integer divisor) {
    if (divisor == 0) fail(divideByZero);
    return divisor;
}

std::uint64_t quotient(std::uint64_t left, std::uint64_t right, bool isSigned) {
    nonZero(right);
    if (!isSigned) return left / right;
    // The one quotient that is out of range, that of the least integer by -1, wraps.
    if (right == ~std::uint64_t{0}) return 0 - left;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(left) / static_cast<std::int64_t>(right));
}

std::uint64_t remainder(std::uint64_t left, std::uint64_t right, bool isSigned) {
    nonZero(right);
    if (!isSigned) return left % right;
    if (right == ~std::uint64_t{0}) return 0;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(left) % static_cast<std::int64_t>(right));
}

using Byte = std::uint32_t;
using Word = std::uint64_t;

}  // namespace

// clang-format off
const ArithmeticOperator plusOperator = {"+",
    [](Byte l, Byte r) -> Byte { return l + r != 0; },
    [](Word l, Word r, bool) { return l + r; },
    [](double l, double r) { return l + r; }};
const ArithmeticOperator minusOperator = {"-",
    [](Byte l, Byte r) -> Byte { return l != r; },
    [](Word l, Word r, bool) { return l - r; },
    [](double l, double r) { return l - r; }};
const ArithmeticOperator multiplyOperator = {"*",
    [](Byte l, Byte r) -> Byte { return l * r != 0; },
    [](Word l, Word r, bool) { return l * r; },
    [](double l, double r) { return l * r; }};
const ArithmeticOperator divideOperator = {"/",
    [](Byte l, Byte r) -> Byte { return l / nonZero(r) != 0; },
    quotient,
    [](double l, double r) { return l / r; }};
const ArithmeticOperator modOperator = {"%",
    [](Byte l, Byte r) -> Byte { return l % nonZero(r) != 0; },
    remainder, nullptr};
const ArithmeticOperator bitAndOperator = {"&",
    [](Byte l, Byte r) -> Byte { return l & r; },
    [](Word l, Word r, bool) { return l & r; }, nullptr};
const ArithmeticOperator bitOrOperator = {"|",
    [](Byte l, Byte r) -> Byte { return (l | r) != 0; },
    [](Word l, Word r, bool) { return l | r; }, nullptr};
const ArithmeticOperator bitXorOperator = {"^",
    [](Byte l, Byte r) -> Byte { return l != r; },
    [](Word l, Word r, bool) { return l ^ r; }, nullptr};
const ArithmeticOperator logicalAndOperator = {"&&",
    [](Byte l, Byte r) -> Byte { return l != 0 && r != 0; },
    [](Word l, Word r, bool) -> Word { return l != 0 && r != 0; }, nullptr};
const ArithmeticOperator logicalOrOperator = {"||",
    [](Byte l, Byte r) -> Byte { return l != 0 || r != 0; },
    [](Word l, Word r, bool) -> Word { return l != 0 || r != 0; }, nullptr};

const ComparisonOperator eqOperator = {"==", [](std::strong_ordering order) { return std::is_eq(order); }};
const ComparisonOperator neOperator = {"!=", [](std::strong_ordering order) { return std::is_neq(order); }};
const ComparisonOperator ltOperator = {"<", [](std::strong_ordering order) { return std::is_lt(order); }};
const ComparisonOperator leOperator = {"<=", [](std::strong_ordering order) { return std::is_lteq(order); }};
const ComparisonOperator gtOperator = {">", [](std::strong_ordering order) { return std::is_gt(order); }};
const ComparisonOperator geOperator = {">=", [](std::strong_ordering order) { return std::is_gteq(order); }};
// clang-format on

InfixExpression::InfixExpression(ExpressionParser& parser, const char* sign, ExpressionPtr left,
                                 ExpressionPtr right)
    : BinaryExpression(parser, std::move(left), std::move(right)), sign_(sign) {}

void InfixExpression::write(TextForm& form) const {
    form << "(" << left() << " " << sign_ << " " << right() << ")";
}

const Expression* InfixExpression::evaluatedOperand(std::size_t step) const {
    switch (step) {
        case 0:
            return &right();
        case 1:
            return &left();
        default:
            return nullptr;
    }
}

Value InfixExpression::combine(std::span<Value> values) const {
    const Value right = values[0].resolved();
    return combineSides(values[1].resolved(), right);
}

ArithmeticExpression::ArithmeticExpression(ExpressionParser& parser, const ArithmeticOperator& operation,
                                           ExpressionPtr left, ExpressionPtr right)
    : InfixExpression(parser, operation.sign, std::move(left), std::move(right)), operation_(operation) {}

Value ArithmeticExpression::combineSides(const Value& left, const Value& right) const {
    const bool isPromoted = operation_.floats && right.kind == ValueKind::Float && left.isNumber();
    switch (isPromoted ? ValueKind::Float : left.kind) {
        case ValueKind::Boolean:
            return {
                ValueKind::Boolean, operation_.bytes(left.toByte(), right.toByte()), left.size, 0, {}, {}};
        case ValueKind::Signed:
            return Value::ofSigned(static_cast<std::int64_t>(operation_.integers(
                                       static_cast<std::uint64_t>(left.toSigned()),
                                       static_cast<std::uint64_t>(right.toSigned()), true)),
                                   left.size);
        case ValueKind::Unsigned:
            return Value::ofUnsigned(operation_.integers(left.toUnsigned(), right.toUnsigned(), false),
                                     left.size);
        case ValueKind::Float:
            if (!operation_.floats) break;
            return Value::ofFloat(operation_.floats(left.toDouble(), right.toDouble()), left.size);
        default:
            break;
    }
    fail(noNumericOperation);
}

Value PlusExpression::combine(std::span<Value> values) const {
    const Value right = values[0].resolved();
    const Value& left = values[1];
    const bool isAddress = left.kind == ValueKind::Symbol && left.symbol && right.isInteger() &&
                           (parser().isPointer(*left.symbol) || parser().isArray(*left.symbol));
    if (isAddress) return parser().pointerAdd(*left.symbol, right.toSigned());
    return combineSides(left.resolved(), right);
}

void DivideExpression::accept(std::size_t step, Value& value) const {
    if (step != 0) return;
    value = value.resolved();
    if (!value.isNumber()) fail(noNumericOperation);
    const bool isZero = value.kind == ValueKind::Boolean ? value.toByte() == 0
                        : value.kind == ValueKind::Float ? value.toDouble() == 0
                                                         : value.data == 0;
    if (isZero) fail(divideByZero);
}

ComparisonExpression::ComparisonExpression(ExpressionParser& parser, const ComparisonOperator& operation,
                                           ExpressionPtr left, ExpressionPtr right)
    : InfixExpression(parser, operation.sign, std::move(left), std::move(right)), operation_(operation) {}

namespace {

std::strong_ordering compare(const Value& left, const Value& right) {
    switch (left.kind) {
        case ValueKind::Boolean:
            return left.toByte() <=> right.toByte();
        case ValueKind::Signed:
            return left.toSigned() <=> right.toSigned();
        case ValueKind::Unsigned:
            return left.toUnsigned() <=> right.toUnsigned();
        case ValueKind::String:
            return left.text.compare(right.text) <=> 0;
        default:
            fail("unsupported comparison operation");
    }
}

}  // namespace

Value ComparisonExpression::combineSides(const Value& left, const Value& right) const {
    return Value::ofBoolean(operation_.holds(compare(left, right)));
}

namespace {

/// The count of a shift, once both sides are found fit for one.
std::uint32_t shiftCount(const Value& left, const Value& right) {
    if (right.kind != ValueKind::Signed) fail("integer shift value expected");
    if (!left.isInteger()) fail("can only shift numeric values");
    return static_cast<std::uint32_t>(right.toSigned() & 63);
}

}  // namespace

LshiftExpression::LshiftExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right)
    : InfixExpression(parser, "<<", std::move(left), std::move(right)) {}

Value LshiftExpression::combineSides(const Value& left, const Value& right) const {
    const std::uint32_t count = shiftCount(left, right);
    if (left.kind == ValueKind::Unsigned) return Value::ofUnsigned(left.toUnsigned() << count, left.size);
    return Value::ofSigned(left.toSigned() << count, left.size);
}

RshiftExpression::RshiftExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right)
    : InfixExpression(parser, ">>", std::move(left), std::move(right)) {}

Value RshiftExpression::combineSides(const Value& left, const Value& right) const {
    const std::uint32_t count = shiftCount(left, right);
    if (left.kind == ValueKind::Unsigned) return Value::ofUnsigned(left.toUnsigned() >> count, left.size);
    return Value::ofSigned(left.toSigned() >> count, left.size);
}

namespace {

constexpr const char* noUnaryOperation = "unsupported unary num operation";

}  // namespace

void NegateExpression::write(TextForm& form) const {
    form << "NegateExpression";
    UnaryExpression::write(form);
}

Value NegateExpression::combine(std::span<Value> values) const {
    const Value operand = values[0].resolved();
    switch (operand.kind) {
        case ValueKind::Boolean:
        case ValueKind::Signed:
            return Value::ofSigned(
                static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(operand.toSigned())), operand.size);
        case ValueKind::Unsigned:
            return Value::ofUnsigned(0 - operand.toUnsigned(), operand.size);
        case ValueKind::Float:
            return Value::ofFloat(-operand.toDouble(), operand.size);
        default:
            fail(noUnaryOperation);
    }
}

void BitNotExpression::write(TextForm& form) const {
    form << "BitNotExpression";
    UnaryExpression::write(form);
}

Value BitNotExpression::combine(std::span<Value> values) const {
    const Value operand = values[0].resolved();
    switch (operand.kind) {
        case ValueKind::Signed:
            return Value::ofSigned(~operand.toSigned(), operand.size);
        case ValueKind::Unsigned:
            return Value::ofUnsigned(~operand.toUnsigned(), operand.size);
        default:
            fail(noUnaryOperation);
    }
}

void LogicalNotExpression::write(TextForm& form) const {
    form << "LogicalNotExpression";
    UnaryExpression::write(form);
}

Value LogicalNotExpression::combine(std::span<Value> values) const {
    const Value operand = values[0].resolved();
    switch (operand.kind) {
        case ValueKind::Boolean:
        case ValueKind::Signed:
            return Value::ofBoolean(operand.toSigned() == 0);
        case ValueKind::Unsigned:
            return Value::ofBoolean(operand.toUnsigned() == 0);
        case ValueKind::Float:
            return Value::ofBoolean(operand.toDouble() == 0);
        default:
            fail(noUnaryOperation);
    }
}

}  // namespace expressions
