#include "script/context.h"
#include "script/limits.h"
#include "script/native_boolean.h"
#include "script/native_date.h"
#include "script/native_number.h"
#include "script/native_string.h"

#include <array>
#include <cmath>
#include <limits>

namespace script {

namespace {

constexpr double twoTo32 = 4294967296.0;
constexpr double twoTo63 = 9223372036854775808.0;

/// floor of the magnitude, with the sign.
double truncated(double number) {
    return std::trunc(number);
}

bool isWhole(double number) {
    return number == std::floor(number);
}

/// Any text of a whole number has at most 64 digits and a sign.
QString wholeNumberText(std::int64_t number, unsigned radix) {
    constexpr std::size_t longest = 65;
    std::array<char16_t, longest> units{};
    auto first = units.end();
    auto magnitude = number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
    do {
        *--first = static_cast<char16_t>("0123456789abcdefghijklmnopqrstuvwxyz"[magnitude % radix]);
        magnitude /= radix;
    } while (magnitude != 0);
    if (number < 0) *--first = u'-';
    return QStringView(first, units.end()).toString();
}

QString numberText(double number, int radix) {
    constexpr int smallestRadix = 2;
    constexpr int largestRadix = 36;
    constexpr int significantDigits = 6;
    if (std::isnan(number)) return QStringLiteral("NaN");
    if (number == 0) return QStringLiteral("0");
    if (std::isinf(number)) return number > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    const bool hasDigits = radix >= smallestRadix && radix <= largestRadix;
    if (hasDigits && isWhole(number) && number >= -twoTo63 && number < twoTo63)
        return wholeNumberText(static_cast<std::int64_t>(number), static_cast<unsigned>(radix));
    return QString::number(number, 'g', significantDigits);
}

/// The low 32 bits of a hexadecimal number; NaN if it is none.
double hexadecimalNumber(const QString& digits) {
    constexpr int base = 16;
    bool isNumber = false;
    const qulonglong number = digits.toULongLong(&isNumber, base);
    return isNumber ? static_cast<double>(static_cast<std::uint32_t>(number))
                    : std::numeric_limits<double>::quiet_NaN();
}

double textNumber(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return std::numeric_limits<double>::quiet_NaN();
    if (trimmed.startsWith(u"0x") || trimmed.startsWith(u"0X")) return hexadecimalNumber(trimmed.mid(2));
    bool isNumber = false;
    const double number = trimmed.toDouble(&isNumber);
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

std::int32_t int32Of(double number) {
    if (number >= std::numeric_limits<std::int32_t>::min() &&
        number <= std::numeric_limits<std::int32_t>::max())
        return static_cast<std::int32_t>(number);
    if (!std::isfinite(number)) return 0;
    const auto remainder = static_cast<std::int64_t>(std::fmod(truncated(number), twoTo32));
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(remainder));
}

}  // namespace

bool ESContext::toBoolean(const ESValue& value) {
    switch (value.tag()) {
        case Tag::Undefined:
        case Tag::Null:
            return false;
        case Tag::Boolean:
        case Tag::Number:
            return value.asNumber() != 0 && !std::isnan(value.asNumber());
        case Tag::String:
        case Tag::Atom:
            return value.asText().length > 0;
        case Tag::Object:
            return true;
        default:
            throw ESFatalError{QStringLiteral("bad type in toBoolean")};
    }
}

double ESContext::toNumber(const ESValue& value) {
    switch (value.tag()) {
        case Tag::Undefined:
            return std::numeric_limits<double>::quiet_NaN();
        case Tag::Null:
            return 0;
        case Tag::Boolean:
        case Tag::Number:
            return value.asNumber();
        case Tag::String:
        case Tag::Atom:
            return textNumber(view(value.asText()).toString());
        case Tag::Object:
            return toNumber(toPrimitive(value, Hint::Number));
        default:
            throw ESFatalError{QStringLiteral("bad type in toNumber")};
    }
}

double ESContext::toInteger(const ESValue& value) {
    const double number = toNumber(value);
    if (std::isnan(number)) return 0;
    return std::isinf(number) || number == 0 ? number : truncated(number);
}

std::int32_t ESContext::toInt32(const ESValue& value) {
    return int32Of(value.isNumber() ? value.asNumber() : toNumber(value));
}

std::uint32_t ESContext::toUint32(const ESValue& value) {
    return static_cast<std::uint32_t>(toInt32(value));
}

std::uint16_t ESContext::toUint16(const ESValue& value) {
    return static_cast<std::uint16_t>(toUint32(value));
}

ESValue ESContext::toText(const ESValue& value) {
    switch (value.tag()) {
        case Tag::Undefined:
            return {internAtom(u"undefined")};
        case Tag::Null:
            return {knownAtoms().null};
        case Tag::Boolean:
            return {toBoolean(value) ? knownAtoms().trueName : knownAtoms().falseName};
        case Tag::Number:
            if (value.asNumber() >= 0 && value.asNumber() < 1024 && isWhole(value.asNumber()))
                return {atomForIndex(static_cast<std::uint32_t>(value.asNumber()))};
            return newString(numberText(value.asNumber(), 10));
        case Tag::String:
        case Tag::Atom:
            return value;
        case Tag::Object:
            return toText(toPrimitive(value, Hint::String));
        default:
            throw ESFatalError{QStringLiteral("unknown type in toString")};
    }
}

QString ESContext::toStringValue(const ESValue& value, int radix) {
    if (value.isNumber()) return numberText(value.asNumber(), radix);
    return view(toText(value).asText()).toString();
}

const ESAtom* ESContext::toAtom(const ESValue& value) {
    if (value.isAtom()) return value.asAtom();
    if (value.isNumber()) {
        const double number = value.asNumber();
        if (number >= 0 && number < ESAtom::noArrayIndex && isWhole(number))
            return atomForIndex(static_cast<std::uint32_t>(number));
    }
    const ESValue text = toText(value);
    return text.isAtom() ? text.asAtom() : internAtom(view(text.asText()));
}

ESValue ESContext::toPrimitive(const ESValue& value, Hint hint) {
    if (!value.isObject()) return value;
    if (value.asObject() == global) return {internAtom(u"[object global]")};
    const ESValue primitive = defaultValue(value.asObject(), hint);
    if (primitive.isObject()) throw ESFatalError{QStringLiteral("bad type in toPrimitive")};
    return primitive;
}

ESValue ESContext::defaultValue(ESObject* object, Hint hint) {
    const bool isTextFirst = hint == Hint::String || (hint == Hint::None && object->cls == dateClass.get());
    static const ESAtom* const valueOf = internAtom(u"valueOf");
    static const ESAtom* const toString = internAtom(u"toString");
    for (const ESAtom* name : {isTextFirst ? toString : valueOf, isTextFirst ? valueOf : toString}) {
        const ESValue method = get(object, name);
        if (!method.isObject() || method.asObject()->closure == nullptr) continue;
        const ESValue result = callFunction(method.asObject(), object, 0, nullptr);
        if (!result.isUndefined() && !result.isObject()) return result;
    }
    throwTypeError(QStringLiteral("type error: no default value"));
}

ESObject* ESContext::toObject(const ESValue& value) {
    const auto wrap = [&](ESObject* prototype, ESClass* cls, const ESValue& primitive) {
        ESObject* object = newObject(prototype, cls);
        object->value = primitive;
        return object;
    };
    switch (value.tag()) {
        case Tag::Undefined:
            throwTypeError(QStringLiteral("can't convert undefined to an object"));
        case Tag::Null:
            throwTypeError(QStringLiteral("can't convert null to an object"));
        case Tag::Boolean:
            return wrap(booleanPrototype, booleanClass.get(), ESValue::boolean(value.asNumber() != 0));
        case Tag::Number:
            return wrap(numberPrototype, numberClass.get(), value);
        case Tag::String:
        case Tag::Atom:
            return wrap(stringPrototype, stringClass.get(), value);
        case Tag::Object:
            return value.asObject();
        default:
            throw ESFatalError{QStringLiteral("unknown type in toObject")};
    }
}

bool ESContext::strictEquals(const ESValue& a, const ESValue& b) {
    if (a.isString() && b.isString())
        return &a.asText() == &b.asText() ||
               (a.asText().length == b.asText().length && (a.tag() != b.tag() || !a.isAtom()) &&
                compareTexts(arena_, a.asText(), b.asText()) == 0);
    if (a.tag() != b.tag()) return false;
    switch (a.tag()) {
        case Tag::Undefined:
        case Tag::Null:
            return true;
        case Tag::Boolean:
        case Tag::Number:
            return a.asNumber() == b.asNumber();
        case Tag::Object:
            return a.asObject() == b.asObject();
        default:
            throwTypeError(QStringLiteral("??"));
    }
}

ESValue ESContext::concatenateTexts(const ESText& left, const ESText& right) {
    if (left.length > limits::stringLength || right.length > limits::stringLength - left.length)
        throwRangeError(QStringLiteral("string too long"));
    return {concatenate(arena_, left, right)};
}

}  // namespace script
