#pragma once

#include <string>

namespace package {
class PackageArchive;
}

namespace cli {

/// Saves an archive that replaces what stands at `path` at once, when all of it is written. Throws
/// support::HException; a file that the archive needs is not replaced.
void saveArchive(package::PackageArchive& archive, const std::string& path, int level = -1);

}  // namespace cli
