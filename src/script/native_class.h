#pragma once

#include "script/class.h"

#include <span>

namespace script {

/// A method of the library: the class prefixes its name.
struct MethodRow {
    const char* name;
    std::uint32_t arity;
    std::int32_t id;
};

/// What the library's classes share: calls and constructions of ids they do not know are errors.
class ESNativeClass : public ESClass {
public:
    using ESClass::ESClass;

    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;

protected:
    /// Installs `rows` in `holder` with full names of the form "prefix.name".
    void installMethods(ESContext& context, ESObject* holder, const char* prefix,
                        std::span<const MethodRow> rows);
    /// Installs the constructor of the class's name with id 0.
    ESObject* installClassConstructor(ESContext& context, ESObject* prototype, std::uint32_t arity);
};

/// The argument `i`, undefined if it was not given.
inline ESValue argument(std::uint32_t argc, const ESValue* argv, std::uint32_t i) {
    return i < argc ? argv[i] : ESValue();
}

}  // namespace script
