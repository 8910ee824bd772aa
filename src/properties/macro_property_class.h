#pragma once

#include "properties/property_class.h"

namespace properties {

/// A built-in macro, shown as "$(NAME)".
class MacroPropertyClass : public PropertyClass {
public:
    MacroPropertyClass(const QString& macroName, bool isSystemMacro, const QString& description);

    /// The name without "$(" and ")".
    const QString& macroName() const { return macroName_; }

private:
    QString macroName_;
};

}  // namespace properties
