#pragma once

#include "expressions/syntax_node.h"
#include "expressions/value.h"

#include <QString>

#include <cstdint>
#include <span>
#include <vector>

namespace expressions {

class Expression;
class ExpressionParser;
using ExpressionPtr = NodePtr<Expression>;

/// A parsed expression. A node owns its operands and borrows the parser that made it, which it asks for all
/// that touches a program under debug; the parser outlives it. Evaluation raises `ParserException`.
///
/// A new kind of node names its operands (`operand`) and says how their values combine; the walks over the
/// tree stand here and use no native stack.
class Expression : public SyntaxNode {
public:
    explicit Expression(ExpressionParser& parser) : parser_(parser) {}

    virtual Value evaluate() const;

    /// Sets the address of the identifiers of exactly that name, below the operators and casts that pass it
    /// on; an address of 0 leaves them unbound. Later evaluations then no longer ask the parser for it.
    virtual void bindSymbol(const QString& name, std::uint32_t address);

    /// A deep copy. Raises `ParserException` when any node in the tree cannot be copied.
    virtual ExpressionPtr clone() const;

protected:
    ExpressionParser& parser() const { return parser_; }

    /// The owned operands in source order; null behind the last.
    virtual Expression* operand(std::size_t index) const;
    /// The operands in the order of their evaluation; null behind the last.
    virtual const Expression* evaluatedOperand(std::size_t step) const { return operand(step); }
    /// Looks at the value of an operand before the next one is evaluated; may replace it, or raise.
    virtual void accept(std::size_t /*step*/, Value& /*value*/) const {}
    /// The value of this node; `values` are those of its operands, in the order of their evaluation.
    virtual Value combine(std::span<Value> values) const = 0;

    virtual void bindHere(const QString& /*name*/, std::uint32_t /*address*/) {}
    virtual bool bindsOperands() const { return false; }

    /// A copy of this node with the given operands.
    virtual ExpressionPtr cloneWith(std::span<ExpressionPtr> operands) const;

private:
    template <class Result, class Walk>
    static Result fold(const Expression& root, Walk walk);
    struct Evaluation;
    struct Copying;

    ExpressionParser& parser_;
};

/// A prefix operator.
class UnaryExpression : public Expression {
public:
    UnaryExpression(ExpressionParser& parser, ExpressionPtr operand);

protected:
    void write(TextForm& form) const override;
    Expression* operand(std::size_t index) const override;
    bool bindsOperands() const override { return true; }

private:
    ExpressionPtr operand_;
};

/// Anything with a left and a right side.
class BinaryExpression : public Expression {
public:
    BinaryExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right);

protected:
    const Expression& left() const { return *left_; }
    const Expression& right() const { return *right_; }

    Expression* operand(std::size_t index) const override;
    bool bindsOperands() const override { return true; }

private:
    ExpressionPtr left_;
    ExpressionPtr right_;
};

}  // namespace expressions
