#pragma once

#include "package/package_archive.h"

#include <QDateTime>
#include <QHash>

#include <algorithm>
#include <limits>

namespace package {

/// An input file that has been recognised as an archive; the stream is null when it was not.
struct ArchiveStream {
    std::unique_ptr<PackageArchiveIOFileInterface> stream;
    int version = 0;
    Compression compression = Compression::Zlib;
    std::uint32_t count = 0;  ///< of files, in version 1
    std::int64_t start = 0;   ///< of the archive in a plain file, from which its offsets count
    std::int64_t end = 0;     ///< of the last contents; 0 when there are none

    /// False for a compressed stream that has more to give. A plain one may stand in a larger file.
    bool isAtEnd() const {
        const auto* compressed = dynamic_cast<const PackageArchiveCompressedInputFile*>(stream.get());
        return compressed == nullptr || compressed->hasEnded();
    }
};

/// The private part of an archive.
struct PackageArchiveData {
    QString path;  ///< of the opened file
    ArchiveStream input;
    std::vector<std::unique_ptr<PackageArchiveFile>> files;
    QHash<QString, PackageArchiveFile*> firstByName;
    int version = 1;
    Compression compression = Compression::Zlib;
    std::vector<char> piece;  ///< of the contents that are being read
};

/// The archive's times: whole seconds since 1970, in 32 bits.
inline QDateTime entryTime(std::int64_t seconds) {
    const auto kept = std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<std::uint32_t>::max());
    return QDateTime::fromSecsSinceEpoch(kept, Qt::UTC);
}

}  // namespace package
