#pragma once

#include <QString>

#include <cstdint>

namespace script {

class Arena;
struct TextBuffer;

/// What a string value points at: an atom, or a string of one context. Concatenation costs the length of the
/// appended part: a string that ends its buffer grows in place, anything else is joined when it is first
/// read.
struct ESText {
    enum class Form : std::uint8_t {
        Atom,   ///< an ESAtom
        Flat,   ///< the units stand behind the object
        Slice,  ///< the first `length` units of a buffer that several strings share
        Rope,   ///< two texts not yet joined
    };

    Form form;
    std::uint32_t length;  ///< UTF-16 units
};

/// An interned string, shared by all contexts of the process and never freed. Two atoms are the same text
/// exactly when their pointers are equal.
struct ESAtom : ESText {
    QString text;
    std::uint32_t index;       ///< its place in the order of interning
    std::uint32_t arrayIndex;  ///< the number whose decimal text this is, or `noArrayIndex`
    std::uint32_t hash;

    static constexpr std::uint32_t noArrayIndex = 0xffffffffU;
};

/// A string made while a script runs. It belongs to the context's arena.
struct ESString : ESText {
    struct Halves {
        const ESText* left;
        const ESText* right;
    };
    union {
        TextBuffer* buffer;
        Halves halves;
        char16_t units[1];
    };
};

/// Units that several strings share; only the string that reaches up to `size` may append.
struct TextBuffer {
    char16_t* units;
    std::uint32_t size;
    std::uint32_t capacity;
};

/// The units of `text`, valid until the next string is made in the arena. Joins a rope first.
QStringView viewOf(Arena& arena, const ESText& text);

/// Below, at or above zero as `left` stands before, with or behind `right` by code units.
int compareTexts(Arena& arena, const ESText& left, const ESText& right);

/// A copy of `text`.
const ESText* makeString(Arena& arena, QStringView text);

/// `left` followed by `right`; the sum of the lengths is within the limit.
const ESText* concatenate(Arena& arena, const ESText& left, const ESText& right);

}  // namespace script
