#pragma once

#include "loadfiles/code_buffer.h"

namespace loadfiles {

/// Writes Intel HEX: data, extended linear address and end-of-file records. Start addresses are not written.
class IntelHexBuffer : public LineBuffer {
public:
    explicit IntelHexBuffer(const std::string& path) : LineBuffer(path) {}

    void putByte(std::uint8_t byte) override;
    void finish(std::uint32_t startAddress) override;

private:
    void writeLine() override;
    void writeRecord(std::uint8_t type, std::uint32_t offset, std::span<const std::uint8_t> content);

    std::uint32_t upperAddress_ = 0;  ///< its high half is what the last extended linear address record said
};

}  // namespace loadfiles
