#pragma once

#include "support/huge_pages.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace manifest {

/// A hash that nobody can foresee: it differs from process to process. Slower than the ordinary ones.
std::uint32_t seededHash(std::string_view text);

/// An open-addressing index over entries that live elsewhere and have a text for key: it finds the handle of
/// an entry from the text. A handle is a small value whose default stands for none; `textOf(handle)` gives
/// its key. Linear probing, at most three quarters full. Entries are never removed.
///
/// A file can hold texts that were made to collide; an index that meets long runs goes over to the seeded
/// hash.
template <class Handle>
class HashIndex {
public:
    using Hash = std::uint32_t (*)(std::string_view);

    explicit HashIndex(Hash hash) : hash_(hash) {}

    template <class TextOf>
    Handle find(std::string_view text, TextOf&& textOf) const {
        if (slots_.empty()) return {};
        const std::uint32_t hash = hash_(text);
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = slots_[i];
            if (slot.handle == Handle{} || (slot.hash == hash && textOf(slot.handle) == text))
                return slot.handle;
        }
    }

    /// Enters a handle. The caller has made sure that no entry of the same text is there.
    template <class TextOf>
    void insert(Handle handle, TextOf&& textOf) {
        if (++size_ * 4 > slots_.size() * 3) resize(slots_.empty() ? 16 : slots_.size() * 2);
        const std::size_t run = place({hash_(textOf(handle)), handle});
        if (run <= longestRun || hash_ == seededHash) return;
        hash_ = seededHash;
        for (Slot& slot : slots_)
            if (!(slot.handle == Handle{})) slot.hash = hash_(textOf(slot.handle));
        resize(slots_.size());
    }

    std::size_t size() const { return size_; }

private:
    static constexpr std::size_t longestRun = 256;

    struct Slot {
        std::uint32_t hash = 0;
        Handle handle{};
    };

    using Slots = std::pmr::vector<Slot>;

    std::size_t mask() const { return slots_.size() - 1; }

    /// Answers how many slots were taken.
    std::size_t place(Slot slot) {
        std::size_t run = 0;
        std::size_t i = slot.hash & mask();
        for (; !(slots_[i].handle == Handle{}); ++run) i = (i + 1) & mask();
        slots_[i] = slot;
        return run;
    }

    void resize(std::size_t slotCount) {
        Slots old(slotCount, support::hugePageMemory());
        std::swap(old, slots_);
        for (const Slot& slot : old)
            if (!(slot.handle == Handle{})) place(slot);
    }

    Slots slots_{support::hugePageMemory()};
    std::size_t size_ = 0;
    Hash hash_;
};

}  // namespace manifest
