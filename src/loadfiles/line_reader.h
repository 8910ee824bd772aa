#pragma once

#include "loadfiles/input_file.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace loadfiles {

/// The lines of a text file. A line that is longer than the limit comes in pieces, like separate lines with
/// the same number. Fails as `InputFile` does.
class LineReader {
public:
    /// `limit` is the longest line in bytes, its line feed counted.
    LineReader(const std::string& path, std::size_t limit);

    /// The next line with its line end, one character that is a line feed or stands for CR LF; the last line
    /// may lack it. Nothing at the end of the file. The bytes stay until the next call.
    std::optional<std::string_view> next();
    /// The number of the line that `next` gave last, from 1; at the end of the file that of the missing line.
    std::size_t lineNumber() const { return lineNumber_; }

private:
    void fill();

    InputFile file_;
    std::size_t limit_;
    std::unique_ptr<char[]> block_;
    const char* position_;
    const char* end_;
    bool isAtEnd_ = false;
    bool startsLine_ = true;
    std::size_t lineNumber_ = 0;
};

/// Hands the lines of the file to `take` until that gives false. At the end of the file it throws `endFault`,
/// or returns when that is null. An `HException` about a line gets " : line N" added to its message.
void readLines(const std::string& path, std::size_t limit, const char* endFault,
               const std::function<bool(std::string_view line)>& take);

}  // namespace loadfiles
