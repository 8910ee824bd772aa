#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// A file in memory that has a path.
class MemoryFile {
public:
    MemoryFile()
        : descriptor_(::memfd_create("input", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    const std::string& path() const { return path_; }

    void fill(const std::uint8_t* data, std::size_t size) const {
        if (::ftruncate(descriptor_, 0) != 0 ||
            ::pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size))
            __builtin_trap();
    }

private:
    int descriptor_;
    std::string path_;
};

}  // namespace fuzz
