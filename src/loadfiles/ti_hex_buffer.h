#pragma once

#include "loadfiles/code_buffer.h"

namespace loadfiles {

/// Writes TI-TXT: "@" with the address before each run of bytes, lines of bytes, and "q" at the end.
class TIHexBuffer : public LineBuffer {
public:
    explicit TIHexBuffer(const std::string& path) : LineBuffer(path) {}

    void finish(std::uint32_t startAddress) override;

private:
    static constexpr std::uint64_t noAddress = ~std::uint64_t{0};

    void writeLine() override;

    std::uint64_t nextAddress_ = noAddress;  ///< behind the last line written
};

}  // namespace loadfiles
