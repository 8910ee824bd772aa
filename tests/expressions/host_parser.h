#pragma once

#include "expressions/expression_parser.h"
#include "expressions/parser_exception.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

/// A program under debug in miniature: named symbols with values, and a log of what the parser was asked.
namespace expressions_test {

using namespace expressions;

class HostSymbol : public Symbol {
public:
    HostSymbol(const QString& symbolName, const Value& content) : name(symbolName), value_(content) {}
    Value value() override { return value_; }
    void assign(const Value& content) { value_ = content; }

    QString name;

private:
    Value value_;
};

class HostParser : public ExpressionParser {
public:
    HostParser() {
        for (const char* text : {"a", "b", "c", "i", "p", "arr", "f", "@r0", "N::x", "bad index"})
            define(QString::fromLatin1(text),
                   Value::ofSigned(static_cast<std::int64_t>(symbols_.size()) + 1, 4));
        define(QStringLiteral("none"), {});
        define(QStringLiteral("real"), Value::ofFloat(2.5));
        define(QStringLiteral("text"), Value::ofString(QStringLiteral("abc")));
        define(QStringLiteral("u8"), Value::ofUnsigned(0x1ff, 1));
    }

    HostSymbol& define(const QString& name, const Value& value) {
        return *(symbols_[name] = std::make_unique<HostSymbol>(name, value));
    }

    /// What was asked since the last call, one question a line.
    QString takeLog() { return std::exchange(log_, {}).join(u'\n'); }

    Symbol& lookupScopedSymbol(const QStringList& names) override {
        return find(names.join(QStringLiteral("::")));
    }
    Symbol& lookupSymbol(const QString& name) override { return find(name); }
    Symbol& lookupRegister(const QString& name) override { return find(u'@' + name); }
    bool isTypeName(const QString& name) override {
        static const QStringList names = {QStringLiteral("T"), QStringLiteral("struct S"),
                                          QStringLiteral("V<int, T*>"),
                                          QStringLiteral("W<V<int>>::iterator")};
        return names.contains(name);
    }
    bool isTemplateName(const QString& name) override { return name == u"V" || name == u"W"; }
    Value cast(const BaseType& type, const Value& value) override {
        note("cast", {type.toString(), show(value)});
        return Value::ofSigned(value.toSigned(), 4);
    }
    bool isPointer(Symbol& symbol) override { return nameOf(symbol) == u"p"; }
    bool isArray(Symbol& symbol) override { return nameOf(symbol) == u"arr"; }
    Value scopedMember(Symbol& symbol, const QStringList& names) override {
        return place("scopedMember", {nameOf(symbol), names.join(QStringLiteral("::"))});
    }
    Value member(Symbol& symbol, const QString& name) override {
        return place("member", {nameOf(symbol), name});
    }
    Value index(Symbol& symbol, std::int64_t index) override {
        return place("index", {nameOf(symbol), QString::number(index)});
    }
    Value pointerToMember(Symbol& left, Symbol& right) override {
        return place("pointerToMember", {nameOf(left), nameOf(right)});
    }
    Value pointerAdd(Symbol& symbol, std::int64_t offset) override {
        return place("pointerAdd", {nameOf(symbol), QString::number(offset)});
    }
    Value addressOf(Symbol& symbol) override {
        note("addressOf", {nameOf(symbol)});
        return Value::ofUnsigned(0x1000, 4);
    }
    Value sizeofType(const BaseType& type) override {
        note("sizeofType", {type.toString()});
        return Value::ofUnsigned(4, 4);
    }
    Value sizeofSymbol(Symbol& symbol) override {
        note("sizeofSymbol", {nameOf(symbol)});
        return Value::ofUnsigned(4, 4);
    }
    Value addressOfLine(const QString& file, std::int32_t line) override {
        note("addressOfLine", {file, QString::number(line)});
        return Value::ofUnsigned(0x2000, 4);
    }
    Value assign(Symbol& symbol, const Value& value) override {
        note("assign", {nameOf(symbol), show(value)});
        static_cast<HostSymbol&>(symbol).assign(value);
        return Value::ofSymbol(symbol);
    }
    Value readSymbol(Symbol& symbol) override {
        note("readSymbol", {nameOf(symbol)});
        return symbol.value();
    }
    Value call(Symbol& symbol, const std::vector<Value>& arguments) override {
        QStringList texts{nameOf(symbol)};
        for (const Value& argument : arguments) texts.append(show(argument));
        return place("call", texts);
    }
    Value slice(Symbol& symbol, std::uint64_t start, std::uint64_t stop) override {
        return place("slice", {nameOf(symbol), QString::number(start), QString::number(stop)});
    }

    static QString show(const Value& value) {
        switch (value.kind) {
            case ValueKind::Boolean:
                return value.toByte() != 0 ? QStringLiteral("true") : QStringLiteral("false");
            case ValueKind::Signed:
                return QString::number(value.toSigned());
            case ValueKind::Unsigned:
                return QString::number(value.toUnsigned()) + u'u';
            case ValueKind::String:
                return u'"' + value.text + u'"';
            case ValueKind::Symbol:
                return nameOf(*value.symbol);
            case ValueKind::Float:
                return QString::number(value.toDouble()) + u'f';
            default:
                return QStringLiteral("none");
        }
    }

private:
    static QString nameOf(const Symbol& symbol) { return static_cast<const HostSymbol&>(symbol).name; }

    Symbol& find(const QString& name) {
        const auto found = symbols_.find(name);
        if (found == symbols_.end()) throw ParserException(name + QStringLiteral("?"));
        return *found->second;
    }
    void note(const char* question, const QStringList& arguments) {
        log_.append(QString::fromLatin1(question) + u'(' + arguments.join(QStringLiteral(", ")) + u')');
    }
    /// Answers with a symbol whose name tells how it was reached.
    Value place(const char* question, const QStringList& arguments) {
        note(question, arguments);
        const auto known = symbols_.find(log_.last());
        return Value::ofSymbol(known != symbols_.end() ? *known->second
                                                       : define(log_.last(), Value::ofSigned(0, 4)));
    }

    std::map<QString, std::unique_ptr<HostSymbol>> symbols_;
    QStringList log_;
};

}  // namespace expressions_test
