#include "manifest/huge_pages.h"

#include <sys/mman.h>

#include <memory>

namespace manifest {

namespace {

constexpr std::size_t hugePage = std::size_t{2} << 20;

}  // namespace

void adviseHugePages(void* begin, std::size_t size) {
    void* first = begin;
    if (std::align(hugePage, hugePage, first, size) != nullptr)
        ::madvise(first, size / hugePage * hugePage, MADV_HUGEPAGE);
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
