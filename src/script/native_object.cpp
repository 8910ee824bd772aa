#include "script/native_object.h"

#include "script/context.h"
#include "script/native_boolean.h"
#include "script/native_number.h"
#include "script/native_string.h"

namespace script {

namespace {

enum Id : std::int32_t {
    Constructor = 0,
    ToString = 2,
    ToLocaleString = 3,
    ValueOf = 4,
    HasOwnProperty = 5,
    IsPrototypeOf = 6,
    PropertyIsEnumerable = 7,
};

constexpr MethodRow methods[] = {
    {"toString", 0, ToString},
    {"toLocaleString", 0, ToLocaleString},
    {"valueOf", 0, ValueOf},
    {"hasOwnProperty", 1, HasOwnProperty},
    {"isPrototypeOf", 1, IsPrototypeOf},
    {"propertyIsEnumerable", 1, PropertyIsEnumerable},
};

ESValue unwrapped(const ESContext& context, ESObject* object) {
    const ESClass* cls = object->cls;
    const bool isWrapper = cls == context.booleanClass.get() || cls == context.numberClass.get() ||
                           cls == context.stringClass.get();
    return isWrapper ? object->value : ESValue(object);
}

}  // namespace

ESNativeObject::ESNativeObject() : ESNativeClass(QStringLiteral("Object")) {}

void ESNativeObject::install(ESContext& context) {
    installClassConstructor(context, context.objectPrototype, 1);
    installMethods(context, context.objectPrototype, "Object.prototype", methods);
}

void ESNativeObject::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                          ESValue* argv) {
    switch (function->builtinId) {
        case Constructor:
            argv[0] = ESValue(construct(context, function, argc, argv));
            return;
        case ToString:
        case ToLocaleString:
            argv[0] = context.newString(QStringLiteral("[object %1]").arg(thisObject->cls->name()));
            return;
        case ValueOf:
            argv[0] = unwrapped(context, thisObject);
            return;
        case HasOwnProperty:
            argv[0] = ESValue::boolean(hasOwnProperty(*thisObject, context.toAtom(argv[0])));
            return;
        case IsPrototypeOf:
            argv[0] = ESValue::boolean(script::isPrototypeOf(*thisObject, argv[0]));
            return;
        case PropertyIsEnumerable:
            argv[0] = ESValue::boolean(isEnumerableOwn(*thisObject, context.toAtom(argv[0])));
            return;
        default:
            ESNativeClass::call(context, function, thisObject, argc, argv);
    }
}

ESObject* ESNativeObject::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    const ESValue value = argument(argc, argv, 0);
    if (value.isUndefined() || value.isNull()) return context.newObject(context.objectPrototype, this);
    if (value.isNoElement()) context.throwGeneralError(QStringLiteral("unknown type in Object constructor"));
    return context.toObject(value);
}

}  // namespace script
