#pragma once

#include "manifest/huge_pages.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace manifest {

/// An open-addressing index over entries that live elsewhere: it finds the handle of an entry from the
/// entry's hash and a test for equality. A handle is a small value whose default stands for none. Linear
/// probing, at most three quarters full. Entries are never removed.
template <class Handle>
class HashIndex {
public:
    /// The handle of the entry with this hash for which `equals(handle)` holds, or none.
    template <class Equals>
    Handle find(std::uint32_t hash, Equals&& equals) const {
        if (slots_.empty()) return {};
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = slots_[i];
            if (slot.handle == Handle{} || (slot.hash == hash && equals(slot.handle))) return slot.handle;
        }
    }

    /// Enters a handle under a hash. The caller has made sure that no equal entry is there.
    void insert(std::uint32_t hash, Handle handle) {
        if (++size_ * 4 > slots_.size() * 3) grow();
        place({hash, handle});
    }

    std::size_t size() const { return size_; }

private:
    struct Slot {
        std::uint32_t hash = 0;
        Handle handle{};
    };

    using Slots = std::pmr::vector<Slot>;

    std::size_t mask() const { return slots_.size() - 1; }

    void place(Slot slot) {
        std::size_t i = slot.hash & mask();
        while (!(slots_[i].handle == Handle{})) i = (i + 1) & mask();
        slots_[i] = slot;
    }

    void grow() {
        Slots old(slots_.empty() ? 16 : slots_.size() * 2, hugePageMemory());
        std::swap(old, slots_);
        for (const Slot& slot : old)
            if (!(slot.handle == Handle{})) place(slot);
    }

    Slots slots_{hugePageMemory()};
    std::size_t size_ = 0;
};

}  // namespace manifest
