#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QMap>
#include <QSet>
#include <QString>

#include <cstdint>

namespace package {

class PackageArchive;
class PackageArchiveFile;

/// Names of installed files, relative to the installation directory, to their check sums.
using InstalledFiles = QMap<QString, std::uint32_t>;
/// Names among them, of files that are not of the package: the user has kept his own, newer ones.
using KeptFiles = QSet<QString>;

/// The description of a package: an XML document whose first element with the tag "package" carries the
/// attributes and, once the package is installed, the list of its files. Failures are thrown as
/// support::HException.
class PackageDescriptionFile {
public:
    /// A description in an archive may have so many bytes at most,
    static constexpr std::uint32_t maxSize = 1U << 20;
    /// and one with the list of its files so many.
    static constexpr std::uint32_t maxRecordSize = 256U << 20;
    /// Elements within elements, and attributes of one.
    static constexpr int maxDepth = 100;
    static constexpr int maxAttributes = 256;

    /// Parses the entry `file`, or the archive's own description; stays empty when there is neither.
    void loadPackageDescription(PackageArchive& archive, const PackageArchiveFile* file = nullptr);
    /// Parses UTF-8 text; `name` is for the message.
    void parse(const QByteArray& text, const QString& name);
    /// Writes the document as ASCII; what is not, becomes a character reference. Makes the directory. What
    /// XML cannot hold, a control character in a name, fails like a file that cannot be written.
    void savePackageDescription(const QString& path, bool overwrite);

    /// Whether there is an element "package".
    bool isEmpty();
    QString attribute(const char* name);
    bool hasAttribute(const char* name);
    void setAttribute(const char* name, const QString& value);
    /// By name.
    QMap<QString, QString> attributes();

    InstalledFiles installedFiles();
    KeptFiles keptFiles();
    /// Replaces the list.
    void setInstalledFiles(const InstalledFiles& files, const KeptFiles& kept = {});

private:
    void removeInstalledFiles();
    QDomElement& root();

    QDomDocument document_;
    QDomElement root_;
};

}  // namespace package
