// Properties under computed names, and the elements of arrays, which need no name.
#include "script/atom.h"
#include "script/context.h"
#include "script/native_array.h"
#include "script/native_string.h"

namespace script {

namespace {

/// The array index that `key` is as a number, or ESAtom::noArrayIndex.
std::uint32_t indexOf(const ESValue& key) {
    if (!key.isNumber()) return ESAtom::noArrayIndex;
    const double number = key.asNumber();
    if (!(number >= 0 && number < ESAtom::noArrayIndex)) return ESAtom::noArrayIndex;
    const auto index = static_cast<std::uint32_t>(number);
    return index == number ? index : ESAtom::noArrayIndex;
}

}  // namespace

/// The element `i`, which is not among the dense ones.
ESValue ESContext::getMissingElement(ESObject* object, std::uint32_t i) {
    // Arrays have what is stored and no more; a host's class may answer to any name.
    const ESAtom* name = object->cls == arrayClass.get() ? findAtomForIndex(i) : atomForIndex(i);
    return name != nullptr ? get(object, name) : ESValue();
}

void ESContext::putElement(ESObject* object, std::uint32_t i, const ESValue& value) {
    if (ESValue* element = object->elements.find(i)) {
        *element = value;
        if (object->hasElementsBehindLength) arrayClass->growLength(*this, object, i);
        return;
    }
    const bool isFresh = !object->hasSparseElements || findAtomForIndex(i) == nullptr;
    if (object->cls != arrayClass.get() || !object->isDenseIndex(i) || !isFresh)
        return put(object, atomForIndex(i), value);
    object->elements.put(arena_, i, value);
    arrayClass->growLength(*this, object, i);
}

ESValue ESContext::getComputed(ESObject* object, const ESValue& key) {
    const std::uint32_t index = indexOf(key);
    const bool isElement = index != ESAtom::noArrayIndex && object->isArray;
    return isElement ? getElement(object, index) : get(object, toAtom(key));
}

void ESContext::putComputed(ESObject* object, const ESValue& key, const ESValue& value) {
    const std::uint32_t index = indexOf(key);
    if (index != ESAtom::noArrayIndex && object->isArray) return putElement(object, index, value);
    const ESValue kept = value;
    put(object, toAtom(key), kept);
}

/// The property of any value. The length of a text needs no object around it.
ESValue ESContext::getMember(const ESValue& target, const ESAtom* name) {
    if (target.isString() && name == knownAtoms().length)
        return {static_cast<double>(target.asText().length)};
    return get(toObject(target), name);
}

ESValue ESContext::getComputedMember(const ESValue& target, const ESValue& key) {
    if (target.isObject()) return getComputed(target.asObject(), key);
    return getMember(target, toAtom(key));
}

}  // namespace script
