#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QMap>
#include <QString>

#include <cstdint>

namespace package {

class PackageArchive;
class PackageArchiveFile;

/// Names of installed files, relative to the installation directory, to their check sums.
using InstalledFiles = QMap<QString, std::uint32_t>;

/// The description of a package: an XML document whose first element with the tag "package" carries the
/// attributes and, once the package is installed, the list of its files. Failures are thrown as
/// support::HException.
class PackageDescriptionFile {
public:
    /// A description in an archive may have so many bytes at most, and elements within elements.
    static constexpr std::uint32_t maxSize = 16U << 20;
    static constexpr int maxDepth = 100;

    /// Parses the entry `file`, or the archive's own description; stays empty when there is neither.
    void loadPackageDescription(PackageArchive& archive, const PackageArchiveFile* file = nullptr);
    /// Parses UTF-8 text; `name` is for the message.
    void parse(const QByteArray& text, const QString& name);
    /// Writes the document as ASCII; what is not, becomes a character reference. Makes the directory.
    void savePackageDescription(const QString& path, bool overwrite);

    /// Whether there is an element "package".
    bool isEmpty();
    QString attribute(const char* name);
    bool hasAttribute(const char* name);
    void setAttribute(const char* name, const QString& value);
    /// By name.
    QMap<QString, QString> attributes();

    InstalledFiles installedFiles();
    /// Replaces the list.
    void setInstalledFiles(const InstalledFiles& files);

private:
    QDomElement& root();

    QDomDocument document_;
    QDomElement root_;
};

}  // namespace package
