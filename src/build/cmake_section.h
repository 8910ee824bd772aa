#pragma once

#include <QString>
#include <QStringList>

/// The two text files beside a build that the environment writes only in part.
namespace build {

/// The part of a `CMakeLists.txt` between two markers, which lists the sources and options of the target
/// "app".
struct CMakeSection {
    QString head;  ///< the file up to and with the start marker; empty without one
    QString tail;  ///< the file from the end marker on; empty without one
    QStringList sources;
    QStringList definitions;
    QStringList options;
    QStringList includeDirectories;
    QStringList others;  ///< tokens that belong to none of these

    /// Takes the text of a file apart. A call that is not of the form `name(app PRIVATE ...)` ends the
    /// reading.
    static CMakeSection parse(const QString& text, const QString& startMarker, const QString& endMarker);
    /// The text of the whole file.
    QString text() const;
};

/// The text of a device tree overlay without the line that marks it as generated.
QString overlayForEditing(const QString& text);
/// The same with the line.
QString overlayForWriting(const QString& text);

}  // namespace build
