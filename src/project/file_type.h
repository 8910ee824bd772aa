#pragma once

#include <QString>

namespace project {

/// The extensions that a tool chain gives its products, each with its dot or null.
struct ProductExtensions {
    QString object;
    QString executable;
    QString library;
};

/// The type of a file by its name's last extension, and for "xml" by the document type that its first 1024
/// bytes declare. Empty when neither tells.
QString recogniseFileType(const QString& filePath, const ProductExtensions& products);

}  // namespace project
