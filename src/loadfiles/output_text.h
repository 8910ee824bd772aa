#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace loadfiles {

/// A text file that is written in large blocks, with operations for upper-case hexadecimal digits. A file
/// that could not be opened or written drops what it is given; `flush` tells.
class OutputText {
public:
    explicit OutputText(const std::string& path);
    OutputText(const OutputText&) = delete;
    OutputText& operator=(const OutputText&) = delete;
    ~OutputText();

    void put(char character) { *room(1) = character; }
    void put(std::string_view text);
    /// Writes the `digits` low digits of `number`.
    void putHex(std::uint32_t number, int digits);
    /// Writes two digits a byte, without anything between them.
    void putHex(std::span<const std::uint8_t> bytes);
    /// Writes two digits a byte, each pair behind a blank.
    void putHexAndBlanks(std::span<const std::uint8_t> bytes);

    /// Hands everything to the system. False when any of it, now or earlier, could not be written.
    bool flush();

private:
    static constexpr std::size_t blockSize = 262'144;

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    /// Where the next `length` characters go, at most `blockSize`; they count as written.
    char* room(std::size_t length) {
        if (length > blockSize - used_) writeBlock();
        char* const start = block_.get() + used_;
        used_ += length;
        return start;
    }
    void writeBlock();

    std::unique_ptr<std::FILE, Close> file_;
    std::unique_ptr<char[]> block_;
    std::size_t used_ = 0;
    bool isGood_;
};

}  // namespace loadfiles
