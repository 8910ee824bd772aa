#include "xml/element.h"

#include <algorithm>

namespace xml {

/// The attributes in order and, once they are many, an index of their places by name.
struct XMLElement::AttributeList {
    static constexpr std::size_t indexedFrom = 32;

    std::vector<XMLAttribute> entries;
    QHash<QByteArray, std::size_t> places;

    /// The place of `name`, or the number of entries when there is none.
    std::size_t find(const QByteArray& name) const {
        if (entries.size() >= indexedFrom) return places.value(name, entries.size());
        const auto entry = std::find_if(entries.begin(), entries.end(), [&](const XMLAttribute& attribute) {
            return attribute.name == name;
        });
        return static_cast<std::size_t>(entry - entries.begin());
    }

    void append(QByteArray name, QByteArray value) {
        entries.push_back({std::move(name), std::move(value)});
        if (entries.size() == indexedFrom) {
            index();
        } else if (entries.size() > indexedFrom) {
            places.insert(entries.back().name, entries.size() - 1);
        }
    }

    void remove(std::size_t place) {
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
        if (entries.size() >= indexedFrom) index();
    }

    void index() {
        places.clear();
        for (std::size_t i = 0; i < entries.size(); ++i) places.insert(entries[i].name, i);
    }
};

XMLElement::XMLElement(QByteArray tagName) : XMLNode(Type::Element), tagName_(std::move(tagName)) {}

XMLElement::~XMLElement() = default;

void XMLElement::setTagName(QByteArray name) {
    tagName_ = std::move(name);
}

const QByteArray& XMLElement::tagName() const {
    return tagName_;
}

void XMLElement::setAttribute(QByteArray name, QByteArray value) {
    if (!list_) list_ = std::make_unique<AttributeList>();
    const std::size_t place = list_->find(name);
    if (place < list_->entries.size()) {
        list_->entries[place].value = std::move(value);
    } else {
        list_->append(std::move(name), std::move(value));
    }
}

void XMLElement::removeAttribute(const QByteArray& name) {
    if (hasAttribute(name)) list_->remove(list_->find(name));
}

bool XMLElement::hasAttribute(const QByteArray& name) const {
    return list_ && list_->find(name) < list_->entries.size();
}

QByteArray XMLElement::attribute(const QByteArray& name) const {
    return hasAttribute(name) ? list_->entries[list_->find(name)].value : QByteArray();
}

const std::vector<XMLAttribute>& XMLElement::attributes() const {
    static const std::vector<XMLAttribute> none;
    return list_ ? list_->entries : none;
}

void XMLElement::clearAttributes() {
    list_.reset();
}

}  // namespace xml
