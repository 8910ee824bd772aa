#pragma once

#include <string>
#include <string_view>

namespace manifest {

/// The version of the manifest language that the engine reads.
inline constexpr std::string_view languageVersion = "1.8.2";

/// Holds a manifest's `ninja_required_version` against `languageVersion` by major and minor number: a lower
/// major number is a warning, anything above the supported version is fatal.
void checkRequiredVersion(const std::string& required);

/// The standard text-to-integer conversion: leading blanks, a sign, digits, anything behind; 0 for no number.
/// What does not fit ends at the limits of `int`.
int toInteger(const std::string& text);

}  // namespace manifest
