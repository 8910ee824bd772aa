#include "xml/document.h"

#include "xml/parser.h"
#include "xml/writer.h"

#include <QFile>
#include <QFileInfo>

#include <utility>
#include <vector>

namespace xml {

namespace {

/// Writes a subtree without recursion: the nodes that are open are a stack of their own.
class TreeWriter {
public:
    explicit TreeWriter(XMLWriter& writer) : writer_(writer) {}

    void write(const XMLNode* root) {
        const XMLNode* node = root;
        while (node) {
            if (start(node)) {
                open_.push_back(asElement(node));
                node = node->firstChild();
                continue;
            }
            while (node != root && !node->nextSibling()) node = close();
            node = node == root ? nullptr : node->nextSibling();
        }
    }

private:
    /// Writes the node's beginning, and answers whether its children come next.
    bool start(const XMLNode* node) {
        if (const XMLElement* element = asElement(node)) return startElement(*element);
        const QByteArray text = static_cast<const XMLCharacterData*>(node)->data();
        switch (node->type()) {
            case XMLNode::Type::Comment:
                writer_.comment(text);
                break;
            case XMLNode::Type::CDATASection:
                writer_.cdataSection(text);
                break;
            default:
                writer_.data(text);
        }
        return false;
    }

    bool startElement(const XMLElement& element) {
        attributes_.clear();
        for (const XMLAttribute& attribute : element.attributes())
            attributes_.push_back({attribute.name, viewOf(attribute.value)});
        const XMLNode* const child = element.firstChild();
        if (!child) {
            writer_.emptyElement(element.tagName(), attributes_);
        } else if (child->type() == XMLNode::Type::Data) {
            writer_.textElement(element.tagName(), attributes_, static_cast<const XMLData*>(child)->data());
        } else {
            writer_.openElement(element.tagName(), attributes_);
            return true;
        }
        return false;
    }

    const XMLNode* close() {
        const XMLElement* const element = open_.back();
        open_.pop_back();
        writer_.closeElement(element->tagName());
        return element;
    }

    static QByteArrayView viewOf(const QByteArray& value) {
        return value.isNull() ? QByteArrayView() : QByteArrayView(value);
    }

    XMLWriter& writer_;
    std::vector<const XMLElement*> open_;
    std::vector<XMLWriter::Attribute> attributes_;
};

}  // namespace

XMLElement* XMLDocument::createElement(QByteArray name) {
    return new XMLElement(std::move(name));
}

XMLNode* XMLDocument::cloneNode(const XMLNode* node) {
    const auto cloneOne = [this](const XMLNode* source) -> XMLNode* {
        if (const XMLElement* element = asElement(source)) {
            XMLElement* const copy = createElement(element->tagName());
            for (const XMLAttribute& attribute : element->attributes())
                copy->setAttribute(attribute.name, attribute.value);
            return copy;
        }
        const QByteArray text = static_cast<const XMLCharacterData*>(source)->data();
        switch (source->type()) {
            case XMLNode::Type::Comment:
                return new XMLComment(text);
            case XMLNode::Type::CDATASection:
                return new XMLCDATASection(text);
            default:
                return new XMLData(text);
        }
    };

    XMLNode* const result = cloneOne(node);
    // Source nodes whose children are still to be copied, each with its copy.
    std::vector<std::pair<const XMLNode*, XMLNode*>> pending{{node, result}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        for (const XMLNode* child = source->firstChild(); child; child = child->nextSibling()) {
            XMLNode* const childCopy = cloneOne(child);
            copy->appendChild(childCopy);
            if (child->firstChild()) pending.emplace_back(child, childCopy);
        }
    }
    return result;
}

bool XMLDocument::parse(QIODevice& device) {
    const QByteArray bytes = device.readAll();
    return parseText(bytes.startsWith("\xef\xbb\xbf") ? bytes.mid(3) : bytes);
}

bool XMLDocument::parseFile(const QByteArray& path) {
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly)) {
        setError("couldn't read " + path);
        return false;
    }
    return parse(file);
}

bool XMLDocument::parseText(const QByteArray& text) {
    Parser parser(*this, {text.constData(), static_cast<std::size_t>(text.size())});
    const Parser::Error error = parser.parse();
    root_ = parser.takeRoot();
    if (error == Parser::Error::None) return true;
    setError(error == Parser::Error::BadName ? "bad tagName" : "tagName mismatch", parser.line());
    return false;
}

bool QXMLDocument::parse(const QString& path) {
    return parseFile(QFile::encodeName(path));
}

bool QXMLDocument::parseRegularFile(const QString& path) {
    const QFileInfo file(path);
    if (file.isFile() && file.size() <= maxFileSize) return parse(path);
    setError("couldn't read " + QFile::encodeName(path));
    return false;
}

bool XMLDocument::save(QIODevice& device, int indent, int wrapColumn) {
    indent_ = indent;
    wrapColumn_ = wrapColumn;
    XMLWriter writer(device, indent, wrapColumn);
    writer.declaration(version, encoding);
    writer.doctype(doctype);
    TreeWriter(writer).write(root_.get());
    return true;
}

void XMLDocument::setError(const QByteArray& text, std::uint32_t line) {
    errorText_ = text.left(1023);
    errorLine_ = line;
}

}  // namespace xml
