#pragma once

#include "package/compressed_file.h"

namespace package {

/// Reads a bzip2 stream.
class PackageArchiveCompressedBzInputFile final : public PackageArchiveCompressedInputFile {
public:
    explicit PackageArchiveCompressedBzInputFile(FileHandle file);
    ~PackageArchiveCompressedBzInputFile() override;

    void openDecompressor() override;
    void closeDecompressor() override;

protected:
    std::size_t decompress(std::span<char> space, State& state) override;

private:
    void* stream_ = nullptr;  // a BZFILE
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
