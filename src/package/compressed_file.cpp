#include "package/compressed_file.h"

#include <algorithm>
#include <array>
#include <utility>

namespace package {

PackageArchiveCompressedInputFile::PackageArchiveCompressedInputFile(FileHandle file)
    : PackageArchiveIOFile(std::move(file)), base_(::ftello(this->file())) {}

std::int64_t PackageArchiveCompressedInputFile::read(void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    const std::int64_t got = readDecompressed(buffer, size);
    position_ += got;
    return got;
}

bool PackageArchiveCompressedInputFile::seek(std::int64_t position) {
    std::array<char, 16384> dropped;
    if (position < position_) rewind();
    while (position_ < position) {
        const auto step = std::min<std::int64_t>(position - position_, dropped.size());
        if (read(dropped.data(), step) < step) return false;
    }
    return true;
}

void PackageArchiveCompressedInputFile::rewind() {
    closeDecompressor();
    PackageArchiveIOFile::seek(base_);
    position_ = 0;
    ended_ = false;
    openDecompressor();
}

std::int64_t PackageArchiveCompressedOutputFile::write(const void* buffer, std::int64_t size) {
    return size < 1 ? 0 : writeCompressed(buffer, size);
}

}  // namespace package
