#include "properties/generic_property_class.h"

namespace properties {

namespace {

/// "-" and what stands between the brackets of an entry such as "Level 1 (O1)", or nothing.
QString optionInBrackets(const QString& entry) {
    const qsizetype open = entry.indexOf(u'(');
    const qsizetype close = open < 0 ? -1 : entry.indexOf(u')', open);
    return close < 0 ? QStringLiteral("") : u'-' + entry.mid(open + 1, close - open - 1);
}

}  // namespace

GenericPropertyClass::GenericPropertyClass(const xml::XMLElement& element) : PropertyClass(element) {
    if (element.hasAttribute("enumeration"))
        for (const QString& entry : PropertyClass::values())
            options_.append({entry, optionInBrackets(entry)});

    if (element.hasAttribute("values")) {
        const QString prefix =
            element.hasAttribute("option") ? element.text("option") + u';' : element.text("option2");
        for (const QString& part : element.text("values").split(u';', Qt::SkipEmptyParts)) {
            const QString value = part.simplified();
            options_.append({value, prefix + value});
        }
    }
    for (const xml::XMLNode* node = element.firstChild(); node; node = node->nextSibling()) {
        const xml::XMLElement* const child = xml::asElement(node);
        if (child && child->hasAttribute("value") && child->hasAttribute("option"))
            options_.append({child->text("value"), child->text("option")});
    }
    variant_ = element.text("variant");
}

QStringList GenericPropertyClass::values() const {
    QStringList result;
    for (const auto& [value, option] : options_) result.append(value);
    return result;
}

}  // namespace properties
