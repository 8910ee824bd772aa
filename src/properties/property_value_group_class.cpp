#include "properties/property_value_group_class.h"

namespace properties {

namespace {

QStringList entriesOf(const xml::XMLElement& group) {
    QStringList entries;
    for (const xml::XMLNode* node = group.firstChild(); node; node = node->nextSibling()) {
        const xml::XMLElement* const entry = xml::asElement(node);
        if (!entry || entry->tagName() != "groupEntry") continue;
        QString value = QString::fromUtf8(entry->attribute("name"));
        if (entry->hasAttribute("family"))
            value += QStringLiteral("~~") + QString::fromUtf8(entry->attribute("family"));
        entries.append(value);
    }
    return entries;
}

}  // namespace

PropertyValueGroupClass::PropertyValueGroupClass(const xml::XMLElement& element, bool isLibraryGroup)
    : PropertyClass(element), element_(&element), isLibraryGroup_(isLibraryGroup) {
    kind = Kind::Enumeration;
    order = QString::fromUtf8(element.attribute("order")).toInt(nullptr, 0);
    setEnumeration(entriesOf(element));
    setPage(element.hasAttribute("page") ? QString::fromUtf8(element.attribute("page"))
                                         : QStringLiteral("General"));
}

}  // namespace properties
