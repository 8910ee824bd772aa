#include "properties/property_class.h"

#include "properties/message_source.h"
#include "support/log.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace properties {

namespace {

constexpr std::array<const char*, 19> kindNames = {
    "Boolean",    "Integer",    "IntegerHex",  "IntegerRange", "String",       "FileName", "ProjFileName",
    "StringList", "DirPath",    "DirPathList", "Enumeration",  "Color",        "Font",     "FixedPitchFont",
    "Custom",     "JavaScript", "Command",     "ComPort",      "SaveFileName",
};
constexpr std::size_t namedInFiles = 16;

const QString yes = QStringLiteral("Yes");
const QString no = QStringLiteral("No");

/// As many digits as the largest value needs.
QString hexadecimal(std::uint32_t value, std::uint32_t maximum) {
    int width = 1;
    for (std::uint64_t limit = 0x10; width < 8 && maximum >= limit; limit <<= 4) ++width;
    return QStringLiteral("0x") + QStringLiteral("%1").arg(value, width, 16, QLatin1Char('0'));
}

QString numberText(Kind kind, std::uint32_t value, std::uint32_t maximum) {
    return kind == Kind::IntegerHex ? hexadecimal(value, maximum) : QString::number(value);
}

}  // namespace

QString kindName(Kind kind) {
    return QString::fromLatin1(kindNames[static_cast<std::size_t>(kind)]);
}

Kind kindNamed(const QString& word) {
    for (std::size_t i = 0; i < namedInFiles; ++i)
        if (word == QLatin1StringView(kindNames[i])) return static_cast<Kind>(i);
    return Kind::Boolean;
}

PropertyClass::PropertyClass(const QString& key, const QString& pageText, const QString& groupText,
                             const QString& title, const QString& description, bool isYes, int place)
    : PropertyClass(key, Kind::Boolean, QStringList{yes, no}, pageText, groupText, title, description,
                    isYes ? yes : no, place) {}

PropertyClass::PropertyClass(const QString& key, Kind kindOfValue, const QString& pageText,
                             const QString& groupText, const QString& title, const QString& description,
                             const QString& defaultText, int place)
    : name(key),
      group(groupText),
      shortName(title),
      defaultValue(kindOfValue == Kind::Boolean && defaultText.isNull() ? no : defaultText),
      page(pageText),
      kind(kindOfValue),
      order(place),
      longDescription_(description) {
    normalise();
}

PropertyClass::PropertyClass(const QString& key, Kind kindOfValue, const QStringList& valueList,
                             const QString& pageText, const QString& groupText, const QString& title,
                             const QString& description, const QString& defaultText, int place)
    : PropertyClass(key, kindOfValue, pageText, groupText, title, description, defaultText, place) {
    setEnumeration(valueList);
}

PropertyClass::PropertyClass(const QString& key, Kind kindOfValue, std::uint32_t lowest,
                             std::uint32_t highest, const QString& pageText, const QString& groupText,
                             const QString& title, const QString& description, std::uint32_t defaultNumber,
                             int place)
    : PropertyClass(key, kindOfValue, pageText, groupText, title, description,
                    numberText(kindOfValue, defaultNumber, highest), place) {
    minimum = lowest;
    maximum = highest;
}

PropertyClass::PropertyClass(const QString& key, Kind kindOfValue, int place)
    : name(key), kind(kindOfValue), order(place) {
    if (!messageSource) return;
    const auto text = [&](const char* ending) {
        return messageSource->text(key + QLatin1StringView(ending));
    };
    page = text(".page");
    if (page.isEmpty())
        support::logMessage(support::LogLevel::Warning, support::LogLineFeed,
                            "PropertyClass::PropertyClass GUIBuilder message %s not found",
                            (key + QStringLiteral(".page")).toUtf8().constData());
    group = text(".group");
    shortName = text(".short");
    longDescription_ = text(".long");
    defaultValue = text(".default");
    setEnumeration(text(".enumerates").split(u';', Qt::SkipEmptyParts));
    suffix = text(".suffix");
    minimum = text(".minimum").toUInt();
    maximum = text(".maximum").toUInt();
    normalise();
}

PropertyClass::PropertyClass(const xml::XMLElement& element)
    : name(element.text("name")),
      group(element.text("group")),
      shortName(element.text("short")),
      defaultValue(element.text("default")),
      specialValue(element.text("specialvalue")),
      kind(kindNamed(element.text("type"))),
      minimum(element.text("minimum").toUInt()),
      maximum(element.text("maximum").toUInt()),
      order(static_cast<int>(element.text("order").toUInt())),
      longDescription_(element.text("long")) {
    if (element.hasAttribute("enumeration"))
        setEnumeration(element.text("enumeration").split(u';', Qt::SkipEmptyParts));
    normalise();
}

PropertyClass::~PropertyClass() = default;

QStringList PropertyClass::values() const {
    if (kind == Kind::Boolean && enumerationValues.isEmpty()) return {yes, no};
    return enumerationValues;
}

void PropertyClass::setEnumeration(const QStringList& list) {
    enumerationValues.clear();
    enumerationGroups.clear();
    if (list.isEmpty() || !list.first().contains(u"~~")) {
        enumerationValues = list;
        return;
    }
    for (const QString& entry : list) {
        const qsizetype cut = entry.indexOf(u"~~");
        enumerationValues.append(cut < 0 ? entry : entry.left(cut));
        enumerationGroups.append(cut < 0 ? QStringLiteral("") : entry.mid(cut + 2));
    }
}

void PropertyClass::setPage(const QString& newPage) {
    page = newPage;
    normalise();
}

/// Cuts the group's ending and gathers pages that are shown as one.
void PropertyClass::normalise() {
    qsizetype ending = group.indexOf(u" Options");
    if (ending < 0) ending = group.indexOf(u" Settings");
    if (ending >= 0) group.truncate(ending);
    if (page == u"General" || page == u"C/C++" || page == u"Linker") {
        page = QStringLiteral("Code");
    } else if (page == u"Debugging") {
        page = QStringLiteral("Debug");
    }
}

bool isAttributeName(const QString& text) {
    const auto isNameCharacter = [](QChar character) {
        return character.isLetterOrNumber() || QStringView(u"_-.:").contains(character);
    };
    return !text.isEmpty() && (text[0].isLetter() || text[0] == u'_') &&
           std::all_of(text.begin(), text.end(), isNameCharacter);
}

bool isStorableKey(const QString& key) {
    constexpr const char16_t* reserved[] = {u"Name", u"Platform", u"hidden", u"inherited_configurations"};
    return isAttributeName(key) &&
           std::none_of(std::begin(reserved), std::end(reserved),
                        [&](const char16_t* name) { return key == QStringView(name); });
}

}  // namespace properties
