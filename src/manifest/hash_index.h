#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace manifest {

/// An open-addressing index over entries that live in an array elsewhere: it finds the position of an entry
/// from the entry's hash and a test for equality. Eight bytes a slot, linear probing, at most three quarters
/// full. Entries are never removed.
class HashIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// The position of the entry with this hash for which `equals(position)` holds, or `none`.
    template <class Equals>
    std::uint32_t find(std::uint32_t hash, Equals&& equals) const {
        if (slots_.empty()) return none;
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = slots_[i];
            if (slot.position == none || (slot.hash == hash && equals(slot.position))) return slot.position;
        }
    }

    /// Enters a position under a hash. The caller has made sure that no equal entry is there.
    void insert(std::uint32_t hash, std::uint32_t position) {
        if (++size_ * 4 > slots_.size() * 3) grow();
        place({hash, position});
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = none;
    };

    std::size_t mask() const { return slots_.size() - 1; }

    void place(Slot slot) {
        std::size_t i = slot.hash & mask();
        while (slots_[i].position != none) i = (i + 1) & mask();
        slots_[i] = slot;
    }

    void grow() {
        std::vector<Slot> old(slots_.empty() ? 16 : slots_.size() * 2);
        std::swap(old, slots_);
        for (const Slot& slot : old)
            if (slot.position != none) place(slot);
    }

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
};

}  // namespace manifest
