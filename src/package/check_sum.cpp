#include "package/check_sum.h"

#include "package/io_file.h"
#include "support/hexception.h"

#include <array>

namespace package {

namespace {

using Table = std::array<std::uint32_t, 256>;
constexpr std::uint32_t polynomial = 0x04C11DB7;
constexpr std::size_t bytesAtOnce = 4;

/// In table `n`, what a byte does to the sum that `n` further bytes follow.
constexpr std::array<Table, bytesAtOnce> makeTables() {
    std::array<Table, bytesAtOnce> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte << 24;
        for (int bit = 0; bit < 8; ++bit) sum = sum << 1 ^ (sum >> 31 != 0 ? polynomial : 0);
        tables[0][byte] = sum;
    }
    for (std::size_t n = 1; n < bytesAtOnce; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[n - 1][byte];
            tables[n][byte] = before << 8 ^ tables[0][before >> 24];
        }
    return tables;
}

constexpr std::array<Table, bytesAtOnce> tables = makeTables();

}  // namespace

void CheckSum::add(QByteArrayView bytes) {
    const auto* next = reinterpret_cast<const std::uint8_t*>(bytes.data());
    auto left = static_cast<std::size_t>(bytes.size());
    std::uint32_t sum = state_;
    for (; left >= bytesAtOnce; left -= bytesAtOnce, next += bytesAtOnce) {
        sum ^= std::uint32_t{next[0]} << 24 | std::uint32_t{next[1]} << 16 | std::uint32_t{next[2]} << 8 |
               next[3];
        sum = tables[3][sum >> 24] ^ tables[2][sum >> 16 & 0xFF] ^ tables[1][sum >> 8 & 0xFF] ^
              tables[0][sum & 0xFF];
    }
    for (; left > 0; --left) sum = sum << 8 ^ tables[0][(sum >> 24) ^ *next++];
    state_ = sum;
}

std::uint32_t checkSum(QByteArrayView bytes) {
    CheckSum sum;
    sum.add(bytes);
    return sum.value();
}

std::uint32_t checkSumOfFile(const QString& path) {
    const FileHandle file = openRegular(path);
    std::array<char, 65536> block;
    CheckSum sum;
    while (file) {
        const std::size_t got = std::fread(block.data(), 1, block.size(), file.get());
        sum.add(QByteArrayView(block.data(), static_cast<qsizetype>(got)));
        if (got < block.size()) break;
    }
    if (!file || std::ferror(file.get()) != 0) throw support::HException("cannot read " + path.toStdString());
    return sum.value();
}

}  // namespace package
