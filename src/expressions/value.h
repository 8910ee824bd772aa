#pragma once

#include <QString>

#include <cstdint>

namespace expressions {

class Symbol;

/// What kind of value it is; the numbers are fixed.
enum class ValueKind : std::uint32_t {
    Boolean,   ///< the first byte of `data`
    Signed,    ///< an integer in `data`
    Unsigned,  ///< an integer in `data`
    String,    ///< `text`
    Symbol,    ///< `symbol`
    Float,     ///< `data` holds the bits of a double
    None,      ///< the result of an empty expression
};

/// The result of an evaluation: a small tagged record, copied freely. A symbol in it is borrowed from the
/// parser that answered it. Reading never fails; what a kind cannot give is 0.
struct Value {
    ValueKind kind = ValueKind::None;
    std::uint64_t data = 0;
    std::uint32_t size = 2;      ///< of a number, in bytes: 1, 2, 4 or 8
    std::uint32_t bitWidth = 0;  ///< when not 0, an integer of that many bits, whatever `size` says
    QString text;
    Symbol* symbol = nullptr;

    static Value ofBoolean(bool value, std::uint32_t size = 0);
    static Value ofSigned(std::int64_t value, std::uint32_t size = 8);
    static Value ofUnsigned(std::uint64_t value, std::uint32_t size = 8);
    static Value ofFloat(double value, std::uint32_t size = 8);
    static Value ofString(const QString& text);
    static Value ofSymbol(Symbol& symbol);

    bool isInteger() const { return kind == ValueKind::Signed || kind == ValueKind::Unsigned; }
    /// A Boolean, an integer or a float.
    bool isNumber() const { return isInteger() || kind == ValueKind::Boolean || kind == ValueKind::Float; }

    std::uint8_t toByte() const { return static_cast<std::uint8_t>(data); }
    /// An integer is extended from its width. A float loses its fraction; one beyond 64 bits gives the
    /// nearest integer, one that is no number 0.
    std::int64_t toSigned() const;
    /// An integer is cut to its width. A float gives its bits in the form of its size: double, float or half,
    /// whose exponent wraps when it does not fit.
    std::uint64_t toUnsigned() const;
    double toDouble() const;

    /// The value of the symbol for a value of that kind, otherwise the value itself.
    Value resolved() const;
};

/// A thing of the program under debug that an expression names: a variable, a register, a place in memory.
/// Symbols belong to the parser that gives them and live as long as values may name them.
class Symbol {
public:
    Symbol() = default;
    Symbol(const Symbol&) = delete;
    Symbol& operator=(const Symbol&) = delete;
    virtual ~Symbol() = default;

    /// What stands in the place now. May raise `ParserException`.
    virtual Value value() = 0;
};

}  // namespace expressions
