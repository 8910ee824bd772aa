#include "manifest/token.h"

#include <array>
#include <cstddef>

namespace manifest {

namespace {

struct TokenRow {
    Token token;
    std::string_view name;
    std::string_view keyword = {};
};

constexpr std::array<TokenRow, 15> tokens = {{
    {Token::ERROR, "lexing error"},
    {Token::BUILD, "'build'", "build"},
    {Token::COLON, "':'"},
    {Token::DEFAULT, "'default'", "default"},
    {Token::EQUALS, "'='"},
    {Token::IDENT, "identifier"},
    {Token::INCLUDE, "'include'", "include"},
    {Token::INDENT, "indent"},
    {Token::NEWLINE, "newline"},
    {Token::PIPE, "'|'"},
    {Token::PIPE2, "'||'"},
    {Token::POOL, "'pool'", "pool"},
    {Token::RULE, "'rule'", "rule"},
    {Token::SUBNINJA, "'subninja'", "subninja"},
    {Token::TEOF, "eof"},
}};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (tokens[i].token != static_cast<Token>(i)) return false;
    return true;
}
static_assert(inOrder(), "a token's value is its row");

}  // namespace

std::string_view tokenName(Token token) {
    return tokens[static_cast<std::size_t>(token)].name;
}

std::string_view tokenErrorHint(Token expected) {
    return expected == Token::COLON ? " ($ also escapes ':')" : "";
}

Token tokenOfWord(std::string_view word) {
    for (const TokenRow& row : tokens)
        if (!row.keyword.empty() && row.keyword == word) return row.token;
    return Token::IDENT;
}

}  // namespace manifest
