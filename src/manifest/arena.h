#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace manifest {

/// Bytes that stay where they are until the arena ends. Blocks double from 4 KiB to 1 MiB; what would fill a
/// quarter of the largest gets a block of its own.
class Arena {
public:
    /// `size` bytes on an address that suits a `std::size_t`.
    char* allocate(std::size_t size);

    /// A copy of the text.
    std::string_view copy(std::string_view text);

private:
    static constexpr std::size_t largestBlock = std::size_t{1} << 20;

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
    std::size_t blockSize_ = 2048;
};

}  // namespace manifest
