#include "manifest/hash_index.h"

#include <random>

namespace manifest {

namespace {

/// 2^61 - 1, a prime.
constexpr std::uint64_t prime = (std::uint64_t{1} << 61) - 1;

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide wide = static_cast<Wide>(a) * b;
    const std::uint64_t folded =
        static_cast<std::uint64_t>(wide & prime) + static_cast<std::uint64_t>(wide >> 61);
    return folded >= prime ? folded - prime : folded;
}

std::uint64_t randomBase() {
    std::random_device device;
    return ((std::uint64_t{device()} << 32 | device()) % (prime - 512)) + 257;
}

}  // namespace

/// The text as a polynomial over a prime field, at a random place.
std::uint32_t seededHash(std::string_view text) {
    static const std::uint64_t base = randomBase();
    std::uint64_t hash = text.size() + 1;
    for (const char byte : text) hash = (product(hash, base) + static_cast<unsigned char>(byte)) % prime;
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace manifest
