#include "script/token.h"

#include <QHash>

namespace script {

namespace {

struct TokenRow {
    int token;
    const char* name;
};

/// Operators of several characters; of two that start alike the longer stands first.
constexpr TokenRow operators[] = {
    {TokenUShrAssign, ">>>="}, {TokenShlAssign, "<<="},    {TokenShrAssign, ">>="}, {TokenUShr, ">>>"},
    {TokenIdentical, "==="},   {TokenNotIdentical, "!=="}, {TokenAndAssign, "&="},  {TokenOrAssign, "|="},
    {TokenXorAssign, "^="},    {TokenAddAssign, "+="},     {TokenSubAssign, "-="},  {TokenMulAssign, "*="},
    {TokenDivAssign, "/="},    {TokenModAssign, "%="},     {TokenOrOr, "||"},       {TokenAndAnd, "&&"},
    {TokenEqual, "=="},        {TokenNotEqual, "!="},      {TokenLessEqual, "<="},  {TokenGreaterEqual, ">="},
    {TokenShl, "<<"},          {TokenShr, ">>"},           {TokenIncrement, "++"},  {TokenDecrement, "--"},
};

constexpr TokenRow words[] = {
    {TokenThis, "this"},       {TokenTypeof, "typeof"},     {TokenDelete, "delete"},
    {TokenVoid, "void"},       {TokenWhile, "while"},       {TokenFor, "for"},
    {TokenBreak, "break"},     {TokenContinue, "continue"}, {TokenWith, "with"},
    {TokenReturn, "return"},   {TokenFunction, "function"}, {TokenVar, "var"},
    {TokenIf, "if"},           {TokenElse, "else"},         {TokenIn, "in"},
    {TokenNew, "new"},         {TokenCase, "case"},         {TokenDefault, "default"},
    {TokenSwitch, "switch"},   {TokenTrue, "true"},         {TokenFalse, "false"},
    {TokenNull, "null"},       {TokenCatch, "catch"},       {TokenClass, "class"},
    {TokenConst, "const"},     {TokenDebugger, "debugger"}, {TokenDo, "do"},
    {TokenEnum, "enum"},       {TokenExport, "export"},     {TokenExtends, "extends"},
    {TokenFinally, "finally"}, {TokenImport, "import"},     {TokenSuper, "super"},
    {TokenThrow, "throw"},     {TokenTry, "try"},
};

/// Names of tokens that are no text of their own, and of node kinds.
constexpr TokenRow descriptions[] = {
    {TokenEnd, "end of input"},
    {TokenNumber, "a number"},
    {TokenIdentifier, "an identifier"},
    {TokenString, "a string"},
    {KindLine, "#line"},
    {KindColumn, "#col"},
    {KindCall, "call"},
    {KindNewCall, "newcall"},
    {KindForIn, "forin"},
    {KindForVar, "forvar"},
    {KindForVarIn, "forvarin"},
    {KindArray, "arrayinit"},
    {KindObject, "objectinit"},
    {KindTryCatch, "try-catch"},
    {KindTryFinally, "try-finally"},
    {KindTryCatchFinally, "try-catch-finally"},
};

template <std::size_t N>
void enter(QHash<int, QString>& names, const TokenRow (&rows)[N]) {
    for (const TokenRow& row : rows) names.insert(row.token, QString::fromLatin1(row.name));
}

}  // namespace

int tokenOfWord(QStringView word) {
    static const QHash<QString, int> tokens = [] {
        QHash<QString, int> table;
        for (const TokenRow& row : words) table.insert(QString::fromLatin1(row.name), row.token);
        return table;
    }();
    constexpr qsizetype longestWord = 8;
    return word.size() <= longestWord ? tokens.value(word.toString(), TokenIdentifier) : TokenIdentifier;
}

QString tokenName(int token) {
    static const QHash<int, QString> names = [] {
        QHash<int, QString> table;
        enter(table, operators);
        enter(table, words);
        enter(table, descriptions);
        return table;
    }();
    if (token > 0 && token < TokenEnd) return QString(QLatin1Char(static_cast<char>(token)));
    const auto found = names.find(token);
    return found != names.end() ? *found : QStringLiteral("token<%1>").arg(token);
}

OperatorMatch matchOperator(QStringView text) {
    for (const TokenRow& row : operators) {
        const QLatin1String name(row.name);
        if (text.startsWith(name)) return {row.token, static_cast<int>(name.size())};
    }
    return {0, 0};
}

}  // namespace script
