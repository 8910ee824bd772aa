#include "xml/decode.h"

#include <algorithm>

namespace xml {

namespace {

struct Entity {
    std::string_view reference;
    char byte;
};

constexpr Entity entities[] = {
    {"&amp;", '&'}, {"&apos;", '\''}, {"&gt;", '>'}, {"&lt;", '<'}, {"&quot;", '"'},
};

/// The value of a digit; lower-case letters go on to 35 as in any base, upper-case ones to 15; -1 for no
/// digit.
int digitValue(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'a' && byte <= 'z') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return -1;
}

/// The reference at the beginning of `text`: its byte and its length, which is 0 when there is none.
std::pair<char, std::size_t> numericReference(std::string_view text) {
    const bool hexadecimal = text.size() > 2 && text[2] == 'x';
    unsigned value = 0;
    for (std::size_t i = hexadecimal ? 3 : 2; i < text.size(); ++i) {
        if (text[i] == ';') return {static_cast<char>(value & 0xff), i + 1};
        const int digit = digitValue(text[i]);
        if (digit < 0) break;
        value = value * (hexadecimal ? 16U : 10U) + static_cast<unsigned>(digit);
    }
    return {'&', 0};
}

std::pair<char, std::size_t> reference(std::string_view text) {
    if (text.starts_with("&#")) return numericReference(text);
    for (const Entity& entity : entities)
        if (text.starts_with(entity.reference)) return {entity.byte, entity.reference.size()};
    return {'&', 0};
}

QByteArray decoded(std::string_view text) {
    QByteArray result;
    result.reserve(static_cast<qsizetype>(text.size()));
    while (!text.empty()) {
        const std::size_t run = std::min(text.find('&'), text.size());
        result.append(text.data(), static_cast<qsizetype>(run));
        text.remove_prefix(run);
        if (text.empty()) break;
        const auto [byte, length] = reference(text);
        if (byte == '\0') break;
        result.append(byte);
        text.remove_prefix(length > 0 ? length : 1);
    }
    return result;
}

}  // namespace

QByteArray decodedValue(std::string_view text) {
    if (text.find('&') == std::string_view::npos) return {text.data(), static_cast<qsizetype>(text.size())};
    return decoded(text);
}

QByteArray decodedText(std::string_view text) {
    if (text.find('\r') == std::string_view::npos) return decodedValue(text);
    // A reference to a carriage return stays one: only the bytes of the file are dropped.
    QByteArray result;
    while (true) {
        const std::size_t line = text.find('\r');
        result += text.substr(0, line);
        if (line == std::string_view::npos) break;
        text.remove_prefix(line + 1);
    }
    return decodedValue({result.constData(), static_cast<std::size_t>(result.size())});
}

}  // namespace xml
