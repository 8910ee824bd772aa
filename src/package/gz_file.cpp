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

std::int64_t PackageArchiveCompressedGzInputFile::readDecompressed(void* buffer, std::int64_t size) {
    std::int64_t done = 0;
    while (done < size) {
        const uInt step = stepOf(size - done);
        stream_.next_out = static_cast<Bytef*>(buffer) + done;
        stream_.avail_out = step;
        inflateSome(Z_OK);
        done += step - stream_.avail_out;
    }
    checkRest();
    return size;
}

/// Takes `atBest` for as good as Z_OK.
void PackageArchiveCompressedGzInputFile::inflateSome(int atBest) {
    fillInput();
    const int result = ::inflate(&stream_, Z_NO_FLUSH);
    ended_ = result == Z_STREAM_END;
    if (!ended_ && result != Z_OK && result != atBest)
        throw HException("error reading from compressed stream");
}

void PackageArchiveCompressedGzInputFile::fillInput() {
    if (!ended_ && stream_.avail_in == 0) {
        stream_.next_in = input_.data();
        stream_.avail_in =
            static_cast<uInt>(readFile(input_.data(), static_cast<std::int64_t>(input_.size())));
    }
    if (ended_ || stream_.avail_in == 0) throw HException("error reading stream");
}

/// Input that is used up may end before the check sum; otherwise zlib has already gone as far as it can
/// without giving more bytes.
void PackageArchiveCompressedGzInputFile::checkRest() {
    if (!ended_ && stream_.avail_in == 0) inflateSome(Z_BUF_ERROR);
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
