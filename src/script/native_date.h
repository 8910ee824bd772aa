#pragma once

#include "script/native_class.h"

namespace script {

/// Dates. The time value is a Julian day number times 86,400,000 plus the milliseconds of the day; local time
/// and UTC are the same throughout.
class ESNativeDate : public ESNativeClass {
public:
    ESNativeDate();

    /// Fills the context's global object and prototypes.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;
};

}  // namespace script
