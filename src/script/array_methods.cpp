#include "script/array_methods.h"

#include "script/context.h"
#include "script/limits.h"
#include "script/native_array.h"

#include <algorithm>

namespace script {

namespace {

enum Id : std::int32_t {
    ToString = 2,
    ToLocaleString = 3,
    Concat = 4,
    Join = 5,
    Pop = 6,
    Push = 7,
    Reverse = 8,
    Shift = 9,
    Slice = 10,
    Sort = 11,
};

constexpr MethodRow methods[] = {
    {"toString", 0, ToString}, {"toLocaleString", 0, ToLocaleString},
    {"concat", 0, Concat},     {"join", 1, Join},
    {"pop", 0, Pop},           {"push", 0, Push},
    {"reverse", 0, Reverse},   {"shift", 0, Shift},
    {"slice", 2, Slice},       {"sort", 1, Sort},
};

std::uint32_t lengthOf(ESContext& context, ESObject* list) {
    return context.toUint32(context.get(list, knownAtoms().length));
}

void setLength(ESContext& context, ESObject* list, std::uint32_t length) {
    context.put(list, knownAtoms().length, ESValue(static_cast<double>(length)));
}

/// The length of a list that is going to be walked.
std::uint32_t walkedLength(ESContext& context, ESObject* list) {
    const std::uint32_t length = lengthOf(context, list);
    if (length > limits::arrayWalk) context.throwRangeError(QStringLiteral("array too long"));
    return length;
}

void appendText(ESContext& context, QString& text, const QString& part) {
    if (text.size() + part.size() > limits::stringLength)
        context.throwRangeError(QStringLiteral("string too long"));
    text += part;
}

ESValue toString(ESContext& context, ESObject* list) {
    if (list->cls != context.arrayClass.get())
        context.throwTypeError(QStringLiteral("Array.prototype.toString requires an array"));
    const std::uint32_t length = walkedLength(context, list);
    QString text;
    LoopWatch watch(context);
    for (std::uint32_t i = 0; i < length && !watch.isOver(); ++i) {
        const ESValue element = context.getElement(list, i);
        if (i > 0) appendText(context, text, QStringLiteral(","));
        if (!element.isNull()) appendText(context, text, context.toStringValue(element));
    }
    return context.newString(text);
}

ESValue join(ESContext& context, ESObject* list, const ESValue& separatorValue) {
    const QString separator =
        separatorValue.isUndefined() ? QStringLiteral(",") : context.toStringValue(separatorValue);
    const std::uint32_t length = walkedLength(context, list);
    QString text;
    bool isFirst = true;
    LoopWatch watch(context);
    for (std::uint32_t i = 0; i < length && !watch.isOver(); ++i) {
        const ESValue element = context.getElement(list, i);
        if (element.isUndefined() || element.isNull()) continue;
        if (!isFirst) appendText(context, text, separator);
        isFirst = false;
        appendText(context, text, context.toStringValue(element));
    }
    return context.newString(text);
}

/// Appends `part`, or its elements if it is an array; undefined elements take no place.
void appendTo(ESContext& context, ESObject* result, std::uint32_t& count, const ESValue& part) {
    if (!part.isObject() || part.asObject()->cls != context.arrayClass.get())
        return context.putElement(result, count++, part);
    const std::uint32_t length = walkedLength(context, part.asObject());
    LoopWatch watch(context);
    for (std::uint32_t i = 0; i < length && !watch.isOver(); ++i) {
        const ESValue element = context.getElement(part.asObject(), i);
        if (!element.isUndefined()) context.putElement(result, count++, element);
    }
}

ESValue concat(ESContext& context, ESObject* list, std::uint32_t argc, const ESValue* argv) {
    ESObject* result = context.newArray(0, nullptr);
    std::uint32_t count = 0;
    appendTo(context, result, count, ESValue(list));
    for (std::uint32_t i = 0; i < argc; ++i) appendTo(context, result, count, argv[i]);
    return {result};
}

ESValue pop(ESContext& context, ESObject* list) {
    const std::uint32_t length = lengthOf(context, list);
    ESValue last;
    if (length > 0) {
        last = context.getElement(list, length - 1);
        deleteElement(*list, length - 1);
    }
    setLength(context, list, length > 0 ? length - 1 : 0);
    return last;
}

ESValue push(ESContext& context, ESObject* list, std::uint32_t argc, const ESValue* argv) {
    std::uint32_t length = lengthOf(context, list);
    for (std::uint32_t i = 0; i < argc; ++i) context.putElement(list, length++, argv[i]);
    if (list->cls != context.arrayClass.get()) setLength(context, list, length);
    return {static_cast<double>(length)};
}

ESValue reverse(ESContext& context, ESObject* list) {
    const std::uint32_t length = walkedLength(context, list);
    LoopWatch watch(context);
    for (std::uint32_t i = 0; i < length / 2 && !watch.isOver(); ++i) {
        const std::uint32_t opposite = length - 1 - i;
        const ESValue low = context.getElement(list, i);
        const ESValue high = context.getElement(list, opposite);
        putOrDelete(context, list, i, high);
        putOrDelete(context, list, opposite, low);
    }
    return {list};
}

ESValue shift(ESContext& context, ESObject* list) {
    const std::uint32_t length = walkedLength(context, list);
    if (length == 0) {
        setLength(context, list, 0);
        return {};
    }
    const ESValue first = context.getElement(list, 0);
    LoopWatch watch(context);
    for (std::uint32_t i = 1; i < length && !watch.isOver(); ++i) {
        if (hasElement(*list, i))
            context.putElement(list, i - 1, context.getElement(list, i));
        else
            deleteElement(*list, i - 1);
    }
    deleteElement(*list, length - 1);
    setLength(context, list, length - 1);
    return first;
}

ESValue slice(ESContext& context, ESObject* list, const ESValue& startValue, const ESValue& endValue) {
    const std::int64_t length = walkedLength(context, list);
    const auto place = [length](std::int64_t offset) {
        return std::clamp<std::int64_t>(offset < 0 ? offset + length : offset, 0, length);
    };
    const std::int64_t start = place(context.toInt32(startValue));
    const std::int64_t end = endValue.isUndefined() ? length : place(context.toInt32(endValue));
    ESObject* result = context.newArray(0, nullptr);
    LoopWatch watch(context);
    for (std::int64_t i = start; i < end && !watch.isOver(); ++i) {
        const auto source = static_cast<std::uint32_t>(i);
        if (hasElement(*list, source))
            context.putElement(result, static_cast<std::uint32_t>(i - start),
                               context.getElement(list, source));
    }
    return {result};
}

ESValue sort(ESContext& context, ESObject* list, const ESValue& compare) {
    if (!compare.isUndefined() && (!compare.isObject() || compare.asObject()->closure == nullptr))
        context.throwGeneralError(QStringLiteral("Array.prototype.sort argument is not a function"));
    sortArray(context, list, walkedLength(context, list), compare.isObject() ? compare.asObject() : nullptr);
    return {list};
}

}  // namespace

std::span<const MethodRow> arrayMethods() {
    return methods;
}

bool LoopWatch::isOver() {
    return ++steps_ % limits::nativeStride == 0 && context_.isInterrupted();
}

void putOrDelete(ESContext& context, ESObject* list, std::uint32_t i, const ESValue& value) {
    if (value.isUndefined())
        deleteElement(*list, i);
    else
        context.putElement(list, i, value);
}

bool callArrayMethod(ESContext& context, std::int32_t id, ESObject* thisObject, std::uint32_t argc,
                     ESValue* argv) {
    const auto run = [&]() -> ESValue {
        switch (id) {
            case Concat:
                return concat(context, thisObject, argc, argv);
            case Join:
                return join(context, thisObject, argv[0]);
            case Pop:
                return pop(context, thisObject);
            case Push:
                return push(context, thisObject, argc, argv);
            case Reverse:
                return reverse(context, thisObject);
            case Shift:
                return shift(context, thisObject);
            case Slice:
                return slice(context, thisObject, argv[0], argv[1]);
            case Sort:
                return sort(context, thisObject, argv[0]);
            default:
                return toString(context, thisObject);
        }
    };
    if (id < ToString || id > Sort) return false;
    argv[0] = run();
    return true;
}

}  // namespace script
