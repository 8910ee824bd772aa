#include "properties/property_value_group_class.h"

namespace properties {

namespace {

QStringList entriesOf(const xml::XMLElement& group) {
    QStringList entries;
    for (const xml::XMLNode* node = group.firstChild(); node; node = node->nextSibling()) {
        const xml::XMLElement* const entry = xml::asElement(node);
        if (!entry || entry->tagName() != "groupEntry") continue;
        QString value = entry->text("name");
        if (entry->hasAttribute("family")) value += QStringLiteral("~~") + entry->text("family");
        entries.append(value);
    }
    return entries;
}

}  // namespace

PropertyValueGroupClass::PropertyValueGroupClass(const xml::XMLElement& element, bool isLibraryGroup)
    : PropertyClass(element), element_(&element), isLibraryGroup_(isLibraryGroup) {
    kind = Kind::Enumeration;
    order = element.text("order").toInt(nullptr, 0);
    setEnumeration(entriesOf(element));
    setPage(element.hasAttribute("page") ? element.text("page") : QStringLiteral("General"));
}

}  // namespace properties
