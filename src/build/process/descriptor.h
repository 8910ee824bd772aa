#pragma once

#include <string>
#include <utility>

namespace build {

/// Owns a file descriptor that no child inherits unless it is handed over.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes `descriptor`, or none when it is negative. A number below 3, where a child has its standard
    /// streams, is exchanged for a higher one.
    explicit Descriptor(int descriptor);
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { close(); }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    void close();

private:
    int number_ = -1;
};

/// Both ends of a pipe; the reading one does not block. Both are empty when none could be made.
struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

Pipe makePipe();

/// Opens a file for writing from its start or its end; empty when it can't be opened.
Descriptor openForWriting(const std::string& path, bool append);

}  // namespace build
