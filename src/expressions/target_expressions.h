#pragma once

#include "expressions/expression.h"
#include "expressions/type.h"

#include <vector>

/// The expressions that touch the program under debug: they evaluate their operands, check that a symbol
/// stands where one must, and hand the rest to the parser.
namespace expressions {

/// An element of an array, or what a pointer points to: left[index].
class LeftSquareBracketExpression : public BinaryExpression {
public:
    using BinaryExpression::BinaryExpression;

protected:
    void write(TextForm& form) const override;
    void accept(std::size_t step, Value& value) const override;
    Value combine(std::span<Value> values) const override;
    ExpressionPtr cloneWith(std::span<ExpressionPtr> operands) const override;
};

/// A member: left.name. The right side is a name and never evaluated.
class DotExpression : public BinaryExpression {
public:
    using BinaryExpression::BinaryExpression;

protected:
    void write(TextForm& form) const override;
    const Expression* evaluatedOperand(std::size_t step) const override;
    Value combine(std::span<Value> values) const override;
    ExpressionPtr cloneWith(std::span<ExpressionPtr> operands) const override;
};

/// A member by a pointer to it: left.*right.
class PtrToMemberExpression : public BinaryExpression {
public:
    using BinaryExpression::BinaryExpression;

protected:
    void write(TextForm& form) const override;
    Value combine(std::span<Value> values) const override;
    ExpressionPtr cloneWith(std::span<ExpressionPtr> operands) const override;
};

/// left = right.
class AssignExpression : public BinaryExpression {
public:
    using BinaryExpression::BinaryExpression;

protected:
    void write(TextForm& form) const override;
    void accept(std::size_t step, Value& value) const override;
    Value combine(std::span<Value> values) const override;
};

class AddressofExpression : public Expression {
public:
    AddressofExpression(ExpressionParser& parser, ExpressionPtr operand);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    Value combine(std::span<Value> values) const override;

private:
    ExpressionPtr operand_;
};

class CastExpression : public Expression {
public:
    CastExpression(ExpressionParser& parser, TypePtr type, ExpressionPtr operand);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    bool bindsOperands() const override { return true; }
    Value combine(std::span<Value> values) const override;

private:
    TypePtr type_;
    ExpressionPtr operand_;
};

class CallExpression : public Expression {
public:
    CallExpression(ExpressionParser& parser, ExpressionPtr callee, std::vector<ExpressionPtr> arguments);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    void accept(std::size_t step, Value& value) const override;
    Value combine(std::span<Value> values) const override;

private:
    ExpressionPtr callee_;
    std::vector<ExpressionPtr> arguments_;
};

/// The size of a type or of the symbol that an expression gives.
class SizeofExpression : public Expression {
public:
    SizeofExpression(ExpressionParser& parser, TypePtr type);
    SizeofExpression(ExpressionParser& parser, ExpressionPtr operand);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    bool bindsOperands() const override { return true; }
    Value combine(std::span<Value> values) const override;

private:
    TypePtr type_;  // one of the two is null
    ExpressionPtr operand_;
};

/// The elements from start to stop of an array: operand[start:stop].
class ArraySliceExpression : public Expression {
public:
    ArraySliceExpression(ExpressionParser& parser, ExpressionPtr operand, ExpressionPtr start,
                         ExpressionPtr stop);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    void accept(std::size_t step, Value& value) const override;
    Value combine(std::span<Value> values) const override;

private:
    ExpressionPtr operand_;
    ExpressionPtr start_;
    ExpressionPtr stop_;
};

}  // namespace expressions
