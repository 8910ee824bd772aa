#include "loadfiles/md5_sum.h"

#include "loadfiles/input_file.h"
#include "support/hexception.h"

#include <QFile>

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <utility>

namespace loadfiles {

namespace {

constexpr std::size_t blockSize = 64;

std::uint32_t littleEndian(const std::uint8_t* bytes) {
    std::uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap32(word);
    return word;
}

/// The integer part of 2^32 * |sin(i + 1)|.
// clang-format off
constexpr std::array<std::uint32_t, 64> sines{
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};
// clang-format on

/// How far each step of a round rotates, in turns of four.
constexpr int rotations[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

/// The word of the block that step `i` takes.
constexpr std::size_t wordOfStep(std::size_t i) {
    constexpr std::size_t factors[] = {1, 5, 3, 7};
    constexpr std::size_t offsets[] = {0, 1, 5, 0};
    return (i * factors[i / 16] + offsets[i / 16]) % 16;
}

using State = std::array<std::uint32_t, 4>;

/// The four registers change roles from step to step instead of moving.
template <std::size_t i>
inline void step(State& state, const std::uint8_t* block) {
    std::uint32_t& a = state[(64 - i) % 4];
    const std::uint32_t b = state[(65 - i) % 4];
    const std::uint32_t c = state[(66 - i) % 4];
    const std::uint32_t d = state[(67 - i) % 4];
    a += sines[i] + littleEndian(block + 4 * wordOfStep(i));
    if constexpr (i < 16) {
        a += ((c ^ d) & b) ^ d;
    } else if constexpr (i < 32) {
        a += ~d & c;  // no bit is set on both sides, so that a sum serves, half of which need not wait for b
        a += d & b;
    } else if constexpr (i < 48) {
        a += b ^ (c ^ d);
    } else {
        a += c ^ (b | ~d);
    }
    a = std::rotl(a, rotations[i / 16][i % 4]) + b;
}

template <std::size_t... i>
inline void runSteps(State& state, const std::uint8_t* block, std::index_sequence<i...>) {
    (step<i>(state, block), ...);
}

void hashBlocks(State& total, const std::uint8_t* blocks, std::size_t count) {
    State state = total;
    for (; count > 0; --count, blocks += blockSize) {
        const State before = state;
        runSteps(state, blocks, std::make_index_sequence<64>());
        for (std::size_t i = 0; i < state.size(); ++i) state[i] += before[i];
    }
    total = state;
}

void writeHex(std::span<const std::uint32_t> words, char* text) {
    for (const std::uint32_t word : words)
        for (int bit = 0; bit < 32; bit += 8) {
            *text++ = "0123456789abcdef"[word >> (bit + 4) & 0xF];
            *text++ = "0123456789abcdef"[word >> bit & 0xF];
        }
    *text = '\0';
}

}  // namespace

void MD5Sum::add(std::span<const std::uint8_t> bytes) {
    if (isFinished_ || bytes.empty()) return;
    const std::size_t held = bytesCounted_ % blockSize;
    bytesCounted_ += bytes.size();
    if (held > 0) {
        const std::size_t taken = std::min(bytes.size(), blockSize - held);
        std::memcpy(block_.data() + held, bytes.data(), taken);
        bytes = bytes.subspan(taken);
        if (held + taken < blockSize) return;
        hashBlocks(state_, block_.data(), 1);
    }
    hashBlocks(state_, bytes.data(), bytes.size() / blockSize);
    const auto rest = bytes.last(bytes.size() % blockSize);
    std::ranges::copy(rest, block_.data());
}

const char* MD5Sum::digest() {
    if (!isFinished_) finish();
    return text_.data();
}

void MD5Sum::finish() {
    constexpr std::size_t lengthSize = 8;
    const std::uint64_t bits = bytesCounted_ * 8;
    std::array<std::uint8_t, blockSize + lengthSize> padding{0x80};
    const std::size_t zeros = (2 * blockSize - lengthSize - 1 - bytesCounted_ % blockSize) % blockSize;
    for (std::size_t i = 0; i < lengthSize; ++i)
        padding[1 + zeros + i] = static_cast<std::uint8_t>(bits >> (8 * i));
    add(std::span(padding).first(1 + zeros + lengthSize));
    writeHex(state_, text_.data());
    isFinished_ = true;
}

std::string digestOfFile(const std::string& path) {
    constexpr std::size_t fileBlock = 131'072;
    InputFile file(path);
    const auto block = std::make_unique_for_overwrite<char[]>(fileBlock);
    MD5Sum sum;
    while (const std::size_t got = file.read({block.get(), fileBlock}))
        sum.add({reinterpret_cast<const std::uint8_t*>(block.get()), got});
    return sum.digest();
}

QString md5OfFile(const QString& fileName) {
    try {
        return QString::fromStdString(digestOfFile(QFile::encodeName(fileName).toStdString()));
    } catch (const support::HException&) {
        return {};
    }
}

QString md5OfString(const QString& string) {
    const QByteArray bytes = string.toLatin1();
    MD5Sum sum;
    sum.add({reinterpret_cast<const std::uint8_t*>(bytes.data()), static_cast<std::size_t>(bytes.size())});
    return QString::fromLatin1(sum.digest());
}

}  // namespace loadfiles
