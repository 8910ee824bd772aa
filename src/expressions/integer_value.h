#pragma once

#include <QStringView>

#include <cstdint>

namespace expressions {

/// The integer that a text spells, as in C: decimal, octal with a leading "0", hexadecimal with "0x", and
/// binary with "0b". Blanks and a sign may stand in front; a suffix of L and U in either case ends the
/// digits. Nothing is refused: a character that is no digit of the base still counts by its place in the
/// alphabet, and the value wraps at 64 bits.
std::int64_t integerValue(QStringView text);

}  // namespace expressions
