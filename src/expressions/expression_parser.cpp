#include "expressions/expression_parser.h"

#include "expressions/expression_reader.h"
#include "expressions/parser_exception.h"

namespace expressions {

ExpressionPtr ExpressionParser::parseTree(const QString& text, qsizetype* endPosition) {
    lexer_.setInput(text);
    ExpressionReader reader(*this, lexer_);
    ExpressionPtr tree = reader.read();
    if (endPosition) *endPosition = reader.endPosition();
    return tree;
}

Value ExpressionParser::parse(const QString& text, qsizetype* endPosition) {
    if (!text.isEmpty()) return parseTree(text, endPosition)->evaluate();
    if (endPosition) *endPosition = 0;
    return {};
}

template <class Result, class Accepts, class Read>
Result ExpressionParser::evaluate(const QString& text, bool* ok, Accepts accepts, Read read) {
    bool ignored = false;
    bool& succeeded = ok ? *ok : ignored;
    succeeded = false;
    try {
        const Value value = parse(text);
        succeeded = accepts(value);
        return succeeded ? read(value) : Result();
    } catch (const ParserException&) {
        return Result();
    }
}

namespace {

bool isIntegerOrFloat(const Value& value) {
    return value.isInteger() || value.kind == ValueKind::Float;
}

}  // namespace

bool ExpressionParser::evaluateBoolean(const QString& text, bool* ok) {
    return evaluate<bool>(
        text, ok, [](const Value& value) { return value.kind == ValueKind::Boolean; },
        [](const Value& value) { return value.toByte() != 0; });
}

std::int64_t ExpressionParser::evaluateInteger(const QString& text, bool* ok) {
    return evaluate<std::int64_t>(text, ok, isIntegerOrFloat,
                                  [](const Value& value) { return value.toSigned(); });
}

std::uint64_t ExpressionParser::evaluateUnsigned(const QString& text, bool* ok) {
    return evaluate<std::uint64_t>(text, ok, isIntegerOrFloat,
                                   [](const Value& value) { return value.toUnsigned(); });
}

}  // namespace expressions
