#pragma once

#include "script/opcodes.h"
#include "script/value.h"

namespace script {

class ESContext;

/// The result of a comparison; NaN makes it Unordered.
enum class Order { False, True, Unordered };

/// The operators of the language on any values: what the machine's fast paths leave over. They may call back
/// into scripts through `valueOf` and `toString`.

/// `op` is one of the plain binary operators, from Op::Add to Op::UShr.
ESValue applyBinary(ESContext& context, Op op, const ESValue& left, const ESValue& right);
/// Whether `left` < `right`.
Order lessThan(ESContext& context, const ESValue& left, const ESValue& right);
/// Whether `left` <= `right`; NaN makes it false.
bool lessOrEqual(ESContext& context, const ESValue& left, const ESValue& right);
/// The abstract equality of ECMA-262 third edition, 11.9.3.
bool looselyEqual(ESContext& context, ESValue left, ESValue right);
/// What `typeof` says.
const ESAtom* typeName(const ESValue& value);

}  // namespace script
