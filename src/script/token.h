#pragma once

#include <QString>

#include <cstdint>

namespace script {

/// Tokens and kinds of syntax-tree nodes share one set of numbers. A token of a single character is the
/// character's code.
enum Token : int {
    // Kinds of nodes that bear the code of a character.
    KindPair = ',',
    KindMember = '.',
    KindObjectMember = ':',
    KindBlock = ';',
    KindConditional = '?',
    KindElement = '[',

    TokenEnd = 128,
    TokenAndAssign = 129,
    TokenOrAssign = 130,
    TokenXorAssign = 131,
    TokenShlAssign = 132,
    TokenShrAssign = 133,
    TokenUShrAssign = 134,
    TokenAddAssign = 135,
    TokenSubAssign = 136,
    TokenMulAssign = 137,
    TokenDivAssign = 138,
    TokenModAssign = 139,
    TokenOrOr = 140,
    TokenAndAnd = 141,
    TokenIdentical = 142,
    TokenNotIdentical = 143,
    TokenEqual = 144,
    TokenNotEqual = 145,
    TokenLessEqual = 146,
    TokenGreaterEqual = 147,
    TokenShl = 148,
    TokenShr = 149,
    TokenUShr = 150,
    TokenIncrement = 151,
    TokenDecrement = 152,
    TokenNumber = 153,
    TokenIdentifier = 159,
    TokenString = 161,
    TokenThis = 162,
    TokenTypeof = 163,
    TokenDelete = 164,
    TokenVoid = 165,
    TokenWhile = 166,
    TokenFor = 167,
    TokenBreak = 168,
    TokenContinue = 169,
    TokenWith = 170,
    TokenReturn = 171,
    TokenFunction = 172,
    TokenVar = 173,
    TokenIf = 174,
    TokenElse = 175,
    TokenIn = 176,
    TokenNew = 177,
    TokenCase = 178,
    TokenDefault = 179,
    TokenSwitch = 180,
    TokenTrue = 181,
    TokenFalse = 182,
    TokenNull = 183,
    KindLine = 184,
    KindColumn = 185,
    KindPostIncrement = 186,
    KindPostDecrement = 187,
    KindMinus = 188,
    KindPlus = 189,
    KindCall = 190,
    KindNewCall = 191,
    KindForIn = 192,
    KindForVar = 193,
    KindForVarIn = 194,
    KindArray = 195,
    KindObject = 196,
    KindElision = 197,
    KindLabel = 198,
    TokenCatch = 199,
    TokenClass = 200,
    TokenConst = 201,
    TokenDebugger = 202,
    TokenDo = 203,
    TokenEnum = 204,
    TokenExport = 205,
    TokenExtends = 206,
    TokenFinally = 207,
    TokenImport = 208,
    TokenSuper = 209,
    TokenThrow = 210,
    TokenTry = 211,
    KindTryCatch = 212,
    KindTryFinally = 213,
    KindTryCatchFinally = 214,
};

/// The token that `word` is, or TokenIdentifier.
int tokenOfWord(QStringView word);

/// What messages call a token or node kind.
QString tokenName(int token);

/// The longest operator of two characters or more that `text` starts with: its token and length; length 0 if
/// none.
struct OperatorMatch {
    int token;
    int length;
};
OperatorMatch matchOperator(QStringView text);

}  // namespace script
