#include "loadfiles/line_reader.h"

#include "support/hexception.h"

#include <algorithm>
#include <cstring>

namespace loadfiles {

namespace {
constexpr std::size_t blockSize = 262'144;
}

LineReader::LineReader(const std::string& path, std::size_t limit)
    : file_(path),
      limit_(limit),
      block_(std::make_unique_for_overwrite<char[]>(blockSize)),
      position_(block_.get()),
      end_(block_.get()) {}

std::optional<std::string_view> LineReader::next() {
    if (static_cast<std::size_t>(end_ - position_) < limit_ && !isAtEnd_) fill();
    const std::size_t longest = std::min(limit_, static_cast<std::size_t>(end_ - position_));
    if (startsLine_ || longest == 0) ++lineNumber_;
    if (longest == 0) return std::nullopt;
    const void* lineFeed = std::memchr(position_, '\n', longest);
    startsLine_ = lineFeed != nullptr;
    const std::size_t length =
        lineFeed != nullptr ? static_cast<const char*>(lineFeed) - position_ + 1 : longest;
    std::string_view line(position_, length);
    position_ += length;
    // A carriage return in front of a line feed is part of the line's end, which counts as one character.
    if (line.ends_with("\r\n")) line.remove_suffix(1);
    return line;
}

void LineReader::fill() {
    const auto left = static_cast<std::size_t>(end_ - position_);
    std::memmove(block_.get(), position_, left);
    const std::size_t wanted = blockSize - left;
    const std::size_t got = file_.read({block_.get() + left, wanted});
    isAtEnd_ = got < wanted;
    position_ = block_.get();
    end_ = position_ + left + got;
}

void readLines(const std::string& path, std::size_t limit, const char* endFault,
               const std::function<bool(std::string_view line)>& take) {
    LineReader reader(path, limit);
    for (;;) {
        const std::optional<std::string_view> line = reader.next();
        try {
            if (!line && endFault != nullptr) throw support::HException(endFault);
            if (!line || !take(*line)) return;
        } catch (const support::HException& fault) {
            throw support::HException(fault.message() + " : line " + std::to_string(reader.lineNumber()));
        }
    }
}

}  // namespace loadfiles
