#include "expressions/integer_value.h"

namespace expressions {

namespace {

/// Steps over "0x", "0b" or "0" and gives the base that it announces.
std::uint64_t takeBase(QStringView& text) {
    if (!text.startsWith(u'0')) return 10;
    text = text.sliced(1);
    const bool hexadecimal = text.startsWith(u'x');
    if (!hexadecimal && !text.startsWith(u'b')) return 8;
    text = text.sliced(1);
    return hexadecimal ? 16 : 2;
}

std::uint64_t digitValue(QChar character) {
    if (character.isDigit()) return static_cast<std::uint64_t>(character.digitValue());
    const char16_t code = character.unicode();
    if (code >= u'a' && code <= u'z') return code - u'a' + std::uint64_t{10};
    return static_cast<std::uint64_t>(std::int64_t{code} - 55);
}

}  // namespace

std::int64_t integerValue(QStringView text) {
    while (!text.isEmpty() && text.front().isSpace()) text = text.sliced(1);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.sliced(1);
    const std::uint64_t base = takeBase(text);
    std::uint64_t value = 0;
    for (const QChar character : text) {
        if (QStringView(u"LUlu").contains(character)) break;
        value = value * base + digitValue(character);
    }
    return static_cast<std::int64_t>(negative ? 0 - value : value);
}

}  // namespace expressions
