#pragma once

#include "expressions/expression_parser.h"

namespace expressions {

/// The parser with no program behind it: constants and arithmetic work, whatever needs a target raises a
/// `ParserException` that says so.
class SimpleExpressionParser : public ExpressionParser {
public:
    Symbol& lookupScopedSymbol(const QStringList& names) override;
    Symbol& lookupSymbol(const QString& name) override;
    Symbol& lookupRegister(const QString& name) override;
    bool isTypeName(const QString& name) override;
    bool isTemplateName(const QString& name) override;
    Value cast(const BaseType& type, const Value& value) override;
    bool isPointer(Symbol& symbol) override;
    bool isArray(Symbol& symbol) override;
    Value scopedMember(Symbol& symbol, const QStringList& names) override;
    Value member(Symbol& symbol, const QString& name) override;
    Value index(Symbol& symbol, std::int64_t index) override;
    Value pointerToMember(Symbol& left, Symbol& right) override;
    Value pointerAdd(Symbol& symbol, std::int64_t offset) override;
    Value addressOf(Symbol& symbol) override;
    Value sizeofType(const BaseType& type) override;
    Value sizeofSymbol(Symbol& symbol) override;
    Value addressOfLine(const QString& file, std::int32_t line) override;
    Value assign(Symbol& symbol, const Value& value) override;
    Value readSymbol(Symbol& symbol) override;
    Value call(Symbol& symbol, const std::vector<Value>& arguments) override;
    Value slice(Symbol& symbol, std::uint64_t start, std::uint64_t stop) override;
};

/// The one parser of this class that the process shares; made at its first use.
SimpleExpressionParser& simpleExpressionParser();

}  // namespace expressions
