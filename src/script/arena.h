#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace script {

/// The memory of one context: everything that is allocated here is freed together when the arena goes. Small
/// blocks are cut from chunks and can be given back for reuse under the same size; large blocks are separate
/// allocations. Nothing is destroyed, so only trivially destructible things live here.
/// Throws ESFatalError "virtual machine memory too small" beyond the limit.
class Arena {
public:
    explicit Arena(std::size_t limit);
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena();

    /// `bytes` of memory, aligned to 16.
    void* allocate(std::size_t bytes) {
        const std::size_t sizeClass = (bytes + granule - 1) / granule;
        if (sizeClass >= classes) return allocateLarge(bytes);
        if (FreeBlock* block = free_[sizeClass]) {
            free_[sizeClass] = block->next;
            return block;
        }
        const std::size_t size = sizeClass * granule;
        if (static_cast<std::size_t>(end_ - next_) < size) addChunk();
        void* block = next_;
        next_ += size;
        return block;
    }

    /// Takes back a block of `allocate(bytes)`.
    void release(void* block, std::size_t bytes);

    template <class T>
    T* allocateArray(std::size_t count) {
        return static_cast<T*>(allocate(count * sizeof(T)));
    }

    std::size_t used() const { return used_; }
    void setLimit(std::size_t bytes) { limit_ = bytes; }

private:
    static constexpr std::size_t granule = 16;
    static constexpr std::size_t classes = 129;

    struct FreeBlock {
        FreeBlock* next;
    };
    struct alignas(16) LargeBlock {
        LargeBlock* previous;
        LargeBlock* next;
    };

    void addChunk();
    void* allocateLarge(std::size_t bytes);
    void count(std::size_t bytes);

    std::size_t limit_;
    std::size_t used_ = 0;
    char* next_ = nullptr;
    char* end_ = nullptr;
    std::array<FreeBlock*, classes> free_{};
    std::vector<std::unique_ptr<char[]>> chunks_;
    LargeBlock large_{&large_, &large_};
};

}  // namespace script
