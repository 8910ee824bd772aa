#include "loadfiles/code_buffer.h"

#include <algorithm>
#include <cstring>

namespace loadfiles {

void CodeBuffer::putBytes(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t boundary = 0x10000;
    while (!bytes.empty()) {
        // Only the last byte before a place where a line may end needs a look.
        const std::size_t count =
            std::min({bytes.size(), line_.size() - length_, boundary - address_ % boundary});
        std::memcpy(line_.data() + length_, bytes.data(), count - 1);
        length_ += count - 1;
        address_ += static_cast<std::uint32_t>(count - 1);
        putByte(bytes[count - 1]);
        bytes = bytes.subspan(count);
    }
}

void LineBuffer::setAddress(std::uint32_t address) {
    if (address == address_) return;
    endLine();
    address_ = address;
    lineStart_ = address;
}

void LineBuffer::endLine() {
    if (length_ == 0) return;
    writeLine();
    length_ = 0;
    lineStart_ = address_;
}

}  // namespace loadfiles
