#pragma once

#include "script/native_class.h"

namespace script {

/// Arrays: a "length" that follows the elements, and the methods of lists.
class ESNativeArray : public ESNativeClass {
public:
    ESNativeArray();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;
    void put(ESContext& context, ESObject* object, const ESAtom* name, const ESValue& value) override;

    /// After a store under the index `i`: raises "length" to cover it.
    void growLength(ESContext& context, ESObject* object, std::uint32_t i);
};

}  // namespace script
