#include "project/file_type.h"

#include "project/base/path.h"

#include <QFile>
#include <QFileInfo>

namespace project {

namespace {

struct Row {
    const char* name;
    const char* type;
};

constexpr Row extensionRows[] = {
    {"c", "C"},        {"cpp", "C++"},    {"cxx", "C++"},   {"cc", "C++"},       {"h", "Header"},
    {"hpp", "Header"}, {"hxx", "Header"}, {"hh", "Header"}, {"asm", "Assembly"}, {"s", "Assembly"},
};

constexpr Row documentTypeRows[] = {
    {"Board_Memory_Definition_File", "Memory Map"},
    {"Linker_Placement_File", "Section Placement"},
    {"Register_Definition_File", "Register Definitions"},
};

template <std::size_t size>
QString typeIn(const Row (&rows)[size], const QString& name) {
    for (const Row& row : rows)
        if (name == QLatin1StringView(row.name)) return QString::fromLatin1(row.type);
    return {};
}

bool isNameByte(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '_';
}

/// The first name behind "<!DOCTYPE ", or an empty text. The open of a pipe would wait for a writer.
QString documentType(const QString& filePath) {
    QFile file(filePath);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return {};
    const QByteArray head = file.read(1024);
    const QByteArray opening("<!DOCTYPE ");
    const qsizetype declaration = head.indexOf(opening);
    if (declaration < 0) return {};
    const qsizetype place = declaration + opening.size();
    qsizetype end = place;
    while (end < head.size() && isNameByte(head[end])) ++end;
    return QString::fromLatin1(head.mid(place, end - place));
}

}  // namespace

QString recogniseFileType(const QString& filePath, const ProductExtensions& products) {
    const QString extension = Path(filePath).extension(false).toLower();
    if (extension.isEmpty()) return {};
    if (extension == u"xml") return typeIn(documentTypeRows, documentType(filePath));
    QString sourceType = typeIn(extensionRows, extension);
    if (!sourceType.isEmpty()) return sourceType;
    const auto is = [&](const QString& product) { return product.size() > 1 && product.mid(1) == extension; };
    if (is(products.object)) return QStringLiteral("Object file");
    if (is(products.executable)) return QStringLiteral("Executable");
    if (is(products.library)) return QStringLiteral("Library");
    return extension == u"ld" ? QStringLiteral("Linker Script") : QString();
}

}  // namespace project
