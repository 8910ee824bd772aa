#include "package/gz_file.h"

#include "support/hexception.h"

#include <algorithm>
#include <utility>

namespace package {

using support::HException;

namespace {

/// zlib counts in 32 bits.
uInt stepOf(std::int64_t size) {
    return static_cast<uInt>(std::min<std::int64_t>(size, std::int64_t{1} << 30));
}

}  // namespace

PackageArchiveCompressedGzInputFile::PackageArchiveCompressedGzInputFile(FileHandle file)
    : PackageArchiveCompressedInputFile(std::move(file)) {
    PackageArchiveCompressedGzInputFile::openDecompressor();
}

PackageArchiveCompressedGzInputFile::~PackageArchiveCompressedGzInputFile() {
    ::inflateEnd(&stream_);
}

void PackageArchiveCompressedGzInputFile::openDecompressor() {
    stream_ = {};
    if (::inflateInit(&stream_) != Z_OK) throw HException("cannot initialise inflate");
}

void PackageArchiveCompressedGzInputFile::closeDecompressor() {
    ::inflateEnd(&stream_);
}

std::size_t PackageArchiveCompressedGzInputFile::decompress(std::span<char> space, State& state) {
    stream_.next_out = reinterpret_cast<Bytef*>(space.data());
    stream_.avail_out = static_cast<uInt>(space.size());
    while (stream_.avail_out > 0 && state.fault == nullptr) {
        if (stream_.avail_in == 0) {
            stream_.next_in = input_.data();
            stream_.avail_in =
                static_cast<uInt>(readFile(input_.data(), static_cast<std::int64_t>(input_.size())));
        }
        const bool isCutOff = stream_.avail_in == 0;
        const int result = isCutOff ? Z_STREAM_END : ::inflate(&stream_, Z_NO_FLUSH);
        state.hasEnded = result == Z_STREAM_END && !isCutOff;
        if (result == Z_STREAM_END) state.fault = "error reading stream";
        if (result != Z_STREAM_END && result != Z_OK) state.fault = "error reading from compressed stream";
    }
    return space.size() - stream_.avail_out;
}

PackageArchiveCompressedGzOutputFile::PackageArchiveCompressedGzOutputFile(FileHandle file, int level)
    : PackageArchiveCompressedOutputFile(std::move(file)), level_(level) {
    PackageArchiveCompressedGzOutputFile::openCompressor();
}

PackageArchiveCompressedGzOutputFile::~PackageArchiveCompressedGzOutputFile() {
    ::deflateEnd(&stream_);
}

void PackageArchiveCompressedGzOutputFile::openCompressor() {
    stream_ = {};
    if (::deflateInit(&stream_, level_) != Z_OK) throw HException("cannot initialise deflate");
}

std::int64_t PackageArchiveCompressedGzOutputFile::writeCompressed(const void* buffer, std::int64_t size) {
    for (std::int64_t done = 0; done < size; done += stepOf(size - done)) {
        // zlib does not write to its input.
        stream_.next_in = static_cast<Bytef*>(const_cast<void*>(buffer)) + done;
        stream_.avail_in = stepOf(size - done);
        while (stream_.avail_in > 0) deflateSome(Z_NO_FLUSH);
    }
    return size;
}

void PackageArchiveCompressedGzOutputFile::closeCompressor() {
    stream_.avail_in = 0;
    while (!deflateSome(Z_FINISH)) {
    }
    ::deflateEnd(&stream_);
    if (std::fflush(file()) != 0) throw HException("error writing to compressed stream");
}

/// True at the end of the stream.
bool PackageArchiveCompressedGzOutputFile::deflateSome(int flush) {
    std::array<Bytef, 16384> output;
    stream_.next_out = output.data();
    stream_.avail_out = static_cast<uInt>(output.size());
    const int result = ::deflate(&stream_, flush);
    if (result != Z_OK && result != Z_STREAM_END) throw HException("error compressing stream");
    const auto made = static_cast<std::int64_t>(output.size() - stream_.avail_out);
    if (writeFile(output.data(), made) < made) throw HException("error writing to compressed stream");
    return result == Z_STREAM_END;
}

}  // namespace package
