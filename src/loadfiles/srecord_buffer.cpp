#include "loadfiles/srecord_buffer.h"

#include <algorithm>

namespace loadfiles {

SRecordBuffer::SRecordBuffer(const std::string& path) : LineBuffer(path) {
    constexpr std::size_t longestPath = 254;  // the count is one byte and includes the checksum
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(path.data());
    writeRecord('0', 0, 0, {bytes, std::min(path.size(), longestPath)});
}

void SRecordBuffer::finish(std::uint32_t startAddress) {
    endLine();
    writeRecord('9', 2, startAddress & 0xFFFF, {});
}

void SRecordBuffer::writeLine() {
    if (lineStart() <= 0xFFFF)
        writeRecord('1', 2, lineStart(), bytes());
    else if (lineStart() < 0xFF'FFFF)
        writeRecord('2', 3, lineStart(), bytes());
    else
        writeRecord('3', 4, lineStart(), bytes());
}

void SRecordBuffer::writeRecord(char type, int addressLength, std::uint32_t address,
                                std::span<const std::uint8_t> data) {
    const std::uint32_t count = static_cast<std::uint32_t>(addressLength + data.size() + 1);
    std::uint32_t sum = count + (address >> 24) + (address >> 16) + (address >> 8) + address;
    for (const std::uint8_t byte : data) sum += byte;
    stream_.put('S');
    stream_.put(type);
    stream_.putHex(count, 2);
    stream_.putHex(address, addressLength * 2);
    stream_.putHex(data);
    stream_.putHex(~sum, 2);
    stream_.put('\n');
}

}  // namespace loadfiles
