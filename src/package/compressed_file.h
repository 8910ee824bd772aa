#pragma once

#include "package/io_file.h"

#include <span>
#include <vector>

namespace package {

/// Reads the decompressed bytes of a compressed stream that begins where the file stands when this is made.
/// The libraries are at their best in large steps, so that it is some way ahead of its reader.
///
/// A read fails when the stream ends before it, and only then: bytes that stand before the damage are given.
/// Whether the stream is whole shows when all of it has been read. What stands behind the stream is not
/// looked at. Throws support::HException, after which only a seek backwards can make a read succeed.
class PackageArchiveCompressedInputFile : public PackageArchiveIOFile {
public:
    explicit PackageArchiveCompressedInputFile(FileHandle file);

    /// Reads all of `size` or throws.
    std::int64_t read(void* buffer, std::int64_t size) override;
    /// In decompressed bytes from the first. A way forward is read and dropped, a way back begins anew.
    bool seek(std::int64_t position) override;
    /// Whether everything has been read, and the check sum is right.
    bool hasEnded() const { return state_.hasEnded && ahead_.empty(); }

    virtual void openDecompressor() = 0;
    virtual void closeDecompressor() = 0;
    virtual std::int64_t readDecompressed(void* buffer, std::int64_t size);

protected:
    struct State {
        /// Once the stream gives no more: what is thrown when more is asked for.
        const char* fault = nullptr;
        /// Whether it ended well.
        bool hasEnded = false;
    };

    /// Fills `space`, but where the stream ends, well or not; then it says so in `state`, and is not asked
    /// again.
    virtual std::size_t decompress(std::span<char> space, State& state) = 0;

private:
    void readAhead();
    void rewind();

    std::int64_t base_;          // of the compressed stream in the file
    std::int64_t position_ = 0;  // decompressed bytes read so far
    State state_;
    std::vector<char> buffer_;
    std::span<const char> ahead_;  // what of the buffer nobody has asked for yet
};

/// Compresses what is written. The stream is complete after `closeCompressor`, which may fail; the destructor
/// only releases. Throws support::HException.
class PackageArchiveCompressedOutputFile : public PackageArchiveIOFile {
public:
    using PackageArchiveIOFile::PackageArchiveIOFile;

    std::int64_t write(const void* buffer, std::int64_t size) override;

    virtual std::int64_t writeCompressed(const void* buffer, std::int64_t size) = 0;
    virtual void openCompressor() = 0;
    /// Writes what is left, down to the operating system.
    virtual void closeCompressor() = 0;
};

}  // namespace package
