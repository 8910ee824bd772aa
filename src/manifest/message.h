#pragma once

#include <string>

/// The three routines of the engine that print. All write one line to the standard error stream, and format
/// like printf with no bound on the length.
namespace manifest {

/// Writes "ninja: fatal: " and the text, flushes both standard streams and ends the process with status 1.
[[noreturn]] void fatal(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Writes "ninja: warning: " and the text.
void warning(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Writes "ninja: error: " and the text.
void error(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Gets the text of a fatal error in place of the standard error stream. It may throw, since the engine holds
/// nothing that unwinding would lose; when it returns, the process ends as without it.
using FatalHandler = void (*)(const std::string& text);

/// Sets the process's handler, null for none, and answers the one before. It is meant for hosts that outlive
/// a bad manifest, such as fuzz targets.
FatalHandler setFatalHandler(FatalHandler handler);

}  // namespace manifest
