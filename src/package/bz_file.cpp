#include "package/bz_file.h"

#include "support/hexception.h"

#include <bzlib.h>

#include <algorithm>
#include <utility>

namespace package {

using support::HException;

namespace {

constexpr int silent = 0;
constexpr int fast = 0;
constexpr int workFactor = 30;

/// bzip2 counts in int.
int stepOf(std::int64_t size) {
    return static_cast<int>(std::min<std::int64_t>(size, 1 << 30));
}

}  // namespace

PackageArchiveCompressedBzInputFile::PackageArchiveCompressedBzInputFile(FileHandle file)
    : PackageArchiveCompressedInputFile(std::move(file)) {
    PackageArchiveCompressedBzInputFile::openDecompressor();
}

PackageArchiveCompressedBzInputFile::~PackageArchiveCompressedBzInputFile() {
    int ignored = BZ_OK;
    if (stream_ != nullptr) ::BZ2_bzReadClose(&ignored, stream_);
}

void PackageArchiveCompressedBzInputFile::openDecompressor() {
    int result = BZ_OK;
    stream_ = ::BZ2_bzReadOpen(&result, file(), silent, fast, nullptr, 0);
    if (stream_ == nullptr) throw HException("cannot initialise inflate");
}

void PackageArchiveCompressedBzInputFile::closeDecompressor() {
    int result = BZ_OK;
    ::BZ2_bzReadClose(&result, std::exchange(stream_, nullptr));
    if (result != BZ_OK) throw HException("error decompressing stream");
}

std::size_t PackageArchiveCompressedBzInputFile::decompress(std::span<char> space, State& state) {
    int result = BZ_OK;
    const int got = ::BZ2_bzRead(&result, stream_, space.data(), static_cast<int>(space.size()));
    state.hasEnded = result == BZ_STREAM_END;
    if (result != BZ_OK) state.fault = "error reading from compressed stream";
    return result == BZ_OK || state.hasEnded ? static_cast<std::size_t>(got) : 0;
}

PackageArchiveCompressedBzOutputFile::PackageArchiveCompressedBzOutputFile(FileHandle file, int level)
    : PackageArchiveCompressedOutputFile(std::move(file)), level_(level) {
    PackageArchiveCompressedBzOutputFile::openCompressor();
}

PackageArchiveCompressedBzOutputFile::~PackageArchiveCompressedBzOutputFile() {
    int ignored = BZ_OK;
    constexpr int abandon = 1;
    std::clearerr(file());  // the library frees nothing for a file that failed
    if (stream_ != nullptr) ::BZ2_bzWriteClose(&ignored, stream_, abandon, nullptr, nullptr);
}

void PackageArchiveCompressedBzOutputFile::openCompressor() {
    int result = BZ_OK;
    stream_ = ::BZ2_bzWriteOpen(&result, file(), level_, silent, workFactor);
    if (stream_ == nullptr) throw HException("cannot initialise deflate");
}

std::int64_t PackageArchiveCompressedBzOutputFile::writeCompressed(const void* buffer, std::int64_t size) {
    // bzip2 does not write to its input.
    auto* const bytes = static_cast<char*>(const_cast<void*>(buffer));
    for (std::int64_t done = 0; done < size; done += stepOf(size - done)) {
        int result = BZ_OK;
        ::BZ2_bzWrite(&result, stream_, bytes + done, stepOf(size - done));
        if (result != BZ_OK) throw HException("error writing to compressed stream");
    }
    return size;
}

void PackageArchiveCompressedBzOutputFile::closeCompressor() {
    int result = BZ_OK;
    constexpr int complete = 0;
    ::BZ2_bzWriteClose(&result, stream_, complete, nullptr, nullptr);
    // The library keeps the stream when it cannot write it; the destructor then gives it up.
    if (result != BZ_OK) throw HException("error compressing stream");
    stream_ = nullptr;
}

}  // namespace package
