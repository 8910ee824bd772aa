#pragma once

#include "expressions/c_style_lexer.h"
#include "expressions/expression.h"
#include "expressions/type.h"
#include "expressions/value.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace expressions {

/// Builds expression trees from C-like text and is their link to the world. A host derives from it and
/// answers for the symbols, registers, types and memory of its program under debug; each answer may be a
/// `ParserException` instead.
///
/// A parser must outlive the trees that it made. Making one is costly, so keep it; it serves one thread.
class ExpressionParser {
public:
    ExpressionParser() = default;
    ExpressionParser(const ExpressionParser&) = delete;
    ExpressionParser& operator=(const ExpressionParser&) = delete;

    // Names. Symbols stay the host's, and live as long as values of trees may name them.
    virtual Symbol& lookupScopedSymbol(const QStringList& names) = 0;
    virtual Symbol& lookupSymbol(const QString& name) = 0;
    virtual Symbol& lookupRegister(const QString& name) = 0;
    /// Also asked for "struct NAME" and for names joined with "::".
    virtual bool isTypeName(const QString& name) = 0;
    /// Whether a template argument list may follow the name.
    virtual bool isTemplateName(const QString& name) = 0;

    // Types and places.
    virtual Value cast(const BaseType& type, const Value& value) = 0;
    virtual bool isPointer(Symbol& symbol) = 0;
    virtual bool isArray(Symbol& symbol) = 0;
    virtual Value scopedMember(Symbol& symbol, const QStringList& names) = 0;
    virtual Value member(Symbol& symbol, const QString& name) = 0;
    virtual Value index(Symbol& symbol, std::int64_t index) = 0;
    virtual Value pointerToMember(Symbol& left, Symbol& right) = 0;
    virtual Value pointerAdd(Symbol& symbol, std::int64_t offset) = 0;
    virtual Value addressOf(Symbol& symbol) = 0;
    virtual Value sizeofType(const BaseType& type) = 0;
    virtual Value sizeofSymbol(Symbol& symbol) = 0;
    virtual Value addressOfLine(const QString& file, std::int32_t line) = 0;

    // Memory and calls.
    virtual Value assign(Symbol& symbol, const Value& value) = 0;
    virtual Value readSymbol(Symbol& symbol) = 0;
    virtual Value call(Symbol& symbol, const std::vector<Value>& arguments) = 0;
    /// `start` and `stop` are element numbers.
    virtual Value slice(Symbol& symbol, std::uint64_t start, std::uint64_t stop) = 0;

    virtual ~ExpressionParser() = default;

    /// The tree of a text that is not empty. Text behind the expression is not looked at; `endPosition` is
    /// set to the place where the expression ends, in UTF-16 units. Raises `ParserException`.
    ExpressionPtr parseTree(const QString& text, qsizetype* endPosition = nullptr);

    /// The value of a text; that of the empty text is of the kind None. Otherwise like `parseTree`.
    Value parse(const QString& text, qsizetype* endPosition = nullptr);

    // These catch every ParserException. `ok` tells whether the text gave a value of the kind asked for; if
    // not, the answer is false or 0.
    /// A Boolean.
    bool evaluateBoolean(const QString& text, bool* ok = nullptr);
    /// An integer or a float, read as a signed integer.
    std::int64_t evaluateInteger(const QString& text, bool* ok = nullptr);
    /// An integer or a float, read as an unsigned integer.
    std::uint64_t evaluateUnsigned(const QString& text, bool* ok = nullptr);

private:
    template <class Result, class Accepts, class Read>
    Result evaluate(const QString& text, bool* ok, Accepts accepts, Read read);

    CStyleLexer lexer_;
};

}  // namespace expressions
