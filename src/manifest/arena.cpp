#include "manifest/arena.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace manifest {

char* Arena::allocate(std::size_t size) {
    constexpr std::size_t alignment = alignof(std::size_t);
    size = (size + alignment - 1) / alignment * alignment;
    if (size > left_) {
        if (size > largestBlock / 4)
            return blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(size)).get();
        blockSize_ = std::min(blockSize_ * 2, largestBlock);
        left_ = std::max(blockSize_, size);
        next_ = blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(left_)).get();
    }
    left_ -= size;
    return std::exchange(next_, next_ + size);
}

std::string_view Arena::copy(std::string_view text) {
    if (text.empty()) return {};
    char* bytes = allocate(text.size());
    std::memcpy(bytes, text.data(), text.size());
    return {bytes, text.size()};
}

}  // namespace manifest
