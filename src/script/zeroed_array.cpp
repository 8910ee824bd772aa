#include "script/zeroed_array.h"

#include <sys/mman.h>

#include <new>

namespace script {

void* mapPages(std::size_t bytes) {
    constexpr int kind = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, kind, -1, 0);
    if (pages == MAP_FAILED) throw std::bad_alloc();
    return pages;
}

void unmapPages(void* pages, std::size_t bytes) {
    munmap(pages, bytes);
}

}  // namespace script
