#pragma once

#include "loadfiles/code_buffer.h"

#include <string_view>

namespace loadfiles {

/// Writes Motorola S-record, each data record with the shortest address that holds its first one.
class SRecordBuffer : public LineBuffer {
public:
    /// The path goes into the header record as it is given, without its end when a record cannot hold it.
    explicit SRecordBuffer(const std::string& path);

    /// The end record holds the low 16 bits of the start address.
    void finish(std::uint32_t startAddress) override;

private:
    void writeLine() override;
    /// Writes a record whose address has `addressLength` bytes.
    void writeRecord(char type, int addressLength, std::uint32_t address, std::span<const std::uint8_t> data);
};

}  // namespace loadfiles
