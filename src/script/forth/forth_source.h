#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

namespace script {

class ForthEngine;

/// Where an engine's words come from, a line at a time. The line is UTF-8 of up to 256 bytes.
class Source {
public:
    static constexpr std::size_t longestLine = 256;

    /// Puts the next line into `text` and sets the engine's input position back to 0; 0 when there is no
    /// more.
    virtual int refill(ForthEngine& engine) = 0;
    virtual ~Source() = default;

    std::uint32_t position = 0;  ///< where in the line the last word began, in bytes
    std::uint32_t line = 0;
    QString fileName;
    std::string text;
};

/// A single line.
class StringSource : public Source {
public:
    /// Copies the line; throws `ForthException` code -17 when it is too long.
    explicit StringSource(std::string_view oneLine);

    int refill(ForthEngine&) override { return 0; }
};

}  // namespace script
