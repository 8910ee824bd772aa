#pragma once

#include "loadfiles/code_buffer.h"

namespace loadfiles {

/// Writes an address-and-bytes listing: lines as `00001000 AA BB`, and no end mark.
class HexBuffer : public LineBuffer {
public:
    explicit HexBuffer(const std::string& path) : LineBuffer(path) {}

    void finish(std::uint32_t startAddress) override;

private:
    void writeLine() override;
};

}  // namespace loadfiles
