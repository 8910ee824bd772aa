#include "expressions/token.h"

#include <array>

namespace expressions {

namespace {

constexpr std::array names = {
    "TOKEN_EOL",
    "TOKEN_EOF",
    "TOKEN_SPACE",
    "TOKEN_INTEGER",
    "TOKEN_HEXINTEGER",
    "TOKEN_BININTEGER",
    "TOKEN_FLOAT",
    "TOKEN_STRING",
    "TOKEN_IDENT",
    "TOKEN_REGISTER",
    "TOKEN_SEMICOLON",
    "TOKEN_COLON",
    "TOKEN_COLONCOLON",
    "TOKEN_LPAREN",
    "TOKEN_RPAREN",
    "TOKEN_LBRACK",
    "TOKEN_RBRACK",
    "TOKEN_LCURLY",
    "TOKEN_RCURLY",
    "TOKEN_DOT",
    "TOKEN_POINTSAT",
    "TOKEN_INCREMENT",
    "TOKEN_DECREMENT",
    "TOKEN_BITNOT",
    "TOKEN_LOGNOT",
    "TOKEN_STAR",
    "TOKEN_SLASH",
    "TOKEN_MOD",
    "TOKEN_PLUS",
    "TOKEN_MINUS",
    "TOKEN_LSHIFT",
    "TOKEN_RSHIFT",
    "TOKEN_ARSHIFT",
    "TOKEN_LT",
    "TOKEN_LE",
    "TOKEN_GT",
    "TOKEN_GE",
    "TOKEN_EQ",
    "TOKEN_NE",
    "TOKEN_BITAND",
    "TOKEN_BITXOR",
    "TOKEN_BITOR",
    "TOKEN_LOGAND",
    "TOKEN_LOGOR",
    "TOKEN_CONDITION",
    "TOKEN_ASSIGN",
    "TOKEN_PLUS_ASSIGN",
    "TOKEN_MINUS_ASSIGN",
    "TOKEN_STAR_ASSIGN",
    "TOKEN_DIV_ASSIGN",
    "TOKEN_MOD_ASSIGN",
    "TOKEN_RSHIFT_ASSIGN",
    "TOKEN_LSHIFT_ASSIGN",
    "TOKEN_ARSHIFT_ASSIGN",
    "TOKEN_BITAND_ASSIGN",
    "TOKEN_BITXOR_ASSIGN",
    "TOKEN_BITOR_ASSIGN",
    "TOKEN_COMMA",
};
static_assert(names.size() == static_cast<std::size_t>(Token::Comma) + 1);

}  // namespace

QString tokenName(Token token) {
    const auto number = static_cast<std::size_t>(token);
    return number < names.size() ? QString::fromLatin1(names[number]) : QString();
}

}  // namespace expressions
