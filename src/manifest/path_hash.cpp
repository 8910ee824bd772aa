#include "manifest/path_hash.h"

namespace manifest {

namespace {

std::uint32_t byteAt(const char* text, int index) {
    return static_cast<unsigned char>(text[index]);
}

// Little-endian whatever the machine, so that the hash is the same everywhere; compilers make one load of it.
std::uint32_t wordAt(const char* text) {
    return byteAt(text, 0) | byteAt(text, 1) << 8 | byteAt(text, 2) << 16 | byteAt(text, 3) << 24;
}

}  // namespace

std::uint32_t hashPath(std::string_view path) {
    constexpr std::uint32_t seed = 0xDECAFBAD;
    constexpr std::uint32_t multiplier = 0x5BD1E995;
    constexpr int shift = 24;

    std::uint32_t hash = seed ^ static_cast<std::uint32_t>(path.size());
    const char* text = path.data();
    std::size_t left = path.size();
    for (; left >= 4; left -= 4, text += 4) {
        std::uint32_t word = wordAt(text) * multiplier;
        word ^= word >> shift;
        hash = hash * multiplier ^ word * multiplier;
    }
    if (left >= 3) hash ^= byteAt(text, 2) << 16;
    if (left >= 2) hash ^= byteAt(text, 1) << 8;
    if (left >= 1) hash = (hash ^ byteAt(text, 0)) * multiplier;
    hash = (hash ^ hash >> 13) * multiplier;
    return hash ^ hash >> 15;
}

}  // namespace manifest
