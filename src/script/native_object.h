#pragma once

#include "script/native_class.h"

namespace script {

/// Plain objects, and the methods that all objects inherit.
class ESNativeObject : public ESNativeClass {
public:
    ESNativeObject();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;
};

}  // namespace script
