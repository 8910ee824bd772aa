#include "loadfiles/ti_hex_load_file.h"

#include "loadfiles/hex_digits.h"
#include "loadfiles/line_reader.h"
#include "support/hexception.h"

#include <array>
#include <limits>

namespace loadfiles {

namespace {

constexpr std::size_t lineLimit = 63;
constexpr std::size_t byteLength = 3;

/// The digits up to the first character that is a control character or a blank.
std::uint32_t readAddress(std::string_view digits) {
    std::uint64_t address = 0;
    for (const char digit : digits) {
        if (static_cast<unsigned char>(digit) <= ' ') break;
        if (digitValue(digit) > 0xF) throw support::HException("invalid ASCII encoded byte");
        address = address << 4 | digitValue(digit);
        if (address > std::numeric_limits<std::uint32_t>::max()) throw support::HException("invalid address");
    }
    return static_cast<std::uint32_t>(address);
}

}  // namespace

TIHexLoadFile::TIHexLoadFile(const std::string& path) {
    readLines(path, lineLimit, "unexpected end of file",
              [this](std::string_view line) { return readLine(line); });
}

bool TIHexLoadFile::readLine(std::string_view line) {
    if (line.front() == 'q') return false;
    if (line.front() == '@')
        address_ = readAddress(line.substr(1));
    else
        readData(line);
    return true;
}

void TIHexLoadFile::readData(std::string_view line) {
    std::array<std::uint8_t, (lineLimit + 1) / byteLength> bytes;
    const std::span<std::uint8_t> data = std::span(bytes).first((line.size() + 1) / byteLength);
    readHexBytes(line, byteLength, data);
    sections_.addBytes(address_, data);
    address_ += static_cast<std::uint32_t>(data.size());
}

}  // namespace loadfiles
