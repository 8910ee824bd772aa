#include "manifest/message.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace manifest {

namespace {

FatalHandler fatalHandler = nullptr;

void print(const char* prefix, const char* format, std::va_list arguments) {
    std::fputs(prefix, stderr);
    std::vfprintf(stderr, format, arguments);
    std::fputc('\n', stderr);
}

std::string formatted(const char* format, std::va_list arguments) {
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

}  // namespace

void fatal(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    if (fatalHandler != nullptr)
        fatalHandler(formatted(format, arguments));
    else
        print("ninja: fatal: ", format, arguments);
    va_end(arguments);
    std::fflush(stderr);
    std::fflush(stdout);
    std::exit(1);
}

void warning(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    print("ninja: warning: ", format, arguments);
    va_end(arguments);
}

void error(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    print("ninja: error: ", format, arguments);
    va_end(arguments);
}

FatalHandler setFatalHandler(FatalHandler handler) {
    return std::exchange(fatalHandler, handler);
}

}  // namespace manifest
