#include "script/native_boolean.h"

#include "script/context.h"

namespace script {

namespace {

enum Id : std::int32_t { Constructor = 0, ToString = 1, ValueOf = 2 };

constexpr MethodRow methods[] = {{"toString", 0, ToString}, {"valueOf", 0, ValueOf}};

}  // namespace

ESNativeBoolean::ESNativeBoolean() : ESNativeClass(QStringLiteral("Boolean")) {}

void ESNativeBoolean::install(ESContext& context) {
    ESObject* prototype = context.booleanPrototype;
    prototype->cls = this;
    prototype->value = ESValue::boolean(false);
    context.defineProperty(prototype, ReadOnly | DontEnumerate | DontDelete, knownAtoms().length,
                           ESValue(1.0));
    installClassConstructor(context, prototype, 1);
    installMethods(context, prototype, "Boolean.prototype", methods);
}

void ESNativeBoolean::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                           ESValue* argv) {
    if (function->builtinId == Constructor) {
        argv[0] = ESValue::boolean(context.toBoolean(argv[0]));
        return;
    }
    if (thisObject->cls != this)
        context.throwTypeError(QStringLiteral("Boolean.prototype.toString called on non-Boolean object"));
    switch (function->builtinId) {
        case ToString:
            argv[0] = context.toText(thisObject->value);
            return;
        case ValueOf:
            argv[0] = thisObject->value;
            return;
        default:
            ESNativeClass::call(context, function, thisObject, argc, argv);
    }
}

ESObject* ESNativeBoolean::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    return context.toObject(ESValue::boolean(context.toBoolean(argument(argc, argv, 0))));
}

}  // namespace script
