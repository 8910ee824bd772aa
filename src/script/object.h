#pragma once

#include "script/property_vector.h"

#include <cstdint>

namespace script {

class Arena;
class ESClass;
class ESContext;
struct ESCode;
struct ESObject;

/// A link of the scope chain: made by `with` and by a call of a function that needs an activation object. The
/// chain ends in null; the global object is not on it and is tried last.
struct ScopeLink {
    ScopeLink* next;
    ESObject* object;
    /// A function or a script value holds on to the link, so it outlives its call.
    bool isCaptured;
};

/// The record of a function. For a builtin only `arity` is set.
struct ESClosure {
    std::uint32_t arity;   ///< declared parameters
    std::uint32_t locals;  ///< declared variables
    const ESCode* code;    ///< null for a builtin
    ScopeLink* scope;      ///< the head of the scope chain at creation
};

/// The elements of an array from 0 on, without names. A gap holds ESValue::noElement().
class ElementVector {
public:
    std::uint32_t size() const { return size_; }
    const ESValue& operator[](std::uint32_t i) const { return values_[i]; }
    ESValue& operator[](std::uint32_t i) { return values_[i]; }

    /// The element, or null for a gap or beyond the end.
    ESValue* find(std::uint32_t i) const {
        return i < size_ && !values_[i].isNoElement() ? values_ + i : nullptr;
    }

    /// Makes room for at least `count` elements.
    void reserve(Arena& arena, std::uint32_t count);

    /// Makes the element a gap; gaps at the end are none.
    void remove(std::uint32_t i) {
        values_[i] = ESValue::noElement();
        while (size_ > 0 && values_[size_ - 1].isNoElement()) --size_;
    }

    /// Stores an element, with gaps up to it.
    void put(Arena& arena, std::uint32_t i, ESValue value) {
        if (i >= capacity_) reserve(arena, i + 1);
        while (size_ <= i) values_[size_++] = ESValue::noElement();
        values_[i] = value;
    }

private:
    ESValue* values_ = nullptr;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
};

/// One cell. All cells belong to their context and live as long as it does.
struct ESObject {
    static constexpr std::int32_t noBuiltin = -1;

    ESObject* prototype = nullptr;  ///< null at the end of the chain
    /// The wrapped primitive of a Boolean, Number, String or Date; the full name of a builtin function.
    ESValue value;
    ESClosure* closure = nullptr;      ///< non-null: the object can be called
    ESClosure* constructor = nullptr;  ///< non-null: `new` accepts the object
    ESClass* cls = nullptr;
    PropertyVector properties;
    ElementVector elements;
    std::int32_t builtinId = noBuiltin;  ///< what ESClass::call and construct switch on
    bool isArray = false;                ///< elements are stored densely where they can be
    bool hasSparseElements = false;      ///< some element of an array is a property of its vector
    /// The "length" of an array was set below the end of its elements, or deleted: a store into an element
    /// that is there may have to raise it.
    bool hasElementsBehindLength = false;

    /// Own element or property `name`, or null. The pointer lasts until the object is written to.
    ESValue* findOwn(const ESAtom* name) const {
        if (name->arrayIndex < elements.size())
            if (ESValue* element = elements.find(name->arrayIndex)) return element;
        ESProperty* property = properties.find(name);
        return property != nullptr ? &property->value : nullptr;
    }

    /// The same here or on the first prototype that has it.
    ESValue* find(const ESAtom* name) const {
        for (const ESObject* object = this; object != nullptr; object = object->prototype)
            if (ESValue* found = object->findOwn(name)) return found;
        return nullptr;
    }

    /// Stores `value` under a name that has no property yet, among the elements if it may stand there.
    void add(Arena& arena, const ESAtom* name, std::uint32_t attributes, ESValue newValue);

    /// Whether an array stores the element `i` densely when it has none yet.
    bool isDenseIndex(std::uint32_t i) const;
};

/// Whether `object` or a prototype has the element `i`; costs no atom.
bool hasElement(const ESObject& object, std::uint32_t i);
/// Deletes the own element `i`, whatever it is; costs no atom.
bool deleteElement(ESObject& object, std::uint32_t i);
/// Own properties only; a name that is not there counts as deleted. False when the property has DontDelete.
bool deleteProperty(ESObject& object, const ESAtom* name);
bool hasOwnProperty(const ESObject& object, const ESAtom* name);
/// Here or on a prototype.
bool hasProperty(const ESObject& object, const ESAtom* name);
/// Present here and not marked DontEnumerate.
bool isEnumerableOwn(const ESObject& object, const ESAtom* name);
/// Whether `object` is on the prototype chain of `value`.
bool isPrototypeOf(const ESObject& object, const ESValue& value);

}  // namespace script
