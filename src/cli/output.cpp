#include "cli/output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace cli {

namespace {

void report(const char* level, std::string_view text) {
    const std::string line = std::string("atelis: ") + level + ": " + printable(text) + "\n";
    std::fputs(line.c_str(), stderr);
}

}  // namespace

std::string printable(std::string_view text) {
    std::string shown;
    for (const char byte : text) {
        const auto code = static_cast<unsigned char>(byte);
        std::array<char, 8> escape;
        std::snprintf(escape.data(), escape.size(), "\\%03o", code);
        shown += code < 0x20 || code == 0x7F ? std::string(escape.data()) : std::string(1, byte);
    }
    return shown;
}

Output& Output::operator<<(std::string_view text) {
    constexpr std::size_t blockSize = 65536;
    buffer_.append(text);
    if (buffer_.size() >= blockSize) flush();
    return *this;
}

bool Output::finish() {
    flush();
    if (std::fflush(stdout) != 0 && writeError_ == 0) writeError_ = errno;
    if (writeError_ == 0) return true;
    reportError(std::string("cannot write the results: ") + std::strerror(writeError_));
    return false;
}

void Output::flush() {
    if (writeError_ == 0 && std::fwrite(buffer_.data(), 1, buffer_.size(), stdout) < buffer_.size())
        writeError_ = errno;
    buffer_.clear();
}

std::string indentation(std::size_t depth) {
    constexpr std::size_t width = 2;
    constexpr std::size_t deepest = 1000;
    return std::string(width * std::min(depth, deepest), ' ');
}

void reportError(std::string_view text) {
    report("error", text);
}

void reportReadError(const std::string& name, std::string_view text, std::uint32_t line) {
    const bool wasOpened = !text.starts_with("couldn't read");
    reportError(name + (wasOpened ? ':' + std::to_string(line + 1) : "") + ": " + std::string(text));
}

void reportWarning(std::string_view text) {
    report("warning", text);
}

}  // namespace cli
