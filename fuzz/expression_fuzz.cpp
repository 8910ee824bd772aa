// The expression parser: any text ends in a tree or a ParserException, and a tree can be printed, bound,
// copied and evaluated. Short names are types and templates, so that casts are reached.
#include "expressions/parser_exception.h"
#include "expressions/simple_expression_parser.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace expressions;

class Number : public Symbol {
public:
    Value value() override { return Value::ofSigned(3, 4); }
};

class FuzzParser : public SimpleExpressionParser {
public:
    Symbol& lookupScopedSymbol(const QStringList&) override { return number_; }
    Symbol& lookupSymbol(const QString&) override { return number_; }
    Symbol& lookupRegister(const QString&) override { return number_; }
    bool isTypeName(const QString& name) override { return name.startsWith(u'T') || name == u"struct S"; }
    bool isTemplateName(const QString& name) override {
        return name.startsWith(u'V') || name.startsWith(u"TV");
    }
    Value cast(const BaseType& type, const Value& value) override {
        type.toString();
        return value;
    }
    bool isPointer(Symbol&) override { return true; }
    Value member(Symbol& symbol, const QString&) override { return Value::ofSymbol(symbol); }
    Value index(Symbol&, std::int64_t index) override {
        return Value::ofUnsigned(static_cast<std::uint64_t>(index), 2);
    }
    Value readSymbol(Symbol& symbol) override { return symbol.value(); }
    Value assign(Symbol& symbol, const Value&) override { return Value::ofSymbol(symbol); }

private:
    Number number_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzParser parser;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    parser.evaluateInteger(text);
    try {
        qsizetype end = 0;
        const ExpressionPtr tree = parser.parseTree(text, &end);
        if (end < 0 || end > text.size()) __builtin_trap();
        const QString form = tree->toString();
        tree->bindSymbol(QStringLiteral("a"), 1);
        tree->evaluate();
        tree->bindSymbol(QStringLiteral("a"), 0);
        if (tree->clone()->toString() != form) __builtin_trap();
    } catch (const ParserException&) {
        return 0;
    }
    return 0;
}
