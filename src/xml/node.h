#pragma once

#include <QByteArray>

#include <cstdint>

/// The system's own XML tree: nodes of byte strings, read and written in the forms that its files have. No
/// character set is applied; bytes go in and bytes come out.
namespace xml {

/// A node of the tree and the owner of the subtree below it. Destruction is iterative: any depth is safe.
///
/// All strings of the tree are byte strings that share their storage when copied; a null string is distinct
/// from an empty one.
class XMLNode {
public:
    enum class Type : std::uint8_t { Element, Data, Comment, CDATASection };

    XMLNode(const XMLNode&) = delete;
    XMLNode& operator=(const XMLNode&) = delete;

    /// Deletes the node's children with all that is below them.
    virtual ~XMLNode();
    /// Takes over `child` and attaches it as the last child.
    virtual void appendChild(XMLNode* child);
    /// Takes over `child`, attaches it as the first child and answers the former first child.
    virtual XMLNode* prependChild(XMLNode* child);
    /// Unlinks `child` and hands it to the caller. Its own parent and next sibling stay as they were. A node
    /// that is no child changes nothing.
    virtual void removeChild(XMLNode* child);
    /// Puts `newChild` in the place of the child `oldChild`, which then belongs to the caller.
    virtual void replaceChild(XMLNode* oldChild, XMLNode* newChild);
    /// Takes over the chain that `firstOfChain` heads, linked through next siblings, and puts it behind the
    /// child `refChild`; with no children at all the chain becomes the child list.
    virtual void insertChildrenAfter(XMLNode* refChild, XMLNode* firstOfChain);

    /// Hands all children over as a chain, linked through next siblings; null without children. Their own
    /// parent stays as it was.
    XMLNode* takeChildren();

    Type type() const { return type_; }
    XMLNode* parent() const { return parent_; }
    XMLNode* nextSibling() const { return nextSibling_; }
    /// Links nodes that are in no tree to a chain.
    void setNextSibling(XMLNode* sibling) { nextSibling_ = sibling; }
    XMLNode* firstChild() const { return firstChild_; }
    XMLNode* lastChild() const { return lastChild_; }

    /// The line at which the node began in its source, counted from 0; 0 for a node that was not parsed.
    std::uint32_t line() const { return line_; }
    void setLine(std::uint32_t line) { line_ = line; }

protected:
    explicit XMLNode(Type type) : type_(type) {}

private:
    XMLNode* previousSiblingOf(const XMLNode* child) const;

    XMLNode* parent_ = nullptr;
    XMLNode* nextSibling_ = nullptr;
    XMLNode* firstChild_ = nullptr;
    XMLNode* lastChild_ = nullptr;
    std::uint32_t line_ = 0;
    Type type_;
};

/// A node that holds one text.
class XMLCharacterData : public XMLNode {
public:
    virtual void setData(QByteArray text) { data_ = std::move(text); }
    virtual QByteArray data() const { return data_; }

protected:
    XMLCharacterData(Type type, QByteArray text) : XMLNode(type), data_(std::move(text)) {}

private:
    QByteArray data_;
};

/// Text between tags, escaped in the file.
class XMLData final : public XMLCharacterData {
public:
    explicit XMLData(QByteArray text) : XMLCharacterData(Type::Data, std::move(text)) {}
};

/// A comment, without its delimiters.
class XMLComment final : public XMLCharacterData {
public:
    explicit XMLComment(QByteArray text) : XMLCharacterData(Type::Comment, std::move(text)) {}
};

/// A CDATA section, without its delimiters; its text stands raw in the file.
class XMLCDATASection final : public XMLCharacterData {
public:
    explicit XMLCDATASection(QByteArray text) : XMLCharacterData(Type::CDATASection, std::move(text)) {}
};

}  // namespace xml
