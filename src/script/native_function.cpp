#include "script/native_function.h"

#include "script/context.h"
#include "script/parser.h"

namespace script {

namespace {

enum Id : std::int32_t { Constructor = 0, ToString = 1 };

constexpr MethodRow methods[] = {{"toString", 0, ToString}};

}  // namespace

ESNativeFunction::ESNativeFunction() : ESNativeClass(QStringLiteral("Function")) {}

void ESNativeFunction::install(ESContext& context) {
    ESObject* prototype = context.functionPrototype;
    prototype->cls = this;
    prototype->closure = static_cast<ESClosure*>(context.arena().allocate(sizeof(ESClosure)));
    *prototype->closure = {0, 0, nullptr, nullptr};
    prototype->value = ESValue(internAtom(u"Function.prototype"));
    context.defineProperty(prototype, ReadOnly | DontEnumerate | DontDelete, knownAtoms().length,
                           ESValue(0.0));
    installClassConstructor(context, prototype, 1);
    installMethods(context, prototype, "Function.prototype", methods);
}

void ESNativeFunction::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                            ESValue* argv) {
    switch (function->builtinId) {
        case ESObject::noBuiltin:
            argv[0] = ESValue();  // Function.prototype itself
            return;
        case Constructor:
            argv[0] = ESValue(construct(context, function, argc, argv));
            return;
        case ToString:
            argv[0] = ESValue(internAtom(u"<<function>>"));
            return;
        default:
            ESNativeClass::call(context, function, thisObject, argc, argv);
    }
}

/// The last argument is the body, the others are the parameters.
ESObject* ESNativeFunction::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    QStringList parameters;
    for (std::uint32_t i = 0; i + 1 < argc; ++i) parameters.append(context.toStringValue(argv[i]));
    const QString parameterText = parameters.join(QLatin1Char(','));
    const QString body = context.toStringValue(argc > 0 ? argv[argc - 1] : ESValue());
    std::uint32_t index = 0;
    {
        ESParser parser(context);
        index = context.addTemplate(parser.compileFunction(parameterText, body));
    }
    ESObject* function = context.newClosure(context.codeTemplate(index));
    function->value = ESValue(internAtom(u"anonymous"));
    return function;
}

}  // namespace script
