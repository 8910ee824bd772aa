#pragma once

#include <cstddef>
#include <memory_resource>

namespace manifest {

/// Asks the system to back a large stretch of fresh memory with large pages. A manifest of hundreds of
/// megabytes otherwise spends a third of its time in page faults. Only a hint: it never fails, and small
/// stretches are left.
void adviseHugePages(void* begin, std::size_t size);

/// The heap, with large pages for large blocks. It suits the blocks of a `monotonic_buffer_resource`.
class HugePageResource : public std::pmr::memory_resource {
private:
    void* do_allocate(std::size_t size, std::size_t alignment) override;
    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override;
    bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }
};

}  // namespace manifest
