#pragma once

#include "script/native_class.h"

#include <span>

namespace script {

/// The methods of Array.prototype.
std::span<const MethodRow> arrayMethods();

/// Calls the method `id`, with the result in `argv[0]`; false if there is none. They work on any object with
/// a "length".
bool callArrayMethod(ESContext& context, std::int32_t id, ESObject* thisObject, std::uint32_t argc,
                     ESValue* argv);

/// Sorts the first `length` elements of `list` in place by `compare`, or by their texts if it is null: a
/// Shell sort, through the elements' own reads and writes, so that whatever `compare` does to the list is
/// safe.
void sortArray(ESContext& context, ESObject* list, std::uint32_t length, ESObject* compare);

/// Tells a long native loop when the host ends the script; it asks once in a while.
class LoopWatch {
public:
    explicit LoopWatch(ESContext& context) : context_(context) {}
    /// Called once for each step.
    bool isOver();

private:
    ESContext& context_;
    std::uint32_t steps_ = 0;
};

/// Stores an element; undefined deletes it.
void putOrDelete(ESContext& context, ESObject* list, std::uint32_t i, const ESValue& value);

}  // namespace script
