#include "loadfiles/byte_buffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace loadfiles {

ByteBuffer::~ByteBuffer() {
    std::free(data_);
}

void ByteBuffer::append(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return;
    const std::size_t oldSize = size_;
    resize(oldSize + bytes.size());
    std::memcpy(data_ + oldSize, bytes.data(), bytes.size());
}

void ByteBuffer::resize(std::size_t size) {
    if (size > capacity_) {
        const std::size_t capacity = std::max(size, capacity_ + capacity_ / 2);
        void* moved = std::realloc(data_, capacity);
        if (moved == nullptr) throw std::bad_alloc();
        data_ = static_cast<std::uint8_t*>(moved);
        capacity_ = capacity;
    }
    size_ = size;
}

}  // namespace loadfiles
