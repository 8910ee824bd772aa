#pragma once

#include <cstddef>
#include <memory_resource>

namespace support {

/// Asks the system to back a large stretch of fresh memory with large pages. A file of hundreds of
/// megabytes otherwise spends a third of its time in page faults. Only a hint: it never fails, and small
/// stretches are left.
void adviseHugePages(void* begin, std::size_t size);

/// The heap, with large pages for large blocks. It suits what is allocated seldom and in large blocks, such
/// as the blocks of a `monotonic_buffer_resource`. One object serves the process.
std::pmr::memory_resource* hugePageMemory();

}  // namespace support
