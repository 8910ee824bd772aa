#include "properties/macro_property_class.h"

namespace properties {

MacroPropertyClass::MacroPropertyClass(const QString& macroName, bool isSystemMacro,
                                       const QString& description)
    : PropertyClass(
          QStringLiteral("$(") + macroName + u')', Kind::String, QStringLiteral("Properties"),
          isSystemMacro ? QStringLiteral("System Macro Values") : QStringLiteral("(Build Macro Values)"),
          QStringLiteral("$(") + macroName + u')', description, QString(), 0),
      macroName_(macroName) {}

}  // namespace properties
