#include "loadfiles/hex_load_file.h"

#include "loadfiles/hex_digits.h"
#include "loadfiles/line_reader.h"
#include "support/hexception.h"

#include <array>

namespace loadfiles {

namespace {
constexpr std::size_t lineLimit = 63;
constexpr std::size_t addressLength = 8;
constexpr std::size_t byteLength = 3;
}  // namespace

HexLoadFile::HexLoadFile(const std::string& path) {
    readLines(path, lineLimit, nullptr, [this](std::string_view line) {
        readLine(line);
        return true;
    });
}

void HexLoadFile::readLine(std::string_view line) {
    if (line.size() < addressLength) throw support::HException("invalid address");
    const std::uint32_t address = readHexAddress(line);
    std::array<std::uint8_t, (lineLimit - addressLength) / byteLength> bytes;
    const std::string_view data = line.substr(addressLength);
    const std::size_t count = data.size() / byteLength;
    for (std::size_t i = 0; i < count; ++i) {
        if (data[i * byteLength] != ' ') throw support::HException("invalid seperator");
        readHexBytes(data.substr(i * byteLength + 1), byteLength, std::span(bytes).subspan(i, 1));
    }
    sections_.addBytes(address, std::span(bytes).first(count));
}

}  // namespace loadfiles
