#pragma once

#include <QString>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <utility>

namespace package {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
/// A C file that is closed with its owner.
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a regular file for reading; null for anything else, a pipe in particular, which could make the open
/// wait.
FileHandle openRegular(const QString& path);

/// What an archive is read from or written to, as a stream of bytes. Streams of compressed bytes throw
/// support::HException; the others only answer that less was done.
class PackageArchiveIOFileInterface {
public:
    PackageArchiveIOFileInterface() = default;
    PackageArchiveIOFileInterface(const PackageArchiveIOFileInterface&) = delete;
    PackageArchiveIOFileInterface& operator=(const PackageArchiveIOFileInterface&) = delete;
    virtual ~PackageArchiveIOFileInterface() = default;

    /// Answers the number of bytes read into `buffer`; 0 for a `size` below 1.
    virtual std::int64_t read(void* buffer, std::int64_t size) = 0;
    /// Answers the number of bytes of `buffer` taken; 0 for a `size` below 1.
    virtual std::int64_t write(const void* buffer, std::int64_t size) = 0;
    /// Moves to a position in the stream; false where that cannot be reached.
    virtual bool seek(std::int64_t position) = 0;
};

/// The bytes of a C file, which it owns. Positions are those of the file.
class PackageArchiveIOFile : public PackageArchiveIOFileInterface {
public:
    explicit PackageArchiveIOFile(FileHandle file) : file_(std::move(file)) {}

    std::int64_t read(void* buffer, std::int64_t size) override { return readFile(buffer, size); }
    std::int64_t write(const void* buffer, std::int64_t size) override { return writeFile(buffer, size); }
    bool seek(std::int64_t position) override;

protected:
    std::FILE* file() const { return file_.get(); }
    /// The bytes of the file itself, whatever a subclass makes of them.
    std::int64_t readFile(void* buffer, std::int64_t size);
    std::int64_t writeFile(const void* buffer, std::int64_t size);

private:
    FileHandle file_;
};

}  // namespace package
