#include "package/io_file.h"

namespace package {

std::int64_t PackageArchiveIOFile::readFile(void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    return static_cast<std::int64_t>(std::fread(buffer, 1, static_cast<std::size_t>(size), file()));
}

std::int64_t PackageArchiveIOFile::writeFile(const void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    return static_cast<std::int64_t>(std::fwrite(buffer, 1, static_cast<std::size_t>(size), file()));
}

bool PackageArchiveIOFile::seek(std::int64_t position) {
    return ::fseeko(file(), position, SEEK_SET) == 0;
}

}  // namespace package
