#include "manifest/huge_pages.h"

#include <sys/mman.h>

#include <cstdint>

namespace manifest {

namespace {

constexpr std::uintptr_t hugePage = std::uintptr_t{2} << 20;

}  // namespace

void adviseHugePages(void* begin, std::size_t size) {
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (address + hugePage - 1) / hugePage * hugePage;
    const std::uintptr_t end = (address + size) / hugePage * hugePage;
    if (first < end) ::madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
}

void* HugePageResource::do_allocate(std::size_t size, std::size_t alignment) {
    void* block = std::pmr::new_delete_resource()->allocate(size, alignment);
    adviseHugePages(block, size);
    return block;
}

void HugePageResource::do_deallocate(void* block, std::size_t size, std::size_t alignment) {
    std::pmr::new_delete_resource()->deallocate(block, size, alignment);
}

}  // namespace manifest
