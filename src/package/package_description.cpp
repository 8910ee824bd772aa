#include "package/package_description.h"

#include "package/package_archive.h"
#include "package/target.h"
#include "support/hexception.h"

#include <QDateTime>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <string>

namespace package {

using support::HException;

namespace {

constexpr int indent = 2;
const QString packageTag = QStringLiteral("package");
const QString installedFileTag = QStringLiteral("installed_file");
const QString fileNameKey = QStringLiteral("file_name");
const QString checkSumKey = QStringLiteral("crc32");
const QString keptKey = QStringLiteral("kept");
const QString yes = QStringLiteral("Yes");

[[noreturn]] void fail(const QString& name, const QString& message, qint64 column, qint64 line) {
    throw HException("cannot load package description file: " + name.toStdString() + " - " +
                     message.toStdString() + ' ' + std::to_string(column) + ':' + std::to_string(line));
}

bool isAscii(QStringView name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
}

/// Whether more attributes stand in one tag than may. This is asked of the bare text: an XML reader compares
/// every two attributes of a tag.
bool hasCrowdedTag(const QString& text) {
    int attributes = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'<') attributes = 0;
        if (text[i] != u'=') continue;
        while (i + 1 < text.size() && text[i + 1].isSpace()) ++i;
        const bool isQuoted = i + 1 < text.size() && (text[i + 1] == u'"' || text[i + 1] == u'\'');
        if (isQuoted && ++attributes > PackageDescriptionFile::maxAttributes) return true;
    }
    return false;
}

/// The reader lets some of what XML cannot hold pass in processing instructions.
bool hasControlCharacter(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r') || c.unicode() >= 0xFFFE;
    });
}

/// Whether a character reference can stand for whatever is not ASCII here: it cannot in a name.
bool hasAsciiNames(const QXmlStreamReader& token) {
    if (token.isDTD()) return isAscii(token.text());
    if (token.isProcessingInstruction()) return isAscii(token.processingInstructionTarget());
    const QXmlStreamAttributes attributes = token.attributes();
    return isAscii(token.qualifiedName()) &&
           std::all_of(attributes.begin(), attributes.end(),
                       [](const auto& attribute) { return isAscii(attribute.qualifiedName()); });
}

/// The document becomes a tree of objects that is destroyed by recursion, and is written as ASCII.
void checkForm(const QString& text, const QString& name) {
    if (hasControlCharacter(text)) fail(name, QStringLiteral("control character"), 0, 0);
    if (hasCrowdedTag(text)) fail(name, QStringLiteral("too many attributes"), 0, 0);
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && ++depth > PackageDescriptionFile::maxDepth)
            fail(name, QStringLiteral("elements nested too deeply"), reader.columnNumber(),
                 reader.lineNumber());
        if (reader.isDTD() && reader.text().contains(u'['))
            fail(name, QStringLiteral("declarations in the document type"), reader.columnNumber(),
                 reader.lineNumber());
        if (!hasAsciiNames(reader))
            fail(name, QStringLiteral("name is not ASCII"), reader.columnNumber(), reader.lineNumber());
        if (reader.isEndElement()) --depth;
    }
}

void writeSortedElement(const QXmlStreamReader& element, QXmlStreamWriter& writer) {
    QXmlStreamAttributes attributes = element.attributes();
    std::sort(attributes.begin(), attributes.end(),
              [](const auto& a, const auto& b) { return a.qualifiedName().compare(b.qualifiedName()) < 0; });
    writer.writeStartElement(element.qualifiedName().toString());
    writer.writeAttributes(attributes);
}

/// The text of a document with the attributes of each element by name: the DOM keeps them in an order that
/// changes from run to run. Null when the text is no document: the DOM takes characters that XML cannot hold.
QString withSortedAttributes(const QString& text) {
    QString sorted;
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    QXmlStreamWriter writer(&sorted);
    bool isProlog = true;  // in which the reader passes over line feeds
    while (!reader.atEnd()) {
        reader.readNext();
        const bool isMissing = reader.isStartDocument() && reader.documentVersion().isEmpty();
        if (reader.hasError()) return {};
        if (isMissing) continue;
        isProlog = isProlog && !reader.isStartElement();
        if (reader.isStartElement())
            writeSortedElement(reader, writer);
        else if (reader.isCDATA())
            writer.writeCharacters(reader.text().toString());  // where character references count
        else
            writer.writeCurrentToken(reader);
        if (isProlog) writer.writeCharacters(QStringLiteral("\n"));
    }
    return sorted;
}

QByteArray asciiOf(const QString& text) {
    QByteArray ascii;
    for (const char32_t character : text.toUcs4()) {
        if (character < 0x80)
            ascii += static_cast<char>(character);
        else
            ascii += "&#" + QByteArray::number(static_cast<uint>(character)) + ';';
    }
    return ascii;
}

QString checkSumText(std::uint32_t sum) {
    return QStringLiteral("0x") + QString::number(sum, 16);
}

}  // namespace

void PackageDescriptionFile::loadPackageDescription(PackageArchive& archive, const PackageArchiveFile* file) {
    if (file == nullptr) file = archive.findPackageDescription();
    if (file == nullptr) return;
    if (file->size() > maxSize) fail(file->name(), QStringLiteral("file too large"), 0, 0);
    parse(archive.readFile(file), file->name());
}

void PackageDescriptionFile::parse(const QByteArray& bytes, const QString& name) {
    const QString text = QString::fromUtf8(bytes);
    checkForm(text, name);
    QString message;
    int line = 0;
    int column = 0;
    root_ = {};
    if (document_.setContent(text, false, &message, &line, &column)) return;
    document_ = {};
    fail(name, message, column, line);
}

void PackageDescriptionFile::savePackageDescription(const QString& path, bool overwrite) {
    if (!overwrite && QFileInfo::exists(path))
        throw HException("cannot overwrite package description file " + path.toStdString());
    const QByteArray text = asciiOf(withSortedAttributes(document_.toString(indent)));
    const NewFile file{.modified = QDateTime::currentSecsSinceEpoch()};
    Contents contents(wholePiece(text));
    if (text.isEmpty() || text.size() > maxRecordSize ||
        Target::at(path).write(file, contents) != Target::Fault::None)
        throw HException("cannot write package description file " + path.toStdString());
}

bool PackageDescriptionFile::isEmpty() {
    return root().isNull();
}

QString PackageDescriptionFile::attribute(const char* name) {
    return root().attribute(QString::fromLatin1(name));
}

bool PackageDescriptionFile::hasAttribute(const char* name) {
    return root().hasAttribute(QString::fromLatin1(name));
}

void PackageDescriptionFile::setAttribute(const char* name, const QString& value) {
    root().setAttribute(QString::fromLatin1(name), value);
}

QMap<QString, QString> PackageDescriptionFile::attributes() {
    QMap<QString, QString> all;
    const QDomNamedNodeMap nodes = root().attributes();
    for (int i = 0; i < nodes.size(); ++i) all.insert(nodes.item(i).nodeName(), nodes.item(i).nodeValue());
    return all;
}

InstalledFiles PackageDescriptionFile::installedFiles() {
    InstalledFiles files;
    for (QDomElement child = root().firstChildElement(installedFileTag); !child.isNull();
         child = child.nextSiblingElement(installedFileTag))
        files.insert(child.attribute(fileNameKey), child.attribute(checkSumKey).toUInt(nullptr, 0));
    return files;
}

KeptFiles PackageDescriptionFile::keptFiles() {
    KeptFiles files;
    for (QDomElement child = root().firstChildElement(installedFileTag); !child.isNull();
         child = child.nextSiblingElement(installedFileTag))
        if (child.attribute(keptKey) == yes) files.insert(child.attribute(fileNameKey));
    return files;
}

void PackageDescriptionFile::removeInstalledFiles() {
    QDomElement next;
    for (QDomElement old = root().firstChildElement(installedFileTag); !old.isNull(); old = next) {
        next = old.nextSiblingElement(installedFileTag);
        root().removeChild(old);
    }
}

void PackageDescriptionFile::setInstalledFiles(const InstalledFiles& files, const KeptFiles& kept) {
    removeInstalledFiles();
    for (auto file = files.begin(); file != files.end(); ++file) {
        QDomElement child = document_.createElement(installedFileTag);
        child.setAttribute(fileNameKey, file.key());
        child.setAttribute(checkSumKey, checkSumText(file.value()));
        if (kept.contains(file.key())) child.setAttribute(keptKey, yes);
        root().appendChild(child);
    }
}

QDomElement& PackageDescriptionFile::root() {
    if (root_.isNull()) root_ = document_.elementsByTagName(packageTag).item(0).toElement();
    return root_;
}

}  // namespace package
