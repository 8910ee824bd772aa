#pragma once

#include <QString>

#include <cstdint>

namespace project {

/// A range of the target's memory.
struct MemorySegment {
    enum class Access : std::uint32_t { ReadWrite = 0, ReadOnly = 1, WriteOnly = 2, None = 3 };

    std::uint32_t start;
    std::uint32_t last;  ///< the last address, not the one behind it
    Access access;
    std::uint32_t reserved = 0;
    QString name;
};

}  // namespace project
