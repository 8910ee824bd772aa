#include "manifest/string_pool.h"

#include <cstring>
#include <functional>
#include <new>

namespace manifest {

std::uint32_t StringPool::hash(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

PooledString StringPool::intern(std::string_view text) {
    const std::uint32_t key = hash(text);
    const std::uint32_t found = index_.find(key, [&](std::uint32_t i) { return strings_[i].view() == text; });
    if (found != HashIndex::none) return strings_[found];
    index_.insert(key, static_cast<std::uint32_t>(strings_.size()));
    return strings_.emplace_back(store(text));
}

PooledString StringPool::store(std::string_view text) {
    char* bytes = arena_.allocate(sizeof(std::size_t) + text.size());
    const auto* size = new (bytes) std::size_t(text.size());
    if (!text.empty()) std::memcpy(bytes + sizeof(std::size_t), text.data(), text.size());
    return PooledString(size);
}

}  // namespace manifest
