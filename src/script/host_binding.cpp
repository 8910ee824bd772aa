#include "script/host_binding.h"

#include "script/context.h"
#include "script/limits.h"
#include "script/native_array.h"
#include "script/native_error.h"

namespace script {

std::unique_ptr<std::int32_t[]> arrayToInts(ESContext& context, const ESValue& value, std::uint32_t& count) {
    if (!value.isObject() || value.asObject()->cls != context.arrayClass.get())
        context.throwGeneralError(QStringLiteral("array argument expected"));
    ESObject* array = value.asObject();
    count = context.toUint32(context.get(array, knownAtoms().length));
    if (count > limits::arrayWalk) context.throwRangeError(QStringLiteral("array too long"));
    if (count == 0) return nullptr;
    auto numbers = std::make_unique<std::int32_t[]>(count);
    for (std::uint32_t i = 0; i < count; ++i) numbers[i] = context.toInt32(context.getElement(array, i));
    return numbers;
}

bool isError(const ESContext& context, const ESValue& value) {
    return isPrototypeOf(*context.errorClass->prototypeObject(), value);
}

}  // namespace script
