#include "support/log.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace support {

std::uint32_t& logMask() {
    static std::uint32_t mask = 0;
    return mask;
}

void logMessage(LogLevel level, std::uint32_t flags, const char* format, ...) {
    static std::array<char, 65536> text;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    if (length <= 0) return;
    std::fputs(level == LogLevel::Warning ? "warning: " : "error: ", stdout);
    std::fputs(text.data(), stdout);
    if (flags & LogLineFeed) std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace support
