#include "project/property_lookup.h"

#include "project/base/text_list.h"

namespace project {

namespace {

class Walk {
public:
    Walk(const properties::PropertyClass& propertyClass, PropertyTrace* trace)
        : key_(propertyClass.name),
          list_(propertyClass.kind == properties::Kind::StringList),
          trace_(trace) {}

    /// Reads what `node` itself says; true when that ends the walk.
    bool readNode(ProjectElement* node, const QString& configuration) {
        if (node->configurations.isEmpty()) return false;
        if (readLevel(node, configuration) && !list_) return true;
        if (configuration == commonConfiguration) return false;
        for (const QString& name : inheritedConfigurationsAt(node, configuration))
            if (readLevel(node, name) && !list_) return true;
        return readLevel(node, commonConfiguration) && !list_;
    }

    const QString& result() const { return result_; }

private:
    bool readLevel(ProjectElement* node, const QString& configuration) {
        ProjectElement* const child = node->configurations.value(configuration);
        const QString* const value = child ? child->attributes.find(key_) : nullptr;
        if (!value) return false;
        if (trace_) trace_->append({*value, child->elementName(), node});
        result_ = result_.isEmpty() ? storedText(*value) : *value + u';' + result_;
        return true;
    }

    const QString& key_;
    const bool list_;
    PropertyTrace* const trace_;
    QString result_;
};

}  // namespace

QStringList inheritedConfigurationsAt(ProjectElement* node, const QString& configuration) {
    for (; node; node = node->parentElement()) {
        if (!node->isSolution()) continue;
        QStringList names = node->solution->inheritanceIndex.value(configuration);
        if (!names.isEmpty()) return names;
    }
    return {};
}

QString lookUpProperty(ProjectElement* node, const properties::PropertyClass& propertyClass,
                       const QString& configuration, PropertyTrace* trace) {
    Walk walk(propertyClass, trace);
    for (; node; node = node->parentElement())
        if (walk.readNode(node, configuration)) break;
    if (!walk.result().isNull()) return walk.result();
    if (trace) trace->append({propertyClass.defaultValue, QString(), nullptr});
    return propertyClass.defaultValue;
}

QString localValue(ProjectElement* node, const QString& key, const QString& configuration) {
    const ProjectElement* const child = node->configurations.value(configuration);
    return child ? child->attributes.value(key) : QString();
}

QStringList listEntries(const QString& value, bool escaped) {
    return escaped ? escapedEntries(value) : value.split(u';', Qt::SkipEmptyParts);
}

}  // namespace project
