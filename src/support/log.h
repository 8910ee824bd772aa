#pragma once

#include <cstdint>

/// The process log: lines of "level: text" on standard output, for reports that no caller can act on.
namespace support {

enum class LogLevel { Warning, Error };

/// Bits of the `flags` argument of `logMessage`.
enum LogFlags : std::uint32_t {
    LogNoFlags = 0,
    LogLineFeed = 1,  ///< a line feed ends the text
};

/// Bits of the process's mask word, which decides on optional reports.
enum LogMask : std::uint32_t {
    LogInternalErrors = 2,  ///< faults of callers inside the engine
};

/// The mask word; no bit is set at start.
std::uint32_t& logMask();

/// Formats like printf into a buffer of 65,536 bytes, and writes the level ("warning", "error"), ": " and the
/// text to standard output and flushes. An empty text writes nothing.
void logMessage(LogLevel level, std::uint32_t flags, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

}  // namespace support
