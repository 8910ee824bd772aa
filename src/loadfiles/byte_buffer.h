#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace loadfiles {

/// Owned bytes that grow by reallocation, so that large ones move without a copy and none are cleared before
/// they are filled. Runs out of memory with std::bad_alloc and is then as it was before.
class ByteBuffer {
public:
    ByteBuffer() = default;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    ~ByteBuffer();

    std::uint8_t* data() { return data_; }
    const std::uint8_t* data() const { return data_; }
    std::size_t size() const { return size_; }

    void append(std::span<const std::uint8_t> bytes);
    /// Makes `size` the size; bytes that come to be have no value yet.
    void resize(std::size_t size);

private:
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace loadfiles
