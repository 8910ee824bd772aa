#pragma once

#include "xml/element.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <cstdint>
#include <memory>

namespace xml {

/// An XML document: the root with all below it, the header's strings, and the last error. Subclasses decide
/// by `createElement` what class the elements of their documents are.
class XMLDocument {
public:
    /// With `keepText` false, a parse drops comments and character data.
    explicit XMLDocument(bool keepText = false) : keepText_(keepText) {}
    XMLDocument(const XMLDocument&) = delete;
    XMLDocument& operator=(const XMLDocument&) = delete;
    virtual ~XMLDocument() = default;

    /// A new element, which belongs to the caller.
    virtual XMLElement* createElement(QByteArray name);

    /// A deep copy, its elements made by this document's `createElement`; it belongs to the caller.
    XMLNode* cloneNode(const XMLNode* node);

    /// Reads a document from an open device, a file or a text, and replaces the root: null for what is no
    /// XML. False, with error text and line, on "bad tagName", "tagName mismatch" and "couldn't read PATH";
    /// only the last leaves the root as it was. A UTF-8 byte order mark is stepped over, except in a text.
    bool parse(QIODevice& device);
    bool parseFile(const QByteArray& path);
    bool parseText(const QByteArray& text);

    /// Writes the document to the open device and answers true; errors of the device are not seen. `indent`
    /// and `wrapColumn` as in XMLWriter.
    bool save(QIODevice& device, int indent, int wrapColumn);

    XMLNode* root() const { return root_.get(); }
    void setRoot(std::unique_ptr<XMLNode> root) { root_ = std::move(root); }
    std::unique_ptr<XMLNode> takeRoot() { return std::move(root_); }

    bool keepText() const { return keepText_; }
    int indent() const { return indent_; }
    int wrapColumn() const { return wrapColumn_; }

    /// The header's strings, null when the document has none.
    QByteArray doctype;
    QByteArray version;
    QByteArray encoding;

    const QByteArray& errorText() const { return errorText_; }
    /// The line of the error, counted from 0.
    std::uint32_t errorLine() const { return errorLine_; }
    /// Keeps at most 1023 bytes of the text.
    void setError(const QByteArray& text, std::uint32_t line = 0);

private:
    bool keepText_;
    int indent_ = 0;
    int wrapColumn_ = 0;
    std::unique_ptr<XMLNode> root_;
    QByteArray errorText_;
    std::uint32_t errorLine_ = 0;
};

/// A document whose file is named by a QString.
class QXMLDocument : public XMLDocument {
public:
    using XMLDocument::parse;
    using XMLDocument::XMLDocument;
    bool parse(const QString& path);
    /// The same for a file that others name: what is no regular file may never end, and what is longer than
    /// `maxFileSize` would fill the memory, so neither can be read.
    bool parseRegularFile(const QString& path);

    static constexpr qint64 maxFileSize = qint64{1} << 30;
};

}  // namespace xml
