#include "loadfiles/hex_digits.h"

#include "support/hexception.h"

namespace loadfiles {

namespace {

std::uint32_t join(std::span<const std::uint8_t> bytes) {
    std::uint32_t number = 0;
    for (const std::uint8_t byte : bytes) number = number << 8 | byte;
    return number;
}

}  // namespace

void readHexBytes(std::string_view text, std::size_t stride, std::span<std::uint8_t> bytes) {
    std::uint8_t seen = 0;  // all digits together, so that one look at the end tells whether all were good
    bool isComplete = bytes.empty() || text.size() >= (bytes.size() - 1) * stride + 2;
    if (isComplete) {
        const char* digit = text.data();
        for (std::uint8_t& byte : bytes) {
            const std::uint8_t high = digitValue(digit[0]);
            const std::uint8_t low = digitValue(digit[1]);
            seen |= high | low;
            byte = static_cast<std::uint8_t>(high << 4 | low);
            digit += stride;
        }
    }
    if (!isComplete || seen > 0xF) throw support::HException("invalid ASCII encoded byte");
}

std::uint32_t readHexAddress(std::string_view text) {
    std::array<std::uint8_t, 4> bytes;
    readHexBytes(text, 2, bytes);
    return join(bytes);
}

std::span<const std::uint8_t> RecordReader::readBytes(std::size_t count) {
    const std::span<std::uint8_t> bytes(bytes_.data(), count);
    readHexBytes(digits_, 2, bytes);
    digits_.remove_prefix(count * 2);
    for (const std::uint8_t byte : bytes) sum_ = static_cast<std::uint8_t>(sum_ + byte);
    return bytes;
}

std::uint32_t RecordReader::readNumber(std::size_t byteCount) {
    return join(readBytes(byteCount));
}

void RecordReader::checkSum(std::uint8_t expected) {
    if (readByte() != expected) throw support::HException("invalid checksum");
}

}  // namespace loadfiles
