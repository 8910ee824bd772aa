#pragma once

#include "project/property_value.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <array>

namespace project {

/// A store of settings of the environment.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QString read(const QString& key, const QString& defaultValue) const = 0;
    virtual void write(const QString& key, const QString& value) = 0;
    virtual void remove(const QString& key) = 0;
};

/// A store that lives as long as the process.
class MemorySettingsStore : public SettingsStore {
public:
    QString read(const QString& key, const QString& defaultValue) const override {
        return values_.value(key, defaultValue);
    }
    void write(const QString& key, const QString& value) override { values_.insert(key, value); }
    void remove(const QString& key) override { values_.remove(key); }

private:
    QMap<QString, QString> values_;
};

/// A setting of the environment, not of a project. It reads its store once, writes only what differs from the
/// default, and is listed under its class's group unless that is empty or "(Internal)".
class EnvironmentPropertyValue : public QObject, public PropertyValue {
    Q_OBJECT

public:
    /// `storeIndex` selects one of the two stores.
    EnvironmentPropertyValue(const properties::PropertyClass* propertyClass, int storeIndex);
    ~EnvironmentPropertyValue() override;
    std::unique_ptr<PropertyValue> clone() const override;
    bool isInherited() const override;
    void setValue(const QString& text) override;
    QString value() const override;

    /// The stores of the process; a host replaces them before it makes a value.
    static std::array<SettingsStore*, 2>& stores();
    /// The values of a group, in order of construction.
    static QList<EnvironmentPropertyValue*> valuesOfGroup(const QString& group);

Q_SIGNALS:
    void changed(project::EnvironmentPropertyValue* value);

private:
    SettingsStore& store() const { return *stores()[static_cast<std::size_t>(storeIndex_)]; }

    mutable bool known_ = false;
    mutable QString text_;
    int storeIndex_;
};

}  // namespace project
