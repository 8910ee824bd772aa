#include "script/native_array.h"

#include "script/array_methods.h"
#include "script/context.h"

#include <algorithm>
#include <typeinfo>

namespace script {

namespace {

constexpr std::uint32_t largestIndex = 0x7ffffffe;

}  // namespace

ESNativeArray::ESNativeArray() : ESNativeClass(QStringLiteral("Array")) {}

void ESNativeArray::install(ESContext& context) {
    installClassConstructor(context, context.arrayPrototype, 0);
    installMethods(context, context.arrayPrototype, "Array.prototype", arrayMethods());
}

void ESNativeArray::growLength(ESContext& context, ESObject* object, std::uint32_t i) {
    if (i > largestIndex) return;
    ESProperty& first = object->properties[0];
    if (first.name == knownAtoms().length && first.value.isNumber()) {
        if (i >= first.value.asNumber()) first.value = ESValue(static_cast<double>(i) + 1);
        object->hasElementsBehindLength = first.value.asNumber() < object->elements.size();
    } else if (i >= context.toUint32(context.get(object, knownAtoms().length))) {
        ESNativeClass::put(context, object, knownAtoms().length, ESValue(static_cast<double>(i) + 1));
    }
}

void ESNativeArray::put(ESContext& context, ESObject* object, const ESAtom* propertyName,
                        const ESValue& value) {
    if (propertyName != knownAtoms().length) {
        ESNativeClass::put(context, object, propertyName, value);
        if (propertyName->arrayIndex != ESAtom::noArrayIndex)
            growLength(context, object, propertyName->arrayIndex);
        return;
    }
    const std::uint32_t length = context.toUint32(value);
    const std::uint32_t oldLength = context.toUint32(context.get(object, propertyName));
    ESNativeClass::put(context, object, propertyName, ESValue(static_cast<double>(length)));
    if (length >= object->elements.size()) return;
    object->hasElementsBehindLength = true;
    // Nobody but a host's own class wants to know, and each index costs an atom. A length may lie billions
    // above the last element.
    if (typeid(*this) == typeid(ESNativeArray)) return;
    const std::uint32_t stored = std::min(oldLength, object->elements.size());
    for (std::uint32_t i = length; i < stored; ++i) removeElement(context, object, atomForIndex(i));
}

void ESNativeArray::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                         ESValue* argv) {
    constexpr std::int32_t constructorId = 0;
    if (function->builtinId == constructorId) {
        argv[0] = ESValue(construct(context, function, argc, argv));
        return;
    }
    if (!callArrayMethod(context, function->builtinId, thisObject, argc, argv))
        ESNativeClass::call(context, function, thisObject, argc, argv);
}

ESObject* ESNativeArray::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    if (argc != 1 || !argv[0].isNumber()) return context.newArray(argc, argv);
    const double length = argv[0].asNumber();
    if (length != context.toUint32(argv[0]))
        context.throwRangeError(QStringLiteral("bad length in array constructor"));
    ESObject* array = context.newArray(0, nullptr);
    array->properties[0].value = ESValue(length);
    return array;
}

}  // namespace script
