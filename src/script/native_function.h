#pragma once

#include "script/native_class.h"

namespace script {

/// Functions, and the constructor that compiles one from texts.
class ESNativeFunction : public ESNativeClass {
public:
    ESNativeFunction();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;
};

}  // namespace script
