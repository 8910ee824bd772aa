#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <utility>

namespace package {

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
    bool isReadOnly() const { return (data_.mode & 0222) == 0; }
    /// Seconds since 1970 in UTC.
    std::int64_t modifiedSeconds() const { return data_.modified.toSecsSinceEpoch(); }

private:
    friend class PackageArchive;

    Data data_;
};

}  // namespace package
