#include "script/text.h"

#include "script/arena.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace script {

namespace {

/// Up to this length joining costs less than remembering the halves.
constexpr std::uint32_t flatLength = 32;
/// A short string starts a buffer when it gets no more than this behind it.
constexpr std::uint32_t appendedLength = 256;

ESString* newFlat(Arena& arena, std::uint32_t length) {
    const std::size_t bytes = sizeof(ESText) + std::size_t{length} * sizeof(char16_t);
    auto* string = static_cast<ESString*>(arena.allocate(std::max(bytes, sizeof(ESString))));
    string->form = ESText::Form::Flat;
    string->length = length;
    return string;
}

ESString* newSlice(Arena& arena, TextBuffer* buffer) {
    auto* string = static_cast<ESString*>(arena.allocate(sizeof(ESString)));
    string->form = ESText::Form::Slice;
    string->length = buffer->size;
    string->buffer = buffer;
    return string;
}

ESString* newRope(Arena& arena, const ESText& left, const ESText& right) {
    auto* string = static_cast<ESString*>(arena.allocate(sizeof(ESString)));
    string->form = ESText::Form::Rope;
    string->length = left.length + right.length;
    string->halves = {&left, &right};
    return string;
}

const ESString& asString(const ESText& text) {
    return static_cast<const ESString&>(text);
}

/// The units of a text that is no rope.
const char16_t* unitsOf(const ESText& text) {
    switch (text.form) {
        case ESText::Form::Atom:
            return reinterpret_cast<const char16_t*>(static_cast<const ESAtom&>(text).text.utf16());
        case ESText::Form::Slice:
            return asString(text).buffer->units;
        default:
            return asString(text).units;
    }
}

void copyUnits(char16_t* target, const ESText& text) {
    if (text.length > 0) std::memcpy(target, unitsOf(text), std::size_t{text.length} * sizeof(char16_t));
}

void reserve(Arena& arena, TextBuffer& buffer, std::uint32_t capacity) {
    if (capacity <= buffer.capacity) return;
    capacity = std::max({capacity, buffer.capacity * 2, 4 * flatLength});
    auto* units = arena.allocateArray<char16_t>(capacity);
    if (buffer.size > 0) std::memcpy(units, buffer.units, std::size_t{buffer.size} * sizeof(char16_t));
    arena.release(buffer.units, std::size_t{buffer.capacity} * sizeof(char16_t));
    buffer.units = units;
    buffer.capacity = capacity;
}

void append(Arena& arena, TextBuffer& buffer, const ESText& text) {
    reserve(arena, buffer, buffer.size + text.length);
    copyUnits(buffer.units + buffer.size, text);
    buffer.size += text.length;
}

TextBuffer* newBuffer(Arena& arena) {
    auto* buffer = static_cast<TextBuffer*>(arena.allocate(sizeof(TextBuffer)));
    *buffer = {nullptr, 0, 0};
    return buffer;
}

bool endsItsBuffer(const ESText& text) {
    return text.form == ESText::Form::Slice && asString(text).buffer->size == text.length;
}

/// The buffer that shall hold a text which starts with `first`, with `first` in it.
TextBuffer* bufferBehind(Arena& arena, const ESText& first, std::uint32_t capacity) {
    TextBuffer* buffer = endsItsBuffer(first) ? asString(first).buffer : newBuffer(arena);
    reserve(arena, *buffer, capacity);
    if (buffer->size == 0) append(arena, *buffer, first);
    return buffer;
}

/// Joins a rope in place, with a stack of its own since ropes get as deep as loops run.
void join(Arena& arena, ESString& rope) {
    std::vector<const ESText*> pending{&rope};
    TextBuffer* buffer = nullptr;
    while (!pending.empty()) {
        const ESText& text = *pending.back();
        pending.pop_back();
        if (text.form == ESText::Form::Rope) {
            pending.push_back(asString(text).halves.right);
            pending.push_back(asString(text).halves.left);
        } else if (buffer == nullptr) {
            buffer = bufferBehind(arena, text, rope.length);
        } else {
            append(arena, *buffer, text);
        }
    }
    rope.form = ESText::Form::Slice;
    rope.buffer = buffer;
}

}  // namespace

QStringView viewOf(Arena& arena, const ESText& text) {
    // A rope and its joined form are the same string to everybody who holds it.
    if (text.form == ESText::Form::Rope) join(arena, const_cast<ESString&>(asString(text)));
    return {unitsOf(text), static_cast<qsizetype>(text.length)};
}

int compareTexts(Arena& arena, const ESText& left, const ESText& right) {
    // Joining one may move the buffer of the other, so both are joined before either is looked at.
    viewOf(arena, left);
    viewOf(arena, right);
    return viewOf(arena, left).compare(viewOf(arena, right));
}

const ESText* makeString(Arena& arena, QStringView text) {
    ESString* string = newFlat(arena, static_cast<std::uint32_t>(text.size()));
    if (!text.isEmpty())
        std::memcpy(string->units, text.utf16(), static_cast<std::size_t>(text.size()) * sizeof(char16_t));
    return string;
}

const ESText* concatenate(Arena& arena, const ESText& left, const ESText& right) {
    if (left.length == 0) return &right;
    if (right.length == 0) return &left;
    const bool hasRope = left.form == ESText::Form::Rope || right.form == ESText::Form::Rope;
    if (hasRope) return newRope(arena, left, right);
    if (left.length + right.length <= flatLength) {
        ESString* string = newFlat(arena, left.length + right.length);
        copyUnits(string->units, left);
        copyUnits(string->units + left.length, right);
        return string;
    }
    if (!endsItsBuffer(left) && (left.length > flatLength || right.length > appendedLength))
        return newRope(arena, left, right);
    TextBuffer* buffer = bufferBehind(arena, left, left.length + right.length);
    append(arena, *buffer, right);
    return newSlice(arena, buffer);
}

}  // namespace script
