#pragma once

#include "script/value.h"

#include <cstdint>
#include <memory>

namespace script {

class ESContext;

/// The elements of an array argument of a native function as 32-bit integers, for the caller to keep; `count`
/// is their number, and the answer is null when it is 0. Anything but an array raises the script's Error
/// "array argument expected".
std::unique_ptr<std::int32_t[]> arrayToInts(ESContext& context, const ESValue& value, std::uint32_t& count);

/// Whether `value` is an object with the Error prototype on its chain.
bool isError(const ESContext& context, const ESValue& value);

}  // namespace script
