#include "expressions/expression.h"

#include "expressions/parser_exception.h"

#include <utility>

namespace expressions {

/// Visits each node behind its operands. `walk` says which operands a node has, looks at the result of each,
/// and makes the node's result of theirs.
template <class Result, class Walk>
Result Expression::fold(const Expression& root, Walk walk) {
    struct Frame {
        const Expression* node;
        std::size_t step;
        std::size_t firstResult;
    };
    std::vector<Frame> frames{{&root, 0, 0}};
    std::vector<Result> results;
    for (;;) {
        Frame& top = frames.back();
        if (const Expression* next = walk.operand(*top.node, top.step)) {
            ++top.step;
            frames.push_back({next, 0, results.size()});
            continue;
        }
        const std::span<Result> operands = std::span(results).subspan(top.firstResult);
        Result result = walk.combine(*top.node, operands);
        results.resize(top.firstResult);
        frames.pop_back();
        if (frames.empty()) return result;
        walk.accept(*frames.back().node, frames.back().step - 1, result);
        results.push_back(std::move(result));
    }
}

struct Expression::Evaluation {
    const Expression* operand(const Expression& node, std::size_t step) const {
        return node.evaluatedOperand(step);
    }
    void accept(const Expression& node, std::size_t step, Value& value) const { node.accept(step, value); }
    Value combine(const Expression& node, std::span<Value> values) const { return node.combine(values); }
};

struct Expression::Copying {
    const Expression* operand(const Expression& node, std::size_t index) const { return node.operand(index); }
    void accept(const Expression&, std::size_t, ExpressionPtr&) const {}
    ExpressionPtr combine(const Expression& node, std::span<ExpressionPtr> operands) const {
        return node.cloneWith(operands);
    }
};

Value Expression::evaluate() const {
    return fold<Value>(*this, Evaluation());
}

ExpressionPtr Expression::clone() const {
    return fold<ExpressionPtr>(*this, Copying());
}

void Expression::bindSymbol(const QString& name, std::uint32_t address) {
    std::vector<Expression*> pending{this};
    while (!pending.empty()) {
        Expression* node = pending.back();
        pending.pop_back();
        node->bindHere(name, address);
        if (!node->bindsOperands()) continue;
        for (std::size_t i = 0; Expression* next = node->operand(i); ++i) pending.push_back(next);
    }
}

Expression* Expression::operand(std::size_t /*index*/) const {
    return nullptr;
}

ExpressionPtr Expression::cloneWith(std::span<ExpressionPtr> /*operands*/) const {
    throw ParserException(QStringLiteral("cannot duplicate expression"));
}

UnaryExpression::UnaryExpression(ExpressionParser& parser, ExpressionPtr operand)
    : Expression(parser), operand_(std::move(operand)) {}

void UnaryExpression::write(TextForm& form) const {
    form << "(" << *operand_ << ")";
}

Expression* UnaryExpression::operand(std::size_t index) const {
    return index == 0 ? operand_.get() : nullptr;
}

BinaryExpression::BinaryExpression(ExpressionParser& parser, ExpressionPtr left, ExpressionPtr right)
    : Expression(parser), left_(std::move(left)), right_(std::move(right)) {}

Expression* BinaryExpression::operand(std::size_t index) const {
    switch (index) {
        case 0:
            return left_.get();
        case 1:
            return right_.get();
        default:
            return nullptr;
    }
}

}  // namespace expressions
