#include "script/operators.h"

#include "script/atom.h"
#include "script/context.h"

#include <cmath>

namespace script {

namespace {

constexpr std::uint32_t shiftMask = 31;

ESValue add(ESContext& context, const ESValue& left, const ESValue& right) {
    const ESValue a = context.toPrimitive(left, Hint::None);
    const ESValue b = context.toPrimitive(right, Hint::None);
    if (!a.isString() && !b.isString()) return {context.toNumber(a) + context.toNumber(b)};
    const ESValue first = context.toText(a);
    const ESValue second = context.toText(b);
    return context.concatenateTexts(first.asText(), second.asText());
}

double bitwise(Op op, std::int32_t left, std::int32_t right) {
    const auto count = static_cast<std::uint32_t>(right) & shiftMask;
    switch (op) {
        case Op::BitAnd:
            return left & right;
        case Op::BitOr:
            return left | right;
        case Op::BitXor:
            return left ^ right;
        case Op::Shl:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) << count);
        case Op::Shr:
            return left >> count;
        default:
            return static_cast<std::uint32_t>(left) >> count;
    }
}

enum class Relation { Less, LessOrEqual };

Order compare(ESContext& context, const ESValue& left, const ESValue& right, Relation relation) {
    const ESValue a = context.toPrimitive(left, Hint::Number);
    const ESValue b = context.toPrimitive(right, Hint::Number);
    const auto answer = [](bool holds) { return holds ? Order::True : Order::False; };
    if (a.isString() && b.isString()) {
        const int order = compareTexts(context.arena(), a.asText(), b.asText());
        return answer(relation == Relation::Less ? order < 0 : order <= 0);
    }
    const double first = context.toNumber(a);
    const double second = context.toNumber(b);
    if (std::isnan(first) || std::isnan(second)) return Order::Unordered;
    return answer(relation == Relation::Less ? first < second : first <= second);
}

bool isNullOrUndefined(const ESValue& value) {
    return value.isNull() || value.isUndefined();
}

bool haveOneType(const ESValue& left, const ESValue& right) {
    return left.tag() == right.tag() || (left.isString() && right.isString());
}

}  // namespace

ESValue applyBinary(ESContext& context, Op op, const ESValue& left, const ESValue& right) {
    if (op == Op::Add) return add(context, left, right);
    if (op >= Op::BitAnd) {
        const std::int32_t first = context.toInt32(left);
        return {bitwise(op, first, context.toInt32(right))};
    }
    const double first = context.toNumber(left);
    const double second = context.toNumber(right);
    switch (op) {
        case Op::Sub:
            return {first - second};
        case Op::Mul:
            return {first * second};
        case Op::Div:
            return {first / second};
        default:
            return {std::fmod(first, second)};
    }
}

Order lessThan(ESContext& context, const ESValue& left, const ESValue& right) {
    return compare(context, left, right, Relation::Less);
}

bool lessOrEqual(ESContext& context, const ESValue& left, const ESValue& right) {
    return compare(context, left, right, Relation::LessOrEqual) == Order::True;
}

bool looselyEqual(ESContext& context, ESValue left, ESValue right) {
    while (!haveOneType(left, right)) {
        if (isNullOrUndefined(left) || isNullOrUndefined(right))
            return isNullOrUndefined(left) && isNullOrUndefined(right);
        if (left.isBoolean() || (left.isString() && right.isNumber()))
            left = ESValue(context.toNumber(left));
        else if (right.isBoolean() || (right.isString() && left.isNumber()))
            right = ESValue(context.toNumber(right));
        else if (left.isObject())
            left = context.toPrimitive(left, Hint::None);
        else
            right = context.toPrimitive(right, Hint::None);
    }
    return context.strictEquals(left, right);
}

const ESAtom* typeName(const ESValue& value) {
    switch (value.tag()) {
        case Tag::Null:
            return internAtom(u"object");
        case Tag::Boolean:
            return internAtom(u"boolean");
        case Tag::Number:
            return internAtom(u"number");
        case Tag::String:
        case Tag::Atom:
            return internAtom(u"string");
        case Tag::Object:
            return internAtom(value.asObject()->closure != nullptr ? u"function" : u"object");
        default:
            return internAtom(u"undefined");
    }
}

}  // namespace script
