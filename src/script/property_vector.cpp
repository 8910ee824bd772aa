#include "script/property_vector.h"

#include "script/arena.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace script {

namespace {

std::size_t bytesFor(std::uint32_t capacity, bool indexed) {
    const std::size_t index = indexed ? std::size_t{capacity} * 2 * sizeof(std::uint32_t) : 0;
    return std::size_t{capacity} * sizeof(ESProperty) + index;
}

}  // namespace

ESProperty* PropertyVector::findByIndex(const ESAtom* name) const {
    const std::uint32_t mask = indexSize() - 1;
    for (std::uint32_t place = name->hash & mask; index()[place] != 0; place = (place + 1) & mask) {
        ESProperty* slot = slots_ + (index()[place] - 1);
        if (slot->name == name) return slot;
    }
    return nullptr;
}

void PropertyVector::enter(std::uint32_t slot) {
    const std::uint32_t mask = indexSize() - 1;
    std::uint32_t place = slots_[slot].name->hash & mask;
    while (index()[place] != 0) place = (place + 1) & mask;
    index()[place] = slot + 1;
}

void PropertyVector::grow(Arena& arena, std::uint32_t count) {
    const std::uint32_t capacity = count > scanned ? std::bit_ceil(count) : count;
    const bool indexed = capacity > scanned;
    auto* slots = static_cast<ESProperty*>(arena.allocate(bytesFor(capacity, indexed)));
    std::copy_n(slots_, size_, slots);
    arena.release(slots_, bytesFor(capacity_, capacity_ > scanned));
    slots_ = slots;
    capacity_ = capacity;
    if (!indexed) return;
    std::memset(index(), 0, std::size_t{indexSize()} * sizeof(std::uint32_t));
    for (std::uint32_t slot = 0; slot < size_; ++slot)
        if (slots_[slot].name != nullptr) enter(slot);
}

void PropertyVector::clear(Arena& arena) {
    arena.release(slots_, bytesFor(capacity_, capacity_ > scanned));
    *this = PropertyVector();
}

}  // namespace script
