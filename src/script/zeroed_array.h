#pragma once

#include <cstddef>
#include <type_traits>

namespace script {

/// Zeroed memory in whole pages, straight from the system, which hands out each page as it is touched. Throws
/// std::bad_alloc.
void* mapPages(std::size_t bytes);
void unmapPages(void* pages, std::size_t bytes);

/// A large array of which the most part is seldom used. All bits zero is a value of `T`.
template <class T>
class ZeroedArray {
public:
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

    explicit ZeroedArray(std::size_t count)
        : bytes_(count * sizeof(T)), entries_(static_cast<T*>(mapPages(bytes_))) {}
    ZeroedArray(const ZeroedArray&) = delete;
    ZeroedArray& operator=(const ZeroedArray&) = delete;
    ~ZeroedArray() { unmapPages(entries_, bytes_); }

    T* begin() const { return entries_; }

private:
    std::size_t bytes_;
    T* entries_;
};

}  // namespace script
