#pragma once

#include "package/compressed_file.h"
#include "package/contents.h"
#include "package/package_archive_file.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace project {
class ProjectElement;
}

namespace package {

struct ArchiveStream;
struct PackageArchiveData;

/// How the one stream of an archive is compressed: as a zlib stream (RFC 1950) or a bzip2 stream.
enum class Compression : std::uint32_t { Zlib = 0, Bzip2 = 1 };

/// One compressed file that holds many files with their names, sizes, times and modes.
///
/// An archive is empty, or open, its stream held, or being built in memory; entries of the three kinds can
/// stand side by side. While entries of an opened file exist, that file must not be replaced: save to
/// another path. The archive owns its entries and its stream and is used from one thread.
///
/// Names are UTF-8 in the file. Contents are best taken in table order: then the stream is decompressed once,
/// whereas each step back starts it anew.
///
/// Failures are thrown as support::HException. What a file claims is not believed: memory grows with what is
/// really read, and a table of contents whose entries overlap or go back is damaged.
class PackageArchive : public QObject {
public:
    /// Opens `path`; an empty one gives an empty archive.
    explicit PackageArchive(const QString& path = QString());
    ~PackageArchive() override;

    // --- What a subclass may vary ---

    /// A stream that decompresses from where `file` stands, and owns it.
    virtual std::unique_ptr<PackageArchiveIOFileInterface> createInputStream(Compression compression,
                                                                             FileHandle file);
    /// A stream that compresses to where `file` stands, and owns it.
    virtual std::unique_ptr<PackageArchiveCompressedOutputFile> createOutputStream(Compression compression,
                                                                                   FileHandle file,
                                                                                   int level);
    /// Called once the output file is open, before the first byte: what it writes stands before the archive.
    virtual void beforeWrite(std::FILE* file);
    /// Called once the input file is open and at the archive's start: what it reads does not belong to it.
    virtual void beforeRead(std::FILE* file);

    // --- The archive as a file ---

    /// Reads the table of contents of the archive that begins `offset` bytes into the file, and keeps the
    /// stream open. Replaces what was held; after a failure the archive is empty.
    void load(const QString& path, std::int64_t offset = 0);
    /// Writes the archive in the form of its version. A `level` below 0 means 7, one above 9 means 9. After a
    /// failure a part of the file may remain. A file that the archive itself needs is not opened.
    void save(const QString& path, int level = -1);
    /// Destroys entries and stream.
    void clear();
    /// Whether the file starts as an archive.
    static bool isArchive(const QString& path);

    int version() const;
    /// 1 or 2, what `save` writes. A new archive has version 1.
    void setVersion(int version);
    Compression compression() const;
    /// What `save` writes in version 2. Version 1 has zlib alone.
    void setCompression(Compression compression);

    // --- Entries ---

    /// In table order.
    const std::vector<std::unique_ptr<PackageArchiveFile>>& files() const;
    /// The first of exactly that name, or null.
    PackageArchiveFile* fileNamed(const QString& name) const;
    /// Adds the regular file at `path`, or puts it in the place of the entry of that name. The file must stay
    /// as it is until the archive is saved.
    PackageArchiveFile* addDiskFile(const QString& path, const QString& archiveName);
    /// The first entry whose name ends with "_package.xml", or null.
    PackageArchiveFile* findPackageDescription() const;
    /// The contents of an entry; empty for null.
    QByteArray readFile(const PackageArchiveFile* file);
    /// The same in pieces, which are taken before anything else is read from the archive.
    PieceSource contents(const PackageArchiveFile* file);
    /// Whether the archive needs the file at `path`, so that it cannot be saved there.
    bool readsFrom(const QString& path) const;

    // --- Extraction: a file is written whole, with its time and mode, or not at all ---

    /// Writes an entry to `directory` + "/" + name, which must not lead out of the directory, nor through a
    /// symbolic link below it.
    void extract(const PackageArchiveFile* file, const QString& directory, bool overwrite);
    /// Writes several likewise, in their order, but none when one's name is refused.
    void extractAll(const std::vector<const PackageArchiveFile*>& files, const QString& directory,
                    bool overwrite);
    /// Writes an entry to `path`, making the directories that it needs.
    void extractTo(const PackageArchiveFile* file, const QString& path, bool overwrite);
    /// Throws unless every entry's name may be written below `directory`. A caller that writes several asks
    /// before it writes the first.
    void checkNames(const QString& directory) const;

    // --- Solutions ---

    /// Adds the solution's file and the files that it names below its own directory, and `extraFile` unless
    /// that is null.
    void addSolution(project::ProjectElement* solution, const QString& extraFile = QString());
    /// Writes an archive of these files.
    static void packageSolution(project::ProjectElement* solution, const QString& archivePath,
                                const QString& extraFile = QString());

protected:
    /// Appends an entry and answers it.
    PackageArchiveFile* append(PackageArchiveFile::Data data);

private:
    ArchiveStream open(const QString& path, std::int64_t offset);
    ArchiveStream openVersion2(std::uint16_t form, FileHandle file);
    ArchiveStream openVersion1(FileHandle file);
    ArchiveStream openPlain(const char* start, FileHandle file);
    void writeContents(PackageArchiveIOFileInterface& stream);

    std::unique_ptr<PackageArchiveData> data_;
};

}  // namespace package
