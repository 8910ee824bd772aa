#include "expressions/simple_expression_parser.h"

#include "expressions/parser_exception.h"

namespace expressions {

namespace {

[[noreturn]] void refuse(const QString& message) {
    throw ParserException(message);
}
[[noreturn]] void refuse(const char* message) {
    refuse(QString::fromLatin1(message));
}

constexpr const char* cannotDereference = "cannot dereference";
constexpr const char* noAddressof = "addressof not implemented";
constexpr const char* noSymbol = "this symbol not found";

}  // namespace

// clang-format off
using Parser = SimpleExpressionParser;
Symbol& Parser::lookupScopedSymbol(const QStringList& names) { refuse(names.join(QStringLiteral("::")) + QStringLiteral(" symbol not found")); }
Symbol& Parser::lookupSymbol(const QString& name) { refuse(name + QStringLiteral(" symbol not found")); }
Symbol& Parser::lookupRegister(const QString& name) { refuse(name + QStringLiteral("unknown register")); }
bool Parser::isTypeName(const QString&) { return false; }
bool Parser::isTemplateName(const QString&) { return false; }
Value Parser::cast(const BaseType&, const Value&) { refuse("cannot cast"); }
bool Parser::isPointer(Symbol&) { return false; }
bool Parser::isArray(Symbol&) { return false; }
Value Parser::scopedMember(Symbol&, const QStringList&) { refuse(cannotDereference); }
Value Parser::member(Symbol&, const QString&) { refuse(cannotDereference); }
Value Parser::index(Symbol&, std::int64_t) { refuse(cannotDereference); }
Value Parser::pointerToMember(Symbol&, Symbol&) { refuse(cannotDereference); }
Value Parser::pointerAdd(Symbol&, std::int64_t) { refuse(noAddressof); }
Value Parser::addressOf(Symbol&) { refuse(noAddressof); }
Value Parser::sizeofType(const BaseType&) { refuse("sizeof(typename) not implemented"); }
Value Parser::sizeofSymbol(Symbol&) { refuse("sizeof expression not implemented"); }
Value Parser::addressOfLine(const QString&, std::int32_t) { refuse(noAddressof); }
Value Parser::assign(Symbol&, const Value&) { refuse(noSymbol); }
Value Parser::readSymbol(Symbol&) { refuse(noSymbol); }
Value Parser::call(Symbol&, const std::vector<Value>&) { refuse("function calling not implemented"); }
Value Parser::slice(Symbol&, std::uint64_t, std::uint64_t) { refuse("cannot array slice"); }
// clang-format on

SimpleExpressionParser& simpleExpressionParser() {
    static SimpleExpressionParser parser;
    return parser;
}

}  // namespace expressions
