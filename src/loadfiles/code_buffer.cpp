#include "loadfiles/code_buffer.h"

namespace loadfiles {

void LineBuffer::setAddress(std::uint32_t address) {
    if (address == address_) return;
    endLine();
    address_ = address;
    lineStart_ = address;
}

void LineBuffer::putByte(std::uint8_t byte) {
    line_[length_++] = byte;
    ++address_;
    if (length_ == line_.size()) endLine();
}

void LineBuffer::endLine() {
    if (length_ == 0) return;
    writeLine();
    length_ = 0;
    lineStart_ = address_;
}

}  // namespace loadfiles
