#pragma once

#include "xml/element.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace properties {

/// What a property takes. The numbers and names are those of tool description files; the last three exist
/// only in the system's own tables.
enum class Kind : std::uint32_t {
    Boolean = 0,
    Integer = 1,
    IntegerHex = 2,
    IntegerRange = 3,
    String = 4,
    FileName = 5,
    ProjFileName = 6,
    StringList = 7,
    DirPath = 8,
    DirPathList = 9,
    Enumeration = 10,
    Color = 11,
    Font = 12,
    FixedPitchFont = 13,
    Custom = 14,
    JavaScript = 15,
    Command = 16,
    ComPort = 17,
    SaveFileName = 18,
};

/// "Boolean", "Integer" and so on.
QString kindName(Kind kind);
/// The kind that a `type` attribute names; an unknown word is Boolean.
Kind kindNamed(const QString& word);

/// An entry of the schema: what a property is called in files and by people, what it takes, and its default.
/// It never holds a user's setting.
class PropertyClass {
public:
    /// A Boolean with its two values.
    PropertyClass(const QString& name, const QString& page, const QString& group, const QString& shortName,
                  const QString& longDescription, bool defaultValue, int order);
    /// Any kind; a Boolean with a null default is "No".
    PropertyClass(const QString& name, Kind kind, const QString& page, const QString& group,
                  const QString& shortName, const QString& longDescription, const QString& defaultValue,
                  int order);
    /// Values of an enumeration; see setEnumeration.
    PropertyClass(const QString& name, Kind kind, const QStringList& values, const QString& page,
                  const QString& group, const QString& shortName, const QString& longDescription,
                  const QString& defaultValue, int order);
    /// An integer between limits.
    PropertyClass(const QString& name, Kind kind, std::uint32_t minimum, std::uint32_t maximum,
                  const QString& page, const QString& group, const QString& shortName,
                  const QString& longDescription, std::uint32_t defaultValue, int order);
    /// A class whose texts stand in the text catalogue; see MessageSource.
    PropertyClass(const QString& name, Kind kind, int order);
    /// A class as a tool description file tells it. The element stays with its document.
    explicit PropertyClass(const xml::XMLElement& element);
    virtual ~PropertyClass();

    PropertyClass(const PropertyClass&) = delete;
    PropertyClass& operator=(const PropertyClass&) = delete;

    /// The help text, which may hold simple HTML.
    virtual QString longDescription() const { return longDescription_; }
    /// The values that can be chosen from; of a Boolean without any, "Yes" and "No".
    virtual QStringList values() const;
    /// Free for hosts; false in all classes of the system.
    virtual bool hostPredicate() const { return false; }

    /// Takes the values of an enumeration. When the first holds "~~", each is a value, "~~" and its heading.
    void setEnumeration(const QStringList& list);
    /// Replaces the page, as a tool description does.
    void setPage(const QString& newPage);

    QString name;          ///< the key: the attribute name in files
    QString group;         ///< heading within the page
    QString shortName;     ///< shown to the user
    QString suffix;        ///< unit behind a value
    QString defaultValue;  ///< with macros unexpanded
    QString specialValue;  ///< of a file the dialog's filter, of a tool option the option's name
    QString page;          ///< top-level heading
    bool readOnly = false;
    bool perConfiguration = true;  ///< false: the value is always stored in "Common"
    bool viewFlag = false;         ///< for a property view
    Kind kind = Kind::Boolean;
    QStringList enumerationValues;
    QStringList enumerationGroups;  ///< the heading of each value, or nothing at all
    std::uint32_t minimum = 0;
    std::uint32_t maximum = 0;
    int order = 0;  ///< lower comes first in a display

protected:
    void setLongDescription(const QString& text) { longDescription_ = text; }

private:
    void normalise();

    QString longDescription_;
};

/// Classes in an order that matters; it owns nothing.
using PropertyClassList = QList<PropertyClass*>;

/// Whether a file that has an attribute of that name can be read back.
bool isAttributeName(const QString& text);

/// Whether values can be stored in files under the key of a class that a file describes: it has to be read
/// back as the name of an attribute, and to be none of those that make a configuration what it is.
bool isStorableKey(const QString& key);

}  // namespace properties
