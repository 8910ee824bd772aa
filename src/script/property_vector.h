#pragma once

#include "script/value.h"

#include <cstdint>

namespace script {

class Arena;

/// Attribute bits of a property.
enum Attribute : std::uint32_t {
    NoAttributes = 0,
    ReadOnly = 1,
    DontEnumerate = 2,
    DontDelete = 4,
    Parameter = 8,  ///< in the variable table of a function only
};

struct ESProperty {
    const ESAtom* name;  ///< null when the property was deleted
    ESValue value;
    std::uint32_t attributes;
};

/// The properties of an object in insertion order. A slot keeps its number for ever: a deleted property
/// leaves a blank slot. Names are found by pointer, by a scan while the vector is short and through a hash
/// index behind the slots once it is long. The memory is the arena's.
class PropertyVector {
public:
    std::uint32_t size() const { return size_; }
    ESProperty& operator[](std::uint32_t slot) { return slots_[slot]; }
    const ESProperty& operator[](std::uint32_t slot) const { return slots_[slot]; }
    ESProperty* begin() { return slots_; }
    ESProperty* end() { return slots_ + size_; }
    const ESProperty* begin() const { return slots_; }
    const ESProperty* end() const { return slots_ + size_; }

    /// The property `name`, or null.
    ESProperty* find(const ESAtom* name) const {
        if (capacity_ > scanned) return findByIndex(name);
        for (ESProperty* slot = slots_; slot != slots_ + size_; ++slot)
            if (slot->name == name) return slot;
        return nullptr;
    }

    /// Adds a property whose name is not there yet; a null name adds a blank slot.
    ESProperty& append(Arena& arena, const ESAtom* name, std::uint32_t attributes, ESValue value) {
        if (size_ == capacity_) grow(arena, capacity_ == 0 ? 2 : capacity_ * 2);
        ESProperty& slot = slots_[size_++];
        slot = {name, value, attributes};
        if (capacity_ > scanned && name != nullptr) enter(size_ - 1);
        return slot;
    }

    /// Makes room for `count` properties in an empty vector.
    void reserve(Arena& arena, std::uint32_t count) {
        if (count > capacity_) grow(arena, count);
    }

    /// Gives the memory back.
    void clear(Arena& arena);

private:
    static constexpr std::uint32_t scanned = 8;

    ESProperty* findByIndex(const ESAtom* name) const;
    void grow(Arena& arena, std::uint32_t count);
    void enter(std::uint32_t slot);
    /// A power of two above the capacity; entries are slot + 1, zero is free.
    std::uint32_t indexSize() const { return capacity_ * 2; }
    std::uint32_t* index() const { return reinterpret_cast<std::uint32_t*>(slots_ + capacity_); }

    ESProperty* slots_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
};

}  // namespace script
