#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Canonical paths: the engine identifies a file by the text of its path, so two spellings of one path must
/// become one text. "/" and "\" separate alike; "." components and empty ones go, ".." takes back the
/// component before it, and the separators of the result are "/".
namespace manifest {

/// Components that a path may keep at one time; one more is fatal.
inline constexpr int maxPathComponents = 60;

/// Writes the canonical form of `written` to `canonical`, which `written` must not point into. Bit i of
/// `slashBits` is set when the i-th separator of the result was a backslash; separators from the 65th on have
/// no bit. Answers false with the error "empty path" for an empty path.
bool canonicalizePath(std::string_view written, std::string* canonical, std::uint64_t* slashBits,
                      std::string* error);

/// The same in place.
bool canonicalizePath(std::string* path, std::uint64_t* slashBits, std::string* error);

}  // namespace manifest
