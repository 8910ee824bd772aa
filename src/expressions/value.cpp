#include "expressions/value.h"

#include <bit>
#include <cmath>
#include <limits>

namespace expressions {

namespace {

/// The low bits of an integer of `width` bits; 64 and more keep all.
std::uint64_t lowBits(std::uint32_t width) {
    return width >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << width) - 1;
}

bool hasSign(std::uint64_t data, std::uint32_t width) {
    return (data & ~(lowBits(width) >> 1) & lowBits(width)) != 0;
}

/// The width in bits that a size in bytes stands for.
std::uint32_t widthOf(std::uint32_t size) {
    return size == 1 || size == 2 || size == 4 ? size * 8 : 64;
}

std::int64_t extended(const Value& value) {
    if (value.bitWidth != 0) {
        const bool negative = hasSign(value.data, value.bitWidth);
        return static_cast<std::int64_t>(negative ? value.data | ~lowBits(value.bitWidth) : value.data);
    }
    const std::uint64_t mask = lowBits(widthOf(value.size));
    const std::uint64_t low = value.data & mask;
    return static_cast<std::int64_t>(hasSign(low, widthOf(value.size)) ? low | ~mask : low);
}

std::int64_t truncated(double value) {
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    if (std::isnan(value)) return 0;
    if (value >= limit) return std::numeric_limits<std::int64_t>::max();
    if (value < -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

/// IEEE 754 binary16 from binary32, without rounding.
std::uint16_t halfBits(std::uint32_t single) {
    constexpr std::uint32_t biasDifference = 112;
    const std::uint32_t sign = single >> 31;
    const std::uint32_t exponent = ((single >> 23) - biasDifference) & 0x1f;
    const std::uint32_t mantissa = (single >> 13) & 0x3ff;
    return static_cast<std::uint16_t>(sign << 15 | exponent << 10 | mantissa);
}

std::uint64_t floatBits(const Value& value) {
    if (value.size == 8) return value.data;
    // A double beyond the range of a float becomes infinite, as IEEE 754 has it.
    const auto single = std::bit_cast<std::uint32_t>(static_cast<float>(std::bit_cast<double>(value.data)));
    if (value.size == 4) return single;
    return value.size == 2 ? halfBits(single) : 0;
}

}  // namespace

Value Value::ofBoolean(bool value, std::uint32_t size) {
    return {ValueKind::Boolean, value ? std::uint64_t{1} : 0, size, 0, {}, nullptr};
}

Value Value::ofSigned(std::int64_t value, std::uint32_t size) {
    return {ValueKind::Signed, static_cast<std::uint64_t>(value), size, 0, {}, nullptr};
}

Value Value::ofUnsigned(std::uint64_t value, std::uint32_t size) {
    return {ValueKind::Unsigned, value, size, 0, {}, nullptr};
}

Value Value::ofFloat(double value, std::uint32_t size) {
    return {ValueKind::Float, std::bit_cast<std::uint64_t>(value), size, 0, {}, nullptr};
}

Value Value::ofString(const QString& text) {
    return {ValueKind::String, 0, 0, 0, text, nullptr};
}

Value Value::ofSymbol(Symbol& symbol) {
    return {ValueKind::Symbol, 0, 0, 0, {}, &symbol};
}

std::int64_t Value::toSigned() const {
    switch (kind) {
        case ValueKind::Boolean:
            return toByte();
        case ValueKind::Signed:
        case ValueKind::Unsigned:
            return extended(*this);
        case ValueKind::String:
            return static_cast<std::int64_t>(data);
        case ValueKind::Float:
            return truncated(std::bit_cast<double>(data));
        default:
            return 0;
    }
}

std::uint64_t Value::toUnsigned() const {
    switch (kind) {
        case ValueKind::Boolean:
            return toByte();
        case ValueKind::Signed:
        case ValueKind::Unsigned:
            return data & lowBits(bitWidth != 0 ? bitWidth : widthOf(size));
        case ValueKind::Float:
            return floatBits(*this);
        default:
            return 0;
    }
}

double Value::toDouble() const {
    switch (kind) {
        case ValueKind::Boolean:
            return toByte();
        case ValueKind::Signed:
            return static_cast<double>(toSigned());
        case ValueKind::Unsigned:
            return static_cast<double>(toUnsigned());
        case ValueKind::Float:
            return std::bit_cast<double>(data);
        default:
            return 0;
    }
}

Value Value::resolved() const {
    return kind == ValueKind::Symbol && symbol ? symbol->value() : *this;
}

}  // namespace expressions
