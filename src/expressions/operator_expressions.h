#pragma once

#include "expressions/expression.h"

#include <compare>
#include <cstdint>

/// The operators that need no program under debug: arithmetic, comparisons, shifts and the unary operators.
/// What each of them does is a row in operator_expressions.cpp. Both sides of a binary operator are always
/// evaluated, the right one first; the left side's kind decides how they are combined.
namespace expressions {

/// A binary operator written between its sides.
class InfixExpression : public BinaryExpression {
public:
    InfixExpression(ExpressionParser& parser, const char* sign, ExpressionPtr left, ExpressionPtr right);

protected:
    void write(TextForm& form) const override;
    const Expression* evaluatedOperand(std::size_t step) const override;
    Value combine(std::span<Value> values) const override;
    /// Combines the two sides, symbols already replaced by their values.
    virtual Value combineSides(const Value& left, const Value& right) const = 0;

private:
    const char* sign_;
};

struct ArithmeticOperator {
    const char* sign;
    std::uint32_t (*bytes)(std::uint32_t left, std::uint32_t right);
    std::uint64_t (*integers)(std::uint64_t left, std::uint64_t right, bool isSigned);
    double (*floats)(double left, double right);  ///< null when there is no such operation
};

extern const ArithmeticOperator plusOperator, minusOperator, multiplyOperator, divideOperator, modOperator,
    bitAndOperator, bitOrOperator, bitXorOperator, logicalAndOperator, logicalOrOperator;

class ArithmeticExpression : public InfixExpression {
public:
    ArithmeticExpression(ExpressionParser& parser, const ArithmeticOperator& operation, ExpressionPtr left,
                         ExpressionPtr right);

protected:
    Value combineSides(const Value& left, const Value& right) const override;

private:
    const ArithmeticOperator& operation_;
};

template <const ArithmeticOperator& operation>
class Arithmetic : public ArithmeticExpression {
public:
    Arithmetic(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right)
        : ArithmeticExpression(parser, operation, std::move(left), std::move(right)) {}
};

/// Adds numbers, and an integer to a symbol that is a pointer or an array.
class PlusExpression : public Arithmetic<plusOperator> {
public:
    using Arithmetic::Arithmetic;

protected:
    Value combine(std::span<Value> values) const override;
};

/// Looks at its right side before the left one is evaluated.
class DivideExpression : public Arithmetic<divideOperator> {
public:
    using Arithmetic::Arithmetic;

protected:
    void accept(std::size_t step, Value& value) const override;
};

using MinusExpression = Arithmetic<minusOperator>;
using MultiplyExpression = Arithmetic<multiplyOperator>;
using ModExpression = Arithmetic<modOperator>;
using BitAndExpression = Arithmetic<bitAndOperator>;
using BitOrExpression = Arithmetic<bitOrOperator>;
using BitXorExpression = Arithmetic<bitXorOperator>;
using LogicalAndExpression = Arithmetic<logicalAndOperator>;
using LogicalOrExpression = Arithmetic<logicalOrOperator>;

struct ComparisonOperator {
    const char* sign;
    bool (*holds)(std::strong_ordering order);
};

extern const ComparisonOperator eqOperator, neOperator, ltOperator, leOperator, gtOperator, geOperator;

/// Compares Booleans, integers and strings, but no floats.
class ComparisonExpression : public InfixExpression {
public:
    ComparisonExpression(ExpressionParser& parser, const ComparisonOperator& operation, ExpressionPtr left,
                         ExpressionPtr right);

protected:
    Value combineSides(const Value& left, const Value& right) const override;

private:
    const ComparisonOperator& operation_;
};

template <const ComparisonOperator& operation>
class Comparison : public ComparisonExpression {
public:
    Comparison(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right)
        : ComparisonExpression(parser, operation, std::move(left), std::move(right)) {}
};

using EqExpression = Comparison<eqOperator>;
using NeExpression = Comparison<neOperator>;
using LtExpression = Comparison<ltOperator>;
using LeExpression = Comparison<leOperator>;
using GtExpression = Comparison<gtOperator>;
using GeExpression = Comparison<geOperator>;

/// A shift by a count modulo 64.
class LshiftExpression : public InfixExpression {
public:
    LshiftExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right);

protected:
    Value combineSides(const Value& left, const Value& right) const override;
};

/// Arithmetic for signed integers, logical for unsigned ones.
class RshiftExpression : public InfixExpression {
public:
    RshiftExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right);

protected:
    Value combineSides(const Value& left, const Value& right) const override;
};

class NegateExpression : public UnaryExpression {
public:
    using UnaryExpression::UnaryExpression;

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value> values) const override;
};

class BitNotExpression : public UnaryExpression {
public:
    using UnaryExpression::UnaryExpression;

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value> values) const override;
};

class LogicalNotExpression : public UnaryExpression {
public:
    using UnaryExpression::UnaryExpression;

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value> values) const override;
};

}  // namespace expressions
