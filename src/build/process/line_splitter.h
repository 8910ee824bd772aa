#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace build {

/// Cuts the bytes of a stream into lines. A line feed ends a line; so does a carriage return, and the byte
/// behind it is skipped.
class LineSplitter {
public:
    /// A longer line is handed on in pieces of this size, so that a stream without line ends takes bounded
    /// memory.
    static constexpr std::size_t maxLine = std::size_t{16} << 20;

    using Receiver = std::function<void(std::string_view line)>;

    void add(std::string_view bytes, const Receiver& receiver);
    /// The stream has ended: hands on what stands behind the last line end. A stream that never ended a line
    /// has nothing to hand on.
    void finish(const Receiver& receiver);

private:
    std::string line_;
    bool skipsByte_ = false;
    bool hasEndedLine_ = false;
};

}  // namespace build
