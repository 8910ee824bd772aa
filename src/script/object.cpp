#include "script/object.h"

#include "script/arena.h"
#include "script/atom.h"
#include "script/limits.h"

#include <algorithm>

namespace script {

void ElementVector::reserve(Arena& arena, std::uint32_t count) {
    if (count <= capacity_) return;
    constexpr std::uint32_t smallest = 4;
    const std::uint32_t capacity = std::max({count, capacity_ + capacity_ / 2, smallest});
    auto* values = arena.allocateArray<ESValue>(capacity);
    std::copy_n(values_, size_, values);
    arena.release(values_, std::size_t{capacity_} * sizeof(ESValue));
    values_ = values;
    capacity_ = capacity;
}

bool ESObject::isDenseIndex(std::uint32_t i) const {
    return isArray && i != ESAtom::noArrayIndex && i < elements.size() + limits::denseGap;
}

void ESObject::add(Arena& arena, const ESAtom* name, std::uint32_t attributes, ESValue newValue) {
    if (attributes == NoAttributes && isDenseIndex(name->arrayIndex)) {
        elements.put(arena, name->arrayIndex, newValue);
        return;
    }
    if (isArray && name->arrayIndex != ESAtom::noArrayIndex) hasSparseElements = true;
    properties.append(arena, name, attributes, newValue);
}

bool deleteProperty(ESObject& object, const ESAtom* name) {
    if (object.elements.find(name->arrayIndex) != nullptr) {
        object.elements.remove(name->arrayIndex);
        return true;
    }
    ESProperty* property = object.properties.find(name);
    if (property == nullptr) return true;
    if ((property->attributes & DontDelete) != 0) return false;
    *property = {nullptr, ESValue(), NoAttributes};
    if (object.isArray && name == knownAtoms().length) object.hasElementsBehindLength = true;
    return true;
}

// No object has a property under a name that nobody has interned.

bool hasElement(const ESObject& object, std::uint32_t i) {
    if (object.elements.find(i) != nullptr) return true;
    const ESAtom* name = findAtomForIndex(i);
    return name != nullptr && hasProperty(object, name);
}

bool deleteElement(ESObject& object, std::uint32_t i) {
    if (object.elements.find(i) != nullptr) {
        object.elements.remove(i);
        return true;
    }
    const ESAtom* name = findAtomForIndex(i);
    return name == nullptr || deleteProperty(object, name);
}

bool hasOwnProperty(const ESObject& object, const ESAtom* name) {
    return object.findOwn(name) != nullptr;
}

bool hasProperty(const ESObject& object, const ESAtom* name) {
    return object.find(name) != nullptr;
}

bool isEnumerableOwn(const ESObject& object, const ESAtom* name) {
    if (object.elements.find(name->arrayIndex) != nullptr) return true;
    const ESProperty* property = object.properties.find(name);
    return property != nullptr && (property->attributes & DontEnumerate) == 0;
}

bool isPrototypeOf(const ESObject& object, const ESValue& value) {
    if (!value.isObject()) return false;
    for (const ESObject* link = value.asObject()->prototype; link != nullptr; link = link->prototype)
        if (link == &object) return true;
    return false;
}

}  // namespace script
