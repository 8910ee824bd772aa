#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace cli {

/// The results of a command on their way to standard output, in large blocks.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    Output& operator<<(std::string_view text);

    /// Writes what is left. False, after a report on standard error, when any of it could not be written.
    bool finish();

private:
    void flush();

    std::string buffer_;
    int writeError_ = 0;
};

/// The text with its control characters as "\\" and three octal digits, so that a line stays a line whatever
/// a name holds.
std::string printable(std::string_view text);

/// The blanks in front of what stands `depth` levels deep in a tree. From 1,000 levels on they are no more:
/// the text of a deep tree would be all blanks.
std::string indentation(std::size_t depth);

/// Writes "atelis: error: TEXT" and a line feed to standard error. The text is made printable.
void reportError(std::string_view text);

/// Reports why the document `name` could not be read, as "NAME:LINE: TEXT". `line` counts from 0; what could
/// not be opened, by its text, has none.
void reportReadError(const std::string& name, std::string_view text, std::uint32_t line);

/// Writes "atelis: warning: TEXT" likewise.
void reportWarning(std::string_view text);

}  // namespace cli
