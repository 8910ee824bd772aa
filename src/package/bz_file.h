#pragma once

#include "package/compressed_file.h"

#include <span>
#include <vector>

namespace package {

/// Reads a bzip2 stream.
class PackageArchiveCompressedBzInputFile final : public PackageArchiveCompressedInputFile {
public:
    explicit PackageArchiveCompressedBzInputFile(FileHandle file);
    ~PackageArchiveCompressedBzInputFile() override;

    void openDecompressor() override;
    void closeDecompressor() override;
    std::int64_t readDecompressed(void* buffer, std::int64_t size) override;

private:
    void readAhead();

    void* stream_ = nullptr;  // a BZFILE
    int state_ = 0;           // what the library said last; after anything but BZ_OK it must not go on
    std::vector<char> buffer_;
    std::span<const char> ahead_;  // what of the buffer nobody has asked for yet
};

/// Writes a bzip2 stream with blocks of `level` times 100,000 bytes, from 1 to 9.
class PackageArchiveCompressedBzOutputFile final : public PackageArchiveCompressedOutputFile {
public:
    PackageArchiveCompressedBzOutputFile(FileHandle file, int level);
    ~PackageArchiveCompressedBzOutputFile() override;

    std::int64_t writeCompressed(const void* buffer, std::int64_t size) override;
    void openCompressor() override;
    void closeCompressor() override;

private:
    void* stream_ = nullptr;  // a BZFILE
    int level_;
};

}  // namespace package
