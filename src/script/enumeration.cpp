// The objects that `for`-`in` walks.
#include "script/atom.h"
#include "script/context.h"
#include "script/native_object.h"

#include <algorithm>
#include <vector>

namespace script {

namespace {

void gatherNames(const ESObject& object, std::vector<const ESAtom*>& names) {
    for (std::uint32_t i = 0; i < object.elements.size(); ++i)
        if (object.elements.find(i) != nullptr) names.push_back(atomForIndex(i));
    for (const ESProperty& property : object.properties)
        if (property.name != nullptr && (property.attributes & DontEnumerate) == 0)
            names.push_back(property.name);
}

/// Each name once, ordered by the time of its interning.
std::vector<const ESAtom*> enumerableNames(const ESObject* object) {
    std::vector<const ESAtom*> names;
    for (; object != nullptr; object = object->prototype) gatherNames(*object, names);
    std::sort(names.begin(), names.end(),
              [](const ESAtom* a, const ESAtom* b) { return a->index < b->index; });
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

}  // namespace

ESObject* ESContext::enumerate(ESObject* object) {
    const std::vector<const ESAtom*> names = enumerableNames(object);
    ESObject* enumeration = newObject(objectPrototype, objectClass.get());
    const auto count = static_cast<std::uint32_t>(names.size());
    enumeration->elements.reserve(arena_, count);
    for (std::uint32_t i = 0; i < count; ++i) enumeration->elements.put(arena_, i, ESValue(names[i]));
    put(enumeration, knownAtoms().index, ESValue(0.0));
    put(enumeration, knownAtoms().length, ESValue(static_cast<double>(count)));
    return enumeration;
}

/// Gives `name` the next name; false when there is none left.
bool ESContext::next(ESObject* enumeration, ESValue& name) {
    const double index = toNumber(get(enumeration, knownAtoms().index));
    const double length = toNumber(get(enumeration, knownAtoms().length));
    if (!(length > index)) return false;
    put(enumeration, knownAtoms().index, ESValue(index + 1));
    name = getElement(enumeration, static_cast<std::uint32_t>(index));
    return true;
}

}  // namespace script
