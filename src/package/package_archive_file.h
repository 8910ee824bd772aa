#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <utility>

namespace package {

/// The suffix of the file that describes a package.
inline const QString descriptionSuffix = QStringLiteral("_package.xml");

/// What a mode comes down to where only "read-only" is known.
constexpr std::uint32_t writeBits = 0222;
constexpr std::uint32_t readOnlyMode = 0444;
constexpr std::uint32_t writableMode = 0666;

/// One entry of an archive, which owns it.
class PackageArchiveFile {
public:
    /// Where the contents are.
    enum class Source : std::uint32_t { Nowhere = 0, Archive = 1, Disk = 2, Memory = 3 };

    struct Data {
        Source source = Source::Nowhere;
        QString name{};            ///< with "/" as separator
        QString diskPath{};        ///< of Source::Disk
        std::uint32_t offset = 0;  ///< of Source::Archive, in the decompressed stream
        std::uint32_t size = 0;
        std::uint32_t mode = 0;  ///< as in `st_mode`
        QDateTime modified{};    ///< in UTC, whole seconds
        QByteArray data{};       ///< of Source::Memory
    };

    explicit PackageArchiveFile(Data data) : data_(std::move(data)) {}

    const QString& name() const { return data_.name; }
    const QDateTime& modified() const { return data_.modified; }
    std::uint32_t size() const { return data_.size; }
    std::uint32_t mode() const { return data_.mode; }
    bool isReadOnly() const { return (data_.mode & writeBits) == 0; }
    bool isDescription() const { return data_.name.endsWith(descriptionSuffix); }
    /// Seconds since 1970 in UTC.
    std::int64_t modifiedSeconds() const { return data_.modified.toSecsSinceEpoch(); }

private:
    friend class PackageArchive;

    Data data_;
};

}  // namespace package
