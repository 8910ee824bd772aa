#include "xml/writer.h"

#include <algorithm>
#include <array>

namespace xml {

namespace {

constexpr std::size_t bufferSize = 1 << 16;

/// For each byte, whether it stands for itself in a file.
constexpr std::array<bool, 256> plainBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte <= 0x7e; ++byte) plain[byte] = true;
    for (const unsigned char special : {'"', '&', '<', '>'}) plain[special] = false;
    return plain;
}();

bool isPlain(char byte) {
    return plainBytes[static_cast<unsigned char>(byte)];
}

}  // namespace

XMLWriter::XMLWriter(QIODevice& device, int indent, int wrapColumn)
    : device_(device), indent_(indent), wrapColumn_(wrapColumn) {
    buffer_.reserve(bufferSize);
}

XMLWriter::~XMLWriter() {
    flush();
}

void XMLWriter::declaration(QByteArrayView version, QByteArrayView encoding) {
    if (version.isNull() && encoding.isNull()) return;
    put("<?xml ");
    if (!version.isNull()) {
        put(" version=\"");
        put(version);
        put('"');
    }
    if (!encoding.isNull()) {
        put(" encoding=\"");
        put(encoding);
        put('"');
    }
    put(" ?>\n");
}

void XMLWriter::doctype(QByteArrayView name) {
    if (name.isNull()) return;
    put("<!DOCTYPE ");
    put(name);
    put(">\n");
}

void XMLWriter::openElement(QByteArrayView tag, Attributes attributes) {
    startTag(tag, attributes);
    put('>');
    endLine();
    ++depth_;
}

void XMLWriter::closeElement(QByteArrayView tag) {
    --depth_;
    pad(depth_);
    put("</");
    put(tag);
    put('>');
    endLine();
}

void XMLWriter::emptyElement(QByteArrayView tag, Attributes attributes) {
    startTag(tag, attributes);
    put(attributes.empty() ? "/>" : " />");
    endLine();
}

void XMLWriter::textElement(QByteArrayView tag, Attributes attributes, QByteArrayView text) {
    startTag(tag, attributes);
    put('>');
    putEscaped(text);
    put("</");
    put(tag);
    put('>');
    endLine();
}

void XMLWriter::data(QByteArrayView text) {
    pad(depth_);
    putEscaped(text);
}

void XMLWriter::comment(QByteArrayView text) {
    pad(depth_);
    put("<!--");
    put(text);
    put("-->");
}

void XMLWriter::cdataSection(QByteArrayView text) {
    pad(depth_);
    put("<![CDATA[");
    put(text);
    put("]]>");
}

/// Counts as the layout counts: values unescaped, and every attribute as if it stood on the element's line.
bool XMLWriter::folds(QByteArrayView tag, Attributes attributes) const {
    if (wrapColumn_ == 0 || attributes.size() <= 1) return false;
    qsizetype length = depth_ * indent_ + 1 + tag.size();
    for (const Attribute& attribute : attributes) {
        length += 4 + attribute.name.size() + attribute.value.size();
        if (length > wrapColumn_) return true;
    }
    return false;
}

void XMLWriter::startTag(QByteArrayView tag, Attributes attributes) {
    pad(depth_);
    put('<');
    put(tag);
    const bool folded = folds(tag, attributes);
    for (const Attribute& attribute : attributes) {
        if (folded && !attribute.value.isNull()) {
            put('\n');
            pad(depth_ + 1);
        } else {
            put(' ');
        }
        put(attribute.name);
        put("=\"");
        putEscaped(attribute.value);
        put('"');
    }
}

void XMLWriter::putEscaped(QByteArrayView bytes) {
    const char* run = bytes.begin();
    while (run != bytes.end()) {
        const char* const end = std::find_if_not(run, bytes.end(), isPlain);
        if (end != run) put(QByteArrayView(run, end));
        if (end == bytes.end()) return;
        switch (const auto byte = static_cast<unsigned char>(*end)) {
            case '"':
                put("&quot;");
                break;
            case '&':
                put("&amp;");
                break;
            case '<':
                put("&lt;");
                break;
            case '>':
                put("&gt;");
                break;
            default: {
                constexpr char digits[] = "0123456789abcdef";
                put("&#x");
                if (byte >= 16) put(digits[byte / 16]);
                put(digits[byte % 16]);
                put(';');
            }
        }
        run = end + 1;
    }
}

void XMLWriter::pad(qsizetype depth) {
    for (qsizetype rest = depth * indent_; rest > 0;) {
        constexpr std::string_view blanks =
            "                                                                ";
        const auto count = std::min(rest, static_cast<qsizetype>(blanks.size()));
        put(QByteArrayView(blanks.data(), count));
        rest -= count;
    }
}

void XMLWriter::endLine() {
    if (indent_ != 0) put('\n');
}

void XMLWriter::put(char byte) {
    put(QByteArrayView(&byte, 1));
}

void XMLWriter::put(QByteArrayView bytes) {
    const auto size = static_cast<std::size_t>(bytes.size());
    if (buffer_.size() + size > bufferSize) flush();
    if (size > bufferSize) {
        device_.write(bytes.data(), bytes.size());
    } else {
        buffer_.append(bytes.data(), size);
    }
}

void XMLWriter::flush() {
    device_.write(buffer_.data(), static_cast<qint64>(buffer_.size()));
    buffer_.clear();
}

}  // namespace xml
