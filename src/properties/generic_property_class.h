#pragma once

#include "properties/property_class.h"

#include <QList>
#include <QString>

#include <utility>

namespace properties {

/// A tool option from a tool description file: it maps values to command-line options.
class GenericPropertyClass : public PropertyClass {
public:
    /// A value and the option text that it stands for; an option and its value that are two arguments are
    /// joined by ";".
    using Option = std::pair<QString, QString>;

    explicit GenericPropertyClass(const xml::XMLElement& element);
    /// The values of the options, in order.
    QStringList values() const override;

    const QList<Option>& options() const { return options_; }
    const QString& variant() const { return variant_; }

private:
    QList<Option> options_;
    QString variant_;
};

}  // namespace properties
