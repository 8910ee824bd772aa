#include "script/native_error.h"

#include "script/context.h"
#include "script/native_object.h"

namespace script {

void ESNativeError::install(ESContext& context) {
    const ESNativeError& general = *context.errorClass;
    const bool isGeneral = this == &general;
    prototype_ = context.newObject(isGeneral ? context.objectPrototype : general.prototype_,
                                   context.objectClass.get());
    context.defineProperty(prototype_, DontEnumerate | DontDelete, internAtom(u"name"),
                           ESValue(internAtom(name())));
    context.defineProperty(prototype_, DontEnumerate | DontDelete, internAtom(u"message"),
                           ESValue(internAtom(u"")));
    constructor_ = installClassConstructor(context, prototype_, 1);
    setUpMore(context);
}

void ESNativeError::setUpMore(ESContext&) {}

void ESNativeError::call(ESContext& context, ESObject* function, ESObject*, std::uint32_t argc,
                         ESValue* argv) {
    argv[0] = ESValue(construct(context, function, argc, argv));
}

ESObject* ESNativeError::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    ESObject* error = context.newObject(prototype_, this);
    const ESValue message = argument(argc, argv, 0);
    if (!message.isUndefined()) context.put(error, internAtom(u"message"), message);
    return error;
}

}  // namespace script
