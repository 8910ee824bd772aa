#include "script/arena.h"

#include "script/exception.h"

#include <algorithm>
#include <cstdlib>

namespace script {

Arena::Arena(std::size_t limit) : limit_(limit) {}

Arena::~Arena() {
    while (large_.next != &large_) {
        LargeBlock* block = large_.next;
        large_.next = block->next;
        std::free(block);
    }
}

void Arena::count(std::size_t bytes) {
    if (bytes > limit_ || used_ > limit_ - bytes)
        throw ESFatalError{QStringLiteral("virtual machine memory too small")};
    used_ += bytes;
}

void Arena::addChunk() {
    constexpr std::size_t firstChunk = std::size_t{64} * 1024;
    constexpr std::size_t largestChunk = std::size_t{1024} * 1024;
    const std::size_t size = std::clamp(used_, firstChunk, largestChunk);
    count(size);
    chunks_.push_back(std::unique_ptr<char[]>(new char[size]));
    next_ = chunks_.back().get();
    end_ = next_ + size;
}

void* Arena::allocateLarge(std::size_t bytes) {
    count(bytes);
    auto* block = static_cast<LargeBlock*>(std::malloc(sizeof(LargeBlock) + bytes));
    if (block == nullptr) throw ESFatalError{QStringLiteral("virtual machine memory too small")};
    block->previous = &large_;
    block->next = large_.next;
    block->next->previous = block;
    large_.next = block;
    return block + 1;
}

void Arena::release(void* block, std::size_t bytes) {
    if (block == nullptr) return;
    const std::size_t sizeClass = (bytes + granule - 1) / granule;
    if (sizeClass < classes) {
        auto* freed = static_cast<FreeBlock*>(block);
        freed->next = free_[sizeClass];
        free_[sizeClass] = freed;
        return;
    }
    LargeBlock* large = static_cast<LargeBlock*>(block) - 1;
    large->previous->next = large->next;
    large->next->previous = large->previous;
    used_ -= bytes;
    std::free(large);
}

}  // namespace script
