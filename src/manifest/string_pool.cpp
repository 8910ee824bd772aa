#include "manifest/string_pool.h"

#include <cstring>
#include <functional>
#include <new>

namespace manifest {

namespace {

std::string_view viewOf(PooledString string) {
    return string.view();
}

}  // namespace

std::uint32_t StringPool::hash(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

PooledString StringPool::intern(std::string_view text) {
    PooledString string = index_.find(text, viewOf);
    if (string == PooledString()) {
        string = store(text);
        index_.insert(string, viewOf);
    }
    return string;
}

PooledString StringPool::store(std::string_view text) {
    auto* bytes =
        static_cast<char*>(memory_.allocate(sizeof(std::size_t) + text.size(), alignof(std::size_t)));
    const auto* size = new (bytes) std::size_t(text.size());
    if (!text.empty()) std::memcpy(bytes + sizeof(std::size_t), text.data(), text.size());
    return PooledString(size);
}

}  // namespace manifest
