#include "support/huge_pages.h"

#include <sys/mman.h>

#include <memory>

namespace support {

namespace {

constexpr std::size_t hugePage = std::size_t{2} << 20;

class HugePageResource : public std::pmr::memory_resource {
    void* do_allocate(std::size_t size, std::size_t alignment) override {
        void* block = std::pmr::new_delete_resource()->allocate(size, alignment);
        adviseHugePages(block, size);
        return block;
    }

    void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
        std::pmr::new_delete_resource()->deallocate(block, size, alignment);
    }

    bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }
};

}  // namespace

void adviseHugePages(void* begin, std::size_t size) {
    void* first = begin;
    if (std::align(hugePage, hugePage, first, size) != nullptr)
        ::madvise(first, size / hugePage * hugePage, MADV_HUGEPAGE);
}

std::pmr::memory_resource* hugePageMemory() {
    static HugePageResource memory;
    return &memory;
}

}  // namespace support
