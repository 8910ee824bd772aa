#include "package/compressed_file.h"

#include "support/hexception.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace package {

namespace {

constexpr std::size_t aheadSize = 1 << 18;

}  // namespace

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
    state_ = {};
    ahead_ = {};
    openDecompressor();
}

std::int64_t PackageArchiveCompressedInputFile::readDecompressed(void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    auto* const bytes = static_cast<char*>(buffer);
    for (std::int64_t done = 0; done < size;) {
        if (ahead_.empty()) readAhead();
        if (ahead_.empty()) throw support::HException(state_.fault);
        const auto step = std::min(ahead_.size(), static_cast<std::size_t>(size - done));
        std::memcpy(bytes + done, ahead_.data(), step);
        ahead_ = ahead_.subspan(step);
        done += static_cast<std::int64_t>(step);
    }
    // The check sum is looked at only on the way past the last byte.
    if (ahead_.empty()) readAhead();
    return size;
}

void PackageArchiveCompressedInputFile::readAhead() {
    if (state_.fault != nullptr) return;
    buffer_.resize(aheadSize);
    ahead_ = {buffer_.data(), decompress(buffer_, state_)};
}

std::int64_t PackageArchiveCompressedOutputFile::write(const void* buffer, std::int64_t size) {
    return size < 1 ? 0 : writeCompressed(buffer, size);
}

}  // namespace package
