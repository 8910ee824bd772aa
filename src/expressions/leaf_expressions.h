#pragma once

#include "expressions/expression.h"

#include <QString>
#include <QStringList>

namespace expressions {

/// A value that stands in the text.
class ConstantExpression : public Expression {
public:
    ConstantExpression(ExpressionParser& parser, const Value& value);

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value>) const override { return value_; }
    ExpressionPtr cloneWith(std::span<ExpressionPtr>) const override;

private:
    Value value_;
};

class IntegerConstantExpression : public ConstantExpression {
public:
    IntegerConstantExpression(ExpressionParser& parser, std::int64_t value)
        : ConstantExpression(parser, Value::ofSigned(value)) {}
};

class FloatConstantExpression : public ConstantExpression {
public:
    FloatConstantExpression(ExpressionParser& parser, double value)
        : ConstantExpression(parser, Value::ofFloat(value)) {}
};

class StringConstantExpression : public ConstantExpression {
public:
    StringConstantExpression(ExpressionParser& parser, const QString& text)
        : ConstantExpression(parser, Value::ofString(text)) {}
};

/// A name, which the parser looks up unless an address is bound to it.
class IdentifierExpression : public Expression {
public:
    IdentifierExpression(ExpressionParser& parser, const QString& name, std::uint64_t address = 0);

    const QString& name() const { return name_; }

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value>) const override;
    void bindHere(const QString& name, std::uint32_t address) override;
    ExpressionPtr cloneWith(std::span<ExpressionPtr>) const override;

private:
    QString name_;
    std::uint64_t address_;  // 0 when not bound
};

/// Names joined with "::".
class ScopedIdentifierExpression : public Expression {
public:
    ScopedIdentifierExpression(ExpressionParser& parser, const QStringList& names);

    const QStringList& names() const { return names_; }

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value>) const override;
    ExpressionPtr cloneWith(std::span<ExpressionPtr>) const override;

private:
    QStringList names_;
};

/// A register; the name stands without the "@".
class RegisterExpression : public Expression {
public:
    RegisterExpression(ExpressionParser& parser, const QString& name);

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value>) const override;

private:
    QString name_;
};

/// The address of a source line.
class AddressofLineExpression : public Expression {
public:
    AddressofLineExpression(ExpressionParser& parser, const QString& file, std::int32_t line);

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value>) const override;

private:
    QString file_;
    std::int32_t line_;
};

}  // namespace expressions
