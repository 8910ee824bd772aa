#pragma once

#include "xml/node.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace xml {

/// A name and its value. A null value is an attribute without a value, which is written differently in a
/// folded element.
struct XMLAttribute {
    QByteArray name;
    QByteArray value;
};

/// An element: a tag name and attributes of unique names, in the order in which they came.
class XMLElement : public XMLNode {
public:
    explicit XMLElement(QByteArray tagName);
    ~XMLElement() override;

    virtual void setTagName(QByteArray name);
    virtual const QByteArray& tagName() const;
    /// An attribute that exists keeps its place and takes the new value; a new one goes to the end.
    virtual void setAttribute(QByteArray name, QByteArray value);
    /// A name that is unknown is no error.
    virtual void removeAttribute(const QByteArray& name);
    /// True also for an attribute of null value.
    virtual bool hasAttribute(const QByteArray& name) const;
    /// The value; null for an unknown name or a null value.
    virtual QByteArray attribute(const QByteArray& name) const;
    /// The same as text.
    QString text(const char* name) const { return QString::fromUtf8(attribute(name)); }
    /// All attributes, in order.
    virtual const std::vector<XMLAttribute>& attributes() const;
    void clearAttributes();

private:
    struct AttributeList;

    QByteArray tagName_;
    std::unique_ptr<AttributeList> list_;  // most elements of a project tree have no attributes of this kind
};

/// The node as an element, or null when it is null or of another type.
inline XMLElement* asElement(XMLNode* node) {
    return node && node->type() == XMLNode::Type::Element ? static_cast<XMLElement*>(node) : nullptr;
}
inline const XMLElement* asElement(const XMLNode* node) {
    return asElement(const_cast<XMLNode*>(node));
}

}  // namespace xml
