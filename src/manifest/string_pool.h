#pragma once

#include "manifest/hash_index.h"

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>

namespace manifest {

/// A handle of one word to a string in a `StringPool`: equal texts of one pool have equal handles and views
/// with the same data pointer. It is valid as long as the pool.
class PooledString {
public:
    PooledString() = default;

    std::string_view view() const {
        if (size_ == nullptr) return {};
        return {reinterpret_cast<const char*>(size_ + 1), *size_};
    }

    friend bool operator==(PooledString, PooledString) = default;

private:
    friend class StringPool;
    explicit PooledString(const std::size_t* size) : size_(size) {}

    const std::size_t* size_ = nullptr;  ///< the length; the bytes stand behind it
};

/// Holds each distinct byte string once. A manifest of a hundred megabytes repeats a few hundred values.
class StringPool {
public:
    /// The texts live in `memory`, which outlives the pool.
    explicit StringPool(std::pmr::memory_resource& memory) : memory_(memory) {}
    StringPool(const StringPool&) = delete;
    StringPool& operator=(const StringPool&) = delete;

    /// The pool's string that equals `text`, a copy made at its first mention.
    PooledString intern(std::string_view text);

    std::size_t size() const { return index_.size(); }

    /// The hash of names and values. It has no meaning outside the process.
    static std::uint32_t hash(std::string_view text);

private:
    PooledString store(std::string_view text);

    std::pmr::memory_resource& memory_;
    HashIndex<PooledString> index_{hash};
};

}  // namespace manifest
