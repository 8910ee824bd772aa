#pragma once

#include <QByteArrayView>
#include <QIODevice>

#include <span>
#include <string>

namespace xml {

/// Writes a document in the system's one layout, piece by piece; the caller closes what it opens. Bytes
/// outside printable ASCII stand as numeric references, one for each byte. Errors of the device are not
/// reported.
class XMLWriter {
public:
    struct Attribute {
        QByteArrayView name;
        QByteArrayView value;  ///< null data: written as name=""
    };
    using Attributes = std::span<const Attribute>;

    /// `device` is open and outlives the writer. `indent` is in blanks a level, 0 also switching line ends
    /// off; `wrapColumn` is the length in bytes past which an element's attributes are folded, 0 meaning
    /// never.
    XMLWriter(QIODevice& device, int indent, int wrapColumn);
    XMLWriter(const XMLWriter&) = delete;
    XMLWriter& operator=(const XMLWriter&) = delete;
    /// Writes what is still buffered.
    ~XMLWriter();

    /// A null `version` or `encoding` is left out, and with both null the declaration.
    void declaration(QByteArrayView version, QByteArrayView encoding);
    /// A null name is left out.
    void doctype(QByteArrayView name);

    void openElement(QByteArrayView tag, Attributes attributes);
    void closeElement(QByteArrayView tag);
    void emptyElement(QByteArrayView tag, Attributes attributes);
    /// An element that holds nothing but a text.
    void textElement(QByteArrayView tag, Attributes attributes, QByteArrayView text);

    void data(QByteArrayView text);
    void comment(QByteArrayView text);
    void cdataSection(QByteArrayView text);

private:
    void startTag(QByteArrayView tag, Attributes attributes);
    bool folds(QByteArrayView tag, Attributes attributes) const;
    void put(QByteArrayView bytes);
    void put(char byte);
    void putEscaped(QByteArrayView bytes);
    void pad(qsizetype depth);
    void endLine();
    void flush();

    QIODevice& device_;
    const qsizetype indent_;
    const qsizetype wrapColumn_;
    qsizetype depth_ = 0;
    std::string buffer_;
};

}  // namespace xml
