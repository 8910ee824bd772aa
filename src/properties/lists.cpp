#include "properties/lists.h"

#include <span>

namespace properties {

namespace {

constexpr const char* fileTypeRows[] = {
    "C",
    "C++",
    "Assembly",
    "Section Placement",
    "Memory Map",
    "Register Definitions",
    "Threads Script",
    "Target Script",
    "Reset Script",
    "Linker Script",
    "Executable",
    "Library",
    "Object file",
};

constexpr const char* projectTypeRows[] = {
    "Executable",
    "Library",
    "Object file",
    "Staging",
    "Combining",
    "Externally Built Executable",
    "Externally Built Library",
    "Externally Built Object file",
};

constexpr const char* colourRows[] = {
    "Red",        "Orange",    "Peach",       "Yellow",      "Green",       "Teal",       "Olive",
    "Blue",       "Purple",    "Maroon",      "Steel",       "Dark Steel",  "Gray",       "Dark Gray",
    "Charcoal",   "Dark Red",  "Dark Orange", "Dark Peach",  "Dark Yellow", "Dark Green", "Dark Teal",
    "Dark Olive", "Dark Blue", "Dark Purple", "Dark Maroon",
};

/// Each codec with the heading under which it is offered.
constexpr const char* codecRows[] = {
    "Default~~Common",     "UTF-8~~Common",       "ISO-8859-1~~ISO",     "ISO-8859-2~~ISO",
    "ISO-8859-3~~ISO",     "ISO-8859-4~~ISO",     "ISO-8859-5~~ISO",     "ISO-8859-6~~ISO",
    "ISO-8859-7~~ISO",     "ISO-8859-8~~ISO",     "ISO-8859-9~~ISO",     "ISO-8859-10~~ISO",
    "ISO-8859-13~~ISO",    "ISO-8859-14~~ISO",    "ISO-8859-15~~ISO",    "ISO-8859-16~~ISO",
    "CP 850~~Code Pages",  "CP 866~~Code Pages",  "CP 874~~Code Pages",  "CP 1250~~Code Pages",
    "CP 1251~~Code Pages", "CP 1252~~Code Pages", "CP 1253~~Code Pages", "CP 1254~~Code Pages",
    "CP 1255~~Code Pages", "CP 1256~~Code Pages", "CP 1257~~Code Pages", "CP 1258~~Code Pages",
    "BIG-5~~Eastern",      "BIG5-HKSCS~~Eastern", "EUC-JP~~Eastern",     "EUC-KR~~Eastern",
    "GB2312~~Eastern",     "GBK~~Eastern",        "GB18030~~Eastern",    "ISO-2022-JP~~Eastern",
    "Shift-JIS~~Eastern",  "TSCII~~Eastern",      "KOI8-R~~Eastern",     "KOI8-U~~Eastern",
    "TIS-620~~Eastern",    "UTF-16~~Others",      "Apple Roman~~Others", "HP-Roman8~~Others",
};

QStringList listOf(std::span<const char* const> rows) {
    QStringList list;
    for (const char* row : rows) list.append(QString::fromLatin1(row));
    return list;
}

}  // namespace

const QStringList& fileTypes() {
    static const QStringList list = listOf(fileTypeRows);
    return list;
}

const QStringList& projectTypes() {
    static const QStringList list = listOf(projectTypeRows);
    return list;
}

const QStringList& colours() {
    static const QStringList list = listOf(colourRows);
    return list;
}

int colourNumber(const QString& name) {
    return static_cast<int>(colours().indexOf(name)) + 1;
}

const QStringList& codecsWithHeadings() {
    static const QStringList list = listOf(codecRows);
    return list;
}

QStringList codecs() {
    QStringList list;
    for (const QString& row : codecsWithHeadings().mid(1)) list.append(row.left(row.indexOf(u"~~")));
    return list;
}

}  // namespace properties
