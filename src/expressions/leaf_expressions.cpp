#include "expressions/leaf_expressions.h"

#include "expressions/expression_parser.h"

namespace expressions {

namespace {

QString hexadecimal(std::uint64_t number) {
    return QStringLiteral("0x") + QString::number(number, 16);
}

}  // namespace

ConstantExpression::ConstantExpression(ExpressionParser& parser, const Value& value)
    : Expression(parser), value_(value) {}

void ConstantExpression::write(TextForm& form) const {
    form << hexadecimal(value_.toUnsigned());
}

ExpressionPtr ConstantExpression::cloneWith(std::span<ExpressionPtr>) const {
    return makeNode<ConstantExpression>(parser(), value_);
}

IdentifierExpression::IdentifierExpression(ExpressionParser& parser, const QString& name,
                                           std::uint64_t address)
    : Expression(parser), name_(name), address_(address) {}

void IdentifierExpression::write(TextForm& form) const {
    form << (address_ != 0 ? hexadecimal(address_) : name_);
}

Value IdentifierExpression::combine(std::span<Value>) const {
    if (address_ != 0) return Value::ofUnsigned(address_, 4);
    return Value::ofSymbol(parser().lookupSymbol(name_));
}

void IdentifierExpression::bindHere(const QString& name, std::uint32_t address) {
    if (name == name_) address_ = address;
}

ExpressionPtr IdentifierExpression::cloneWith(std::span<ExpressionPtr>) const {
    return makeNode<IdentifierExpression>(parser(), name_, address_);
}

ScopedIdentifierExpression::ScopedIdentifierExpression(ExpressionParser& parser, const QStringList& names)
    : Expression(parser), names_(names) {}

void ScopedIdentifierExpression::write(TextForm& form) const {
    form << names_.join(QStringLiteral("::"));
}

Value ScopedIdentifierExpression::combine(std::span<Value>) const {
    return Value::ofSymbol(parser().lookupScopedSymbol(names_));
}

ExpressionPtr ScopedIdentifierExpression::cloneWith(std::span<ExpressionPtr>) const {
    return makeNode<ScopedIdentifierExpression>(parser(), names_);
}

RegisterExpression::RegisterExpression(ExpressionParser& parser, const QString& name)
    : Expression(parser), name_(name) {}

void RegisterExpression::write(TextForm& form) const {
    form << "Identifier(" << name_ << ")";
}

Value RegisterExpression::combine(std::span<Value>) const {
    return Value::ofSymbol(parser().lookupRegister(name_));
}

AddressofLineExpression::AddressofLineExpression(ExpressionParser& parser, const QString& file,
                                                 std::int32_t line)
    : Expression(parser), file_(file), line_(line) {}

void AddressofLineExpression::write(TextForm& form) const {
    form << "addressof(\"" << file_ << "\", " << QString::number(line_) << ")";
}

Value AddressofLineExpression::combine(std::span<Value>) const {
    return parser().addressOfLine(file_, line_);
}

}  // namespace expressions
