#pragma once

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

/// Writes "atelis: error: TEXT" and a line feed to standard error. The text is made printable.
void reportError(std::string_view text);

/// Writes "atelis: warning: TEXT" likewise.
void reportWarning(std::string_view text);

}  // namespace cli
