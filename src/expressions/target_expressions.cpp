#include "expressions/target_expressions.h"

#include "expressions/expression_parser.h"
#include "expressions/leaf_expressions.h"
#include "expressions/parser_exception.h"

#include <utility>

namespace expressions {

namespace {

constexpr const char* badType = "bad expression type";

Symbol& symbolOf(const Value& value, const char* message = badType) {
    if (value.kind != ValueKind::Symbol || !value.symbol) throw ParserException(QString::fromLatin1(message));
    return *value.symbol;
}

void expectInteger(const Value& value, const char* message) {
    if (value.kind != ValueKind::Signed) throw ParserException(QString::fromLatin1(message));
}

/// What stands in a symbol; any other value as it is.
Value read(ExpressionParser& parser, const Value& value) {
    return value.kind == ValueKind::Symbol ? parser.readSymbol(symbolOf(value)) : value;
}

}  // namespace

void LeftSquareBracketExpression::write(TextForm& form) const {
    form << left() << "[" << right() << "]";
}

void LeftSquareBracketExpression::accept(std::size_t step, Value& value) const {
    if (step == 0) symbolOf(value);
}

Value LeftSquareBracketExpression::combine(std::span<Value> values) const {
    const Value index = read(parser(), values[1]);
    if (index.kind == ValueKind::None) throw ParserException(QStringLiteral("bad index type"));
    return parser().index(symbolOf(values[0]), index.toSigned());
}

ExpressionPtr LeftSquareBracketExpression::cloneWith(std::span<ExpressionPtr> operands) const {
    return makeNode<LeftSquareBracketExpression>(parser(), std::move(operands[0]), std::move(operands[1]));
}

void DotExpression::write(TextForm& form) const {
    form << left() << "." << right();
}

const Expression* DotExpression::evaluatedOperand(std::size_t step) const {
    return step == 0 ? &left() : nullptr;
}

Value DotExpression::combine(std::span<Value> values) const {
    Symbol& symbol = symbolOf(values[0]);
    if (const auto* name = dynamic_cast<const IdentifierExpression*>(&right()))
        return parser().member(symbol, name->name());
    if (const auto* scoped = dynamic_cast<const ScopedIdentifierExpression*>(&right()))
        return parser().scopedMember(symbol, scoped->names());
    return {};
}

ExpressionPtr DotExpression::cloneWith(std::span<ExpressionPtr> operands) const {
    return makeNode<DotExpression>(parser(), std::move(operands[0]), std::move(operands[1]));
}

void PtrToMemberExpression::write(TextForm& form) const {
    form << left() << ".*" << right();
}

Value PtrToMemberExpression::combine(std::span<Value> values) const {
    return parser().pointerToMember(symbolOf(values[0]), symbolOf(values[1]));
}

ExpressionPtr PtrToMemberExpression::cloneWith(std::span<ExpressionPtr> operands) const {
    return makeNode<PtrToMemberExpression>(parser(), std::move(operands[0]), std::move(operands[1]));
}

void AssignExpression::write(TextForm& form) const {
    form << "(" << left() << " = " << right() << ")";
}

void AssignExpression::accept(std::size_t step, Value& value) const {
    if (step == 0) symbolOf(value);
}

Value AssignExpression::combine(std::span<Value> values) const {
    return parser().assign(symbolOf(values[0]), read(parser(), values[1]));
}

AddressofExpression::AddressofExpression(ExpressionParser& parser, ExpressionPtr operand)
    : Expression(parser), operand_(std::move(operand)) {}

void AddressofExpression::write(TextForm& form) const {
    form << "(&" << *operand_ << ")";
}

Expression* AddressofExpression::operand(std::size_t index) const {
    return index == 0 ? operand_.get() : nullptr;
}

Value AddressofExpression::combine(std::span<Value> values) const {
    return parser().addressOf(symbolOf(values[0], "cannot take address of a constant"));
}

CastExpression::CastExpression(ExpressionParser& parser, TypePtr type, ExpressionPtr operand)
    : Expression(parser), type_(std::move(type)), operand_(std::move(operand)) {}

void CastExpression::write(TextForm& form) const {
    form << "((" << *type_ << ")" << *operand_ << ")";
}

Expression* CastExpression::operand(std::size_t index) const {
    return index == 0 ? operand_.get() : nullptr;
}

Value CastExpression::combine(std::span<Value> values) const {
    return parser().cast(*type_, values[0]);
}

CallExpression::CallExpression(ExpressionParser& parser, ExpressionPtr callee,
                               std::vector<ExpressionPtr> arguments)
    : Expression(parser), callee_(std::move(callee)), arguments_(std::move(arguments)) {}

void CallExpression::write(TextForm& form) const {
    form << *callee_ << "(";
    for (const ExpressionPtr& argument : arguments_) form << *argument;
    form << ")";
}

Expression* CallExpression::operand(std::size_t index) const {
    if (index == 0) return callee_.get();
    return index <= arguments_.size() ? arguments_[index - 1].get() : nullptr;
}

void CallExpression::accept(std::size_t step, Value& value) const {
    if (step == 0) symbolOf(value);
}

Value CallExpression::combine(std::span<Value> values) const {
    const auto arguments = values.subspan(1);
    return parser().call(symbolOf(values[0]), {arguments.begin(), arguments.end()});
}

SizeofExpression::SizeofExpression(ExpressionParser& parser, TypePtr type)
    : Expression(parser), type_(std::move(type)) {}

SizeofExpression::SizeofExpression(ExpressionParser& parser, ExpressionPtr operand)
    : Expression(parser), operand_(std::move(operand)) {}

void SizeofExpression::write(TextForm& form) const {
    if (type_)
        form << "sizeof(" << *type_ << ")";
    else
        form << "sizeof " << *operand_;
}

Expression* SizeofExpression::operand(std::size_t index) const {
    return index == 0 ? operand_.get() : nullptr;
}

Value SizeofExpression::combine(std::span<Value> values) const {
    if (type_) return parser().sizeofType(*type_);
    return parser().sizeofSymbol(symbolOf(values[0], "cannot determine sizeof of a constant"));
}

ArraySliceExpression::ArraySliceExpression(ExpressionParser& parser, ExpressionPtr operand,
                                           ExpressionPtr start, ExpressionPtr stop)
    : Expression(parser), operand_(std::move(operand)), start_(std::move(start)), stop_(std::move(stop)) {}

void ArraySliceExpression::write(TextForm& form) const {
    form << *operand_ << "[" << *start_ << ":" << *stop_ << "]";
}

Expression* ArraySliceExpression::operand(std::size_t index) const {
    switch (index) {
        case 0:
            return operand_.get();
        case 1:
            return start_.get();
        case 2:
            return stop_.get();
        default:
            return nullptr;
    }
}

void ArraySliceExpression::accept(std::size_t step, Value& value) const {
    switch (step) {
        case 0:
            symbolOf(value);
            break;
        case 1:
            expectInteger(value, "start should be an integer");
            break;
        default:
            expectInteger(value, "stop should be an integer");
            break;
    }
}

Value ArraySliceExpression::combine(std::span<Value> values) const {
    return parser().slice(symbolOf(values[0]), values[1].toUnsigned(), values[2].toUnsigned());
}

}  // namespace expressions
