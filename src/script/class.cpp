#include "script/class.h"

#include "script/atom.h"
#include "script/context.h"

namespace script {

ESBuiltinDescriptor::ESBuiltinDescriptor(const char* propertyName, const char* qualifiedName,
                                         std::uint32_t parameters, std::int32_t builtinId, bool isConstructor,
                                         const char* helpText)
    : name(internAtom(QString::fromUtf8(propertyName))),
      fullName(internAtom(QString::fromUtf8(qualifiedName))),
      arity(parameters),
      id(builtinId),
      constructs(isConstructor),
      help(helpText) {}

ESClass::ESClass(const QString& name) : name_(name) {}

ESClass::~ESClass() = default;

void ESClass::get(ESValue& result, ESContext&, ESObject* object, const ESAtom* name) {
    const ESValue* found = object->find(name);
    result = found != nullptr ? *found : ESValue();
}

void ESClass::put(ESContext& context, ESObject* object, const ESAtom* name, const ESValue& value) {
    if (ESValue* element = object->elements.find(name->arrayIndex)) {
        *element = value;
    } else if (ESProperty* property = object->properties.find(name)) {
        if ((property->attributes & ReadOnly) == 0) property->value = value;
    } else {
        object->add(context.arena(), name, NoAttributes, value);
    }
}

bool ESClass::hasProperty(ESContext&, ESObject*, const ESAtom*) {
    return false;
}

bool ESClass::canPut(ESContext&, ESObject*, const ESAtom*) {
    return false;
}

bool ESClass::removeElement(ESContext&, ESObject*, const ESAtom*) {
    return false;
}

ESValue ESClass::defaultValue(ESContext&, ESObject*, const ESAtom*) {
    return {};
}

void ESClass::call(ESContext&, ESObject*, ESObject*, std::uint32_t, ESValue* argv) {
    argv[0] = ESValue();
}

ESObject* ESClass::construct(ESContext&, ESObject*, std::uint32_t, ESValue*) {
    return nullptr;
}

ESObject* ESClass::setUp(ESContext& context) {
    ESObject* object = context.newObject(context.objectPrototype, this);
    context.defineProperty(context.global, DontEnumerate, internAtom(name_), ESValue(object));
    return object;
}

}  // namespace script
