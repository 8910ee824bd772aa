#include "build/node_properties.h"

namespace build {

QString NodeProperties::expanded(const PropertyClass* propertyClass, const MacroTable& macros) const {
    return value(propertyClass).contains(u'$')
               ? engine_.expandPropertyWith(node_, propertyClass, configuration_, macros)
               : value(propertyClass);
}

QStringList NodeProperties::list(const char* prefix, const PropertyClass* propertyClass, bool expand,
                                 bool escaped) const {
    return engine_.propertyValueList(QString::fromLatin1(prefix), node_, propertyClass, configuration_,
                                     expand, escaped);
}

QStringList NodeProperties::includeOptions(bool escaped, bool quoted) const {
    QStringList options = list("", tools().c_user_include_directories, true, escaped);
    for (QString& directory : options) {
        if (project::isAbsolutePath(directory)) directory = project::Path(directory).normalised();
        directory = quoted ? QStringLiteral("-I\"") + directory + u'"' : QStringLiteral("-I") + directory;
    }
    return options;
}

QString quote(const QString& name) {
    return QChar(u'\u2018') + name + QChar(u'\u2019');
}

}  // namespace build
