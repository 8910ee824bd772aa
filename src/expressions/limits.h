#pragma once

#include <cstddef>

namespace expressions {

/// How deep parentheses, prefixes, brackets, arguments and types may stand inside each other, and how many
/// texts a lexer may have stacked. Deeper input raises `ParserException`. A chain such as a + b + c is not
/// nested and has no limit.
constexpr std::size_t maxNesting = 10'000;

}  // namespace expressions
