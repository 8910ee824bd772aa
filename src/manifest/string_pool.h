#pragma once

#include "manifest/arena.h"
#include "manifest/hash_index.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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
    StringPool() = default;
    StringPool(const StringPool&) = delete;
    StringPool& operator=(const StringPool&) = delete;

    /// The pool's string that equals `text`, a copy made at its first mention.
    PooledString intern(std::string_view text);

    std::size_t size() const { return strings_.size(); }

    /// The hash of names and values. It has no meaning outside the process.
    static std::uint32_t hash(std::string_view text);

private:
    PooledString store(std::string_view text);

    Arena arena_;
    std::vector<PooledString> strings_;
    HashIndex index_;
};

}  // namespace manifest
