#include "loadfiles/output_text.h"

#include <array>
#include <cstring>

namespace loadfiles {

namespace {

constexpr char digitCharacters[] = "0123456789ABCDEF";

/// Both digits of every byte.
constexpr std::array<std::array<char, 2>, 256> digitPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {digitCharacters[i >> 4], digitCharacters[i & 0xF]};
    return pairs;
}();

}  // namespace

OutputText::OutputText(const std::string& path)
    : file_(std::fopen(path.c_str(), "w")),
      block_(std::make_unique_for_overwrite<char[]>(blockSize)),
      isGood_(file_ != nullptr) {
    if (file_) std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

OutputText::~OutputText() {
    flush();
}

void OutputText::put(std::string_view text) {
    std::memcpy(room(text.size()), text.data(), text.size());
}

void OutputText::putHex(std::uint32_t number, int digits) {
    char* character = room(static_cast<std::size_t>(digits)) + digits;
    for (; digits > 0; --digits, number >>= 4) *--character = digitCharacters[number & 0xF];
}

void OutputText::putHex(std::span<const std::uint8_t> bytes) {
    char* character = room(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        std::memcpy(character, digitPairs[byte].data(), 2);
        character += 2;
    }
}

void OutputText::putHexAndBlanks(std::span<const std::uint8_t> bytes) {
    char* character = room(bytes.size() * 3);
    for (const std::uint8_t byte : bytes) {
        *character++ = ' ';
        std::memcpy(character, digitPairs[byte].data(), 2);
        character += 2;
    }
}

bool OutputText::flush() {
    writeBlock();
    return isGood_;
}

void OutputText::writeBlock() {
    isGood_ = isGood_ && std::fwrite(block_.get(), 1, used_, file_.get()) == used_;
    used_ = 0;
}

}  // namespace loadfiles
