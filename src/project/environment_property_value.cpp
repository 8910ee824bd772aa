#include "project/environment_property_value.h"

namespace project {

namespace {

QMap<QString, QList<EnvironmentPropertyValue*>>& groups() {
    static QMap<QString, QList<EnvironmentPropertyValue*>> lists;
    return lists;
}

bool isListed(const QString& group) {
    return !group.isEmpty() && group != u"(Internal)";
}

}  // namespace

std::array<SettingsStore*, 2>& EnvironmentPropertyValue::stores() {
    static std::array<MemorySettingsStore, 2> inMemory;
    static std::array<SettingsStore*, 2> current{&inMemory[0], &inMemory[1]};
    return current;
}

QList<EnvironmentPropertyValue*> EnvironmentPropertyValue::valuesOfGroup(const QString& group) {
    return groups().value(group);
}

EnvironmentPropertyValue::EnvironmentPropertyValue(const properties::PropertyClass* propertyClass,
                                                   int storeIndex)
    : PropertyValue(propertyClass), storeIndex_(storeIndex) {
    if (isListed(propertyClass->group)) groups()[propertyClass->group].append(this);
}

EnvironmentPropertyValue::~EnvironmentPropertyValue() {
    if (isListed(propertyClass()->group)) groups()[propertyClass()->group].removeOne(this);
}

std::unique_ptr<PropertyValue> EnvironmentPropertyValue::clone() const {
    return std::make_unique<EnvironmentPropertyValue>(propertyClass(), storeIndex_);
}

bool EnvironmentPropertyValue::isInherited() const {
    return value() == propertyClass()->defaultValue;
}

QString EnvironmentPropertyValue::value() const {
    if (!known_) {
        text_ = store().read(propertyClass()->name, propertyClass()->defaultValue);
        known_ = true;
    }
    return text_;
}

void EnvironmentPropertyValue::setValue(const QString& text) {
    if (text == value()) return;
    text_ = text;
    if (text == propertyClass()->defaultValue) {
        store().remove(propertyClass()->name);
    } else {
        store().write(propertyClass()->name, text);
    }
    Q_EMIT changed(this);
}

}  // namespace project
