#include "manifest/version_check.h"

#include "manifest/message.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace manifest {

namespace {

struct Version {
    int major = 0;
    int minor = 0;
};

Version parseVersion(const std::string& text) {
    const std::size_t dot = text.find('.');
    if (dot == std::string::npos) return {toInteger(text), 0};
    return {toInteger(text.substr(0, dot)), toInteger(text.substr(dot + 1))};
}

}  // namespace

int toInteger(const std::string& text) {
    using Limits = std::numeric_limits<int>;
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

void checkRequiredVersion(const std::string& required) {
    const std::string supported(languageVersion);
    const Version ours = parseVersion(supported);
    const Version theirs = parseVersion(required);
    if (ours.major > theirs.major) {
        warning(
            "ninja executable version (%s) greater than build file ninja_required_version (%s); "
            "versions may be incompatible.",
            supported.c_str(), required.c_str());
    } else if (ours.major < theirs.major || ours.minor < theirs.minor) {
        fatal("ninja version (%s) incompatible with build file ninja_required_version version (%s).",
              supported.c_str(), required.c_str());
    }
}

}  // namespace manifest
