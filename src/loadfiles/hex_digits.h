#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace loadfiles {

inline constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(0xFF);
    for (std::uint8_t i = 0; i < 10; ++i) values['0' + i] = i;
    for (std::uint8_t i = 0; i < 6; ++i)
        values['A' + i] = values['a' + i] = static_cast<std::uint8_t>(10 + i);
    return values;
}();

/// The value of a hexadecimal digit of either case; above 15 for any other character.
inline std::uint8_t digitValue(char digit) {
    return digitValues[static_cast<unsigned char>(digit)];
}

/// Reads a byte from two hexadecimal digits at the start of each `stride` characters of `text`, for every
/// place in `bytes`. Throws `HException` "invalid ASCII encoded byte" when anything else stands there or
/// `text` ends.
void readHexBytes(std::string_view text, std::size_t stride, std::span<std::uint8_t> bytes);

/// A number of four bytes, the most significant first.
std::uint32_t readHexAddress(std::string_view text);

/// The bytes of one record, two digits each, with a running sum of all that were read. Reading throws as
/// `readHexBytes` does.
class RecordReader {
public:
    /// `digits` outlives the reader.
    explicit RecordReader(std::string_view digits) : digits_(digits) {}

    /// At most 255 bytes, which stay until the next call of any operation.
    std::span<const std::uint8_t> readBytes(std::size_t count);
    /// A number of up to four bytes, the most significant first.
    std::uint32_t readNumber(std::size_t byteCount);
    std::uint8_t readByte() { return readBytes(1)[0]; }
    /// Reads the checksum; throws `HException` "invalid checksum" when it is another byte than `expected`.
    void checkSum(std::uint8_t expected);
    /// The low 8 bits of the sum of all bytes so far.
    std::uint8_t sum() const { return sum_; }

private:
    std::string_view digits_;
    std::uint8_t sum_ = 0;
    std::array<std::uint8_t, 255> bytes_;
};

}  // namespace loadfiles
