#pragma once

#include <QString>

#include <cstdint>

namespace expressions {

/// The tokens of an expression. Their numbers are fixed: rules that a host adds to a lexer use them.
enum class Token : std::uint32_t {
    Eol,  ///< the end of the input
    Eof,
    Space,
    Integer,
    HexInteger,
    BinInteger,
    Float,
    String,
    Ident,
    Register,
    Semicolon,
    Colon,
    ColonColon,
    LParen,
    RParen,
    LBrack,
    RBrack,
    LCurly,
    RCurly,
    Dot,
    PointsAt,
    Increment,
    Decrement,
    BitNot,
    LogNot,
    Star,
    Slash,
    Mod,
    Plus,
    Minus,
    LShift,
    RShift,
    ARShift,
    Lt,
    Le,
    Gt,
    Ge,
    Eq,
    Ne,
    BitAnd,
    BitXor,
    BitOr,
    LogAnd,
    LogOr,
    Condition,
    Assign,
    PlusAssign,
    MinusAssign,
    StarAssign,
    DivAssign,
    ModAssign,
    RShiftAssign,
    LShiftAssign,
    ARShiftAssign,
    BitAndAssign,
    BitXorAssign,
    BitOrAssign,
    Comma,
};

/// The name in messages, such as "TOKEN_IDENT"; empty for a number that is no token.
QString tokenName(Token token);

}  // namespace expressions
