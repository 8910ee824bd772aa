#pragma once

#include <cstddef>
#include <cstdint>

/// The bounds that keep a hostile manifest from eating the stack, the memory or the day. Each is far above
/// what any generator writes.
namespace manifest {

/// Files that may be under reading at one time, each included by the one before. Going deeper recurses.
inline constexpr std::size_t maxIncludeDepth = 128;
/// Files read into one `State`: without it, n files that each include the next one twice are read 2^n times.
inline constexpr std::size_t maxFilesRead = 100'000;
/// Bytes read into one `State`, a file counted as often as it is included.
inline constexpr std::uint64_t maxBytesRead = std::uint64_t{8} << 30;
/// Bytes of one file, and of what is no regular file; an endless device ends here.
inline constexpr std::uint64_t maxFileBytes = std::uint64_t{4} << 30;
inline constexpr std::uint64_t maxStreamBytes = std::uint64_t{1} << 30;

/// Bytes of one expanded value. `a = $b$b`, `b = $c$c` and so on doubles with each line.
inline constexpr std::size_t maxExpandedBytes = std::size_t{256} << 20;
/// Bytes of all the values of one `State` that were put together from several pieces: so many for nothing,
/// and so many more for each byte read. Small texts cannot fill the memory, and large ones get what they
/// need.
inline constexpr std::uint64_t freeExpandedBytes = std::uint64_t{512} << 20;
inline constexpr std::uint64_t expandedBytesPerByteRead = 32;

}  // namespace manifest
