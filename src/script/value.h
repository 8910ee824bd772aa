#pragma once

#include "script/text.h"

#include <cstdint>

namespace script {

struct ESObject;

/// The tags of a value. String and Atom are one script type. A tag is as wide as a payload, so that a value
/// that was just written in two halves is read back without waiting for the store.
enum class Tag : std::uint64_t {
    Undefined = 0,
    Null = 1,
    Boolean = 2,
    Number = 3,
    String = 4,
    Object = 5,
    NoElement = 6,  ///< a gap in an array's elements; no script sees it
    Atom = 7,
};

/// A script value: a tag and its payload, copied freely. What it points at belongs to the context (objects,
/// strings) or to the process (atoms). All bits zero is undefined.
class ESValue {
public:
    constexpr ESValue() = default;
    constexpr ESValue(double number) : tag_(Tag::Number), number_(number) {}
    ESValue(ESObject* object) : tag_(Tag::Object), object_(object) {}
    ESValue(const ESAtom* atom) : tag_(Tag::Atom), text_(atom) {}
    ESValue(const ESText* text)
        : tag_(text->form == ESText::Form::Atom ? Tag::Atom : Tag::String), text_(text) {}
    /// Anything else has to say what it means.
    template <class T>
    ESValue(T) = delete;

    static ESValue null() { return ESValue(Tag::Null, 0); }
    static ESValue boolean(bool value) { return ESValue(Tag::Boolean, value ? 1 : 0); }
    static ESValue number(double value) { return ESValue(value); }
    static ESValue noElement() { return ESValue(Tag::NoElement, 0); }
    /// The object, or null for a null pointer.
    static ESValue objectOrNull(ESObject* object) { return object != nullptr ? ESValue(object) : null(); }

    Tag tag() const { return tag_; }
    bool isUndefined() const { return tag_ == Tag::Undefined; }
    bool isNull() const { return tag_ == Tag::Null; }
    bool isBoolean() const { return tag_ == Tag::Boolean; }
    bool isNumber() const { return tag_ == Tag::Number; }
    bool isString() const { return tag_ == Tag::String || tag_ == Tag::Atom; }
    bool isAtom() const { return tag_ == Tag::Atom; }
    bool isObject() const { return tag_ == Tag::Object; }
    bool isNoElement() const { return tag_ == Tag::NoElement; }

    /// The payload of a number or boolean.
    double asNumber() const { return number_; }
    double& numberRef() { return number_; }
    ESObject* asObject() const { return object_; }
    /// The text of a string or atom.
    const ESText& asText() const { return *text_; }
    const ESAtom* asAtom() const { return static_cast<const ESAtom*>(text_); }

private:
    constexpr ESValue(Tag tag, double number) : tag_(tag), number_(number) {}

    Tag tag_ = Tag::Undefined;
    union {
        double number_ = 0;
        ESObject* object_;
        const ESText* text_;
    };
};

static_assert(sizeof(ESValue) == 16);

}  // namespace script
