#pragma once

#include "package/compressed_file.h"

#include <zlib.h>

#include <array>

namespace package {

/// Reads a zlib stream (RFC 1950).
class PackageArchiveCompressedGzInputFile final : public PackageArchiveCompressedInputFile {
public:
    explicit PackageArchiveCompressedGzInputFile(FileHandle file);
    ~PackageArchiveCompressedGzInputFile() override;

    void openDecompressor() override;
    void closeDecompressor() override;

protected:
    std::size_t decompress(std::span<char> space, State& state) override;

private:
    /// Each return from the library for more input costs it a copy of its window.
    static constexpr std::size_t inputSize = 1 << 17;

    z_stream stream_{};
    std::array<Bytef, inputSize> input_;
};

/// Writes a zlib stream at a level from 0 to 9.
class PackageArchiveCompressedGzOutputFile final : public PackageArchiveCompressedOutputFile {
public:
    PackageArchiveCompressedGzOutputFile(FileHandle file, int level);
    ~PackageArchiveCompressedGzOutputFile() override;

    std::int64_t writeCompressed(const void* buffer, std::int64_t size) override;
    void openCompressor() override;
    void closeCompressor() override;

private:
    bool deflateSome(int flush);

    z_stream stream_{};
    int level_;
};

}  // namespace package
