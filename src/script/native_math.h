#pragma once

#include "script/native_class.h"

namespace script {

/// The object "Math": constants and functions of numbers.
class ESNativeMath : public ESNativeClass {
public:
    ESNativeMath();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
};

}  // namespace script
