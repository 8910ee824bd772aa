#pragma once

#include "script/object.h"

#include <QString>

namespace script {

/// What a builtin function is made from.
struct ESBuiltinDescriptor {
    ESBuiltinDescriptor(const char* propertyName, const char* qualifiedName, std::uint32_t parameters,
                        std::int32_t builtinId, bool isConstructor = false, const char* helpText = nullptr);

    const ESAtom* name;      ///< of the property that holds the function
    const ESAtom* fullName;  ///< such as "Math.abs"
    std::uint32_t arity;     ///< the number of arguments to which a call pads
    std::int32_t id;
    bool constructs;
    const char* help;  ///< UTF-8, or null
};

/// The behaviour of one kind of object in one context. A host derives from it to offer functions to scripts:
/// it overrides `call`, switches on `function->builtinId`, reads `argv` and writes the result to `argv[0]`.
/// Arguments hold at least the function's arity; `argv[0]` is always there. Everything may throw ESException.
class ESClass {
public:
    explicit ESClass(const QString& name);
    ESClass(const ESClass&) = delete;
    ESClass& operator=(const ESClass&) = delete;
    virtual ~ESClass();

    const QString& name() const { return name_; }

    /// The value of `name` on `object` or its prototypes; undefined if there is none.
    virtual void get(ESValue& result, ESContext& context, ESObject* object, const ESAtom* name);
    /// Replaces an own property, unless it is read-only, or adds one without attributes.
    virtual void put(ESContext& context, ESObject* object, const ESAtom* name, const ESValue& value);
    /// For hosts; the engine asks neither.
    virtual bool hasProperty(ESContext& context, ESObject* object, const ESAtom* name);
    virtual bool canPut(ESContext& context, ESObject* object, const ESAtom* name);
    /// Called for each index that an array loses when its length shrinks.
    virtual bool removeElement(ESContext& context, ESObject* object, const ESAtom* name);
    /// For hosts; the engine does not ask.
    virtual ESValue defaultValue(ESContext& context, ESObject* object, const ESAtom* name);
    /// Calls a builtin function of this class. The default answers undefined.
    virtual void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                      ESValue* argv);
    /// `new` on a builtin function of this class. Null makes `new` fail.
    virtual ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv);
    /// Makes a plain object of this class and stores it as a global property under the class's name.
    virtual ESObject* setUp(ESContext& context);

private:
    QString name_;
};

}  // namespace script
