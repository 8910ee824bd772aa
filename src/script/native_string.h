#pragma once

#include "script/native_class.h"

namespace script {

/// String wrappers and the operations on texts. Plain texts only: there are no regular expressions.
class ESNativeString : public ESNativeClass {
public:
    ESNativeString();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;
    /// "length" is the number of UTF-16 units and cannot be set.
    void get(ESValue& result, ESContext& context, ESObject* object, const ESAtom* name) override;
    void put(ESContext& context, ESObject* object, const ESAtom* name, const ESValue& value) override;
};

}  // namespace script
