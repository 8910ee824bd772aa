#include "expressions/c_style_lexer.h"

namespace expressions {

namespace {

struct TokenRow {
    const char* pattern;
    Token token;
    std::int32_t precedence = Lexer::noOperator;
};

/// Tried in this order: a longer operator stands before its head. Precedences run from -4, the weakest, to 9.
constexpr TokenRow rows[] = {
    {R"([\s]+)", Token::Space},
    {R"("[^"]*")", Token::String},
    {R"(0x[0-9A-Fa-f]*U?L?L?u?l?l?)", Token::HexInteger},
    {R"(0b[0-1]*)", Token::BinInteger},
    {R"(\d+\.\d+)", Token::Float},
    {R"(\d+U?L?L?u?l?l?)", Token::Integer},
    {R"([A-Za-z_$][A-Za-z_0-9$]*)", Token::Ident},
    {R"(@[A-Za-z_0-9]*)", Token::Register},
    {R"(;)", Token::Semicolon},
    {R"(::)", Token::ColonColon},
    {R"(:)", Token::Colon},
    {R"(\()", Token::LParen},
    {R"(\))", Token::RParen},
    {R"(\[)", Token::LBrack},
    {R"(\])", Token::RBrack},
    {R"(\{)", Token::LCurly},
    {R"(\})", Token::RCurly},
    {R"(\.)", Token::Dot},
    {R"(->)", Token::PointsAt},
    {R"(\+\+)", Token::Increment},
    {R"(\-\-)", Token::Decrement},
    {R"(!=)", Token::Ne, 5},
    {R"(!)", Token::LogNot},
    {R"(~)", Token::BitNot},
    {R"(\*=)", Token::StarAssign, -3},
    {R"(\*)", Token::Star, 9},
    {R"(/=)", Token::DivAssign, -3},
    {R"(/)", Token::Slash, 9},
    {R"(%=)", Token::ModAssign, -3},
    {R"(%)", Token::Mod, 9},
    {R"(\+=)", Token::PlusAssign, -3},
    {R"(\+)", Token::Plus, 8},
    {R"(\-=)", Token::MinusAssign, -3},
    {R"(-)", Token::Minus, 8},
    {R"(<<=)", Token::LShiftAssign, -3},
    {R"(<<)", Token::LShift, 7},
    {R"(>>>=)", Token::ARShiftAssign, -3},
    {R"(>>>)", Token::ARShift, 7},
    {R"(>>=)", Token::RShiftAssign, -3},
    {R"(>>)", Token::RShift, 7},
    {R"(<=)", Token::Le, 6},
    {R"(<)", Token::Lt, 6},
    {R"(>=)", Token::Ge, 6},
    {R"(>)", Token::Gt, 6},
    {R"(==)", Token::Eq, 5},
    {R"(\^=)", Token::BitXorAssign, -3},
    {R"(\^)", Token::BitXor, 3},
    {R"(&=)", Token::BitAndAssign, -3},
    {R"(&&)", Token::LogAnd, 1},
    {R"(&)", Token::BitAnd, 4},
    {R"(\|=)", Token::BitOrAssign, -3},
    {R"(\|\|)", Token::LogOr, 0},
    {R"(\|)", Token::BitOr, 2},
    {R"(\?)", Token::Condition, -1},
    {R"(=)", Token::Assign, -2},
    {R"(,)", Token::Comma, -4},
};

}  // namespace

CStyleLexer::CStyleLexer() {
    for (const TokenRow& row : rows) addToken(QString::fromLatin1(row.pattern), row.token, row.precedence);
}

QString CStyleLexer::lookup(const QString&) {
    return {};
}

}  // namespace expressions
