#include "script/object.h"

#include "script/arena.h"
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
    if (ESValue* element = object.elements.find(name->arrayIndex)) {
        *element = ESValue::noElement();
        return true;
    }
    ESProperty* property = object.properties.find(name);
    if (property == nullptr) return true;
    if ((property->attributes & DontDelete) != 0) return false;
    *property = {nullptr, ESValue(), NoAttributes};
    return true;
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
