#pragma once

#include <string_view>

namespace manifest {

/// The tokens of the manifest language.
enum class Token {
    ERROR = 0,
    BUILD = 1,
    COLON = 2,
    DEFAULT = 3,
    EQUALS = 4,
    IDENT = 5,
    INCLUDE = 6,
    INDENT = 7,
    NEWLINE = 8,
    PIPE = 9,
    PIPE2 = 10,
    POOL = 11,
    RULE = 12,
    SUBNINJA = 13,
    TEOF = 14,
};

/// The text that messages show for a token.
std::string_view tokenName(Token token);

/// What a message adds when this token was expected and another found.
std::string_view tokenErrorHint(Token expected);

/// The token of a word: a keyword's own, else `IDENT`.
Token tokenOfWord(std::string_view word);

}  // namespace manifest
