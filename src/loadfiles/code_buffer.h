#pragma once

#include "loadfiles/output_text.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace loadfiles {

/// Writes a stream of bytes at addresses to a text file. The caller sets the address, puts bytes, sets the
/// address again where it jumps, calls `finish` once and destroys the buffer, which closes the file. Nothing
/// is reported on the way: a file that cannot be opened or written drops what it is given, and `flush` tells.
class CodeBuffer {
public:
    virtual ~CodeBuffer() = default;
    /// Says where the next byte goes.
    virtual void setAddress(std::uint32_t address) = 0;
    /// Writes a byte at the address, which moves on by one.
    virtual void putByte(std::uint8_t byte) = 0;
    /// Writes what the format has as an end, with the address at which the image starts to run where the
    /// format has a place for it.
    virtual void finish(std::uint32_t startAddress) = 0;

    /// Puts each of the bytes, as `putByte` does.
    void putBytes(std::span<const std::uint8_t> bytes);

    /// Hands all lines that are complete to the system. False when anything so far could not be written.
    bool flush() { return stream_.flush(); }

protected:
    /// Opens the file for writing. The path is bytes as the system takes them.
    explicit CodeBuffer(const std::string& path) : stream_(path) {}

    std::uint32_t address_ = 0;
    OutputText stream_;
    std::array<std::uint8_t, 16> line_;  ///< the line that is being gathered
    std::size_t length_ = 0;             ///< how many bytes it has
};

/// A buffer whose lines stand for up to 16 bytes that follow each other.
class LineBuffer : public CodeBuffer {
public:
    void setAddress(std::uint32_t address) override;
    void putByte(std::uint8_t byte) override {
        line_[length_++] = byte;
        ++address_;
        if (length_ == line_.size()) endLine();
    }

protected:
    using CodeBuffer::CodeBuffer;

    /// Writes the bytes gathered, if any, and starts a line at the address.
    void endLine();
    /// Writes a line of at least one byte, `bytes()` at `lineStart()`.
    virtual void writeLine() = 0;

    std::uint32_t lineStart() const { return lineStart_; }
    std::span<const std::uint8_t> bytes() const { return std::span(line_).first(length_); }

private:
    std::uint32_t lineStart_ = 0;
};

}  // namespace loadfiles
