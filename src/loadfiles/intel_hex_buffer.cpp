#include "loadfiles/intel_hex_buffer.h"

namespace loadfiles {

void IntelHexBuffer::putByte(std::uint8_t byte) {
    LineBuffer::putByte(byte);
    if ((address_ & 0xFFFF) == 0) endLine();  // no record crosses a 64 KiB boundary
}

void IntelHexBuffer::finish(std::uint32_t) {
    endLine();
    writeRecord(1, 0, {});
}

void IntelHexBuffer::writeLine() {
    if (lineStart() >> 16 != upperAddress_ >> 16) {
        upperAddress_ = lineStart();
        const std::array upper{static_cast<std::uint8_t>(upperAddress_ >> 24),
                               static_cast<std::uint8_t>(upperAddress_ >> 16)};
        writeRecord(4, 0, upper);
    }
    writeRecord(0, lineStart() & 0xFFFF, bytes());
}

void IntelHexBuffer::writeRecord(std::uint8_t type, std::uint32_t offset,
                                 std::span<const std::uint8_t> content) {
    std::uint32_t sum = static_cast<std::uint32_t>(content.size()) + (offset >> 8) + offset + type;
    for (const std::uint8_t byte : content) sum += byte;
    stream_.put(':');
    stream_.putHex(static_cast<std::uint32_t>(content.size()), 2);
    stream_.putHex(offset, 4);
    stream_.putHex(type, 2);
    stream_.putHex(content);
    stream_.putHex(-sum, 2);
    stream_.put('\n');
}

}  // namespace loadfiles
