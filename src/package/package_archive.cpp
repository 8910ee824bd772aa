#include "package/archive_data.h"
#include "package/archive_format.h"
#include "package/bz_file.h"
#include "package/gz_file.h"
#include "package/target.h"
#include "support/hexception.h"

#include <QFile>

#include <sys/stat.h>

#include <algorithm>
#include <limits>

namespace package {

using support::HException;

namespace {

/// A size that a table claims is reserved only up to here; beyond, memory grows with what is read.
constexpr std::int64_t firstRead = std::int64_t{1} << 20;

/// What `stream` gives at its position, or less than `size` bytes where it ends.
QByteArray readUpTo(PackageArchiveIOFileInterface& stream, std::int64_t size) {
    QByteArray contents;
    std::int64_t done = 0;
    while (done < size) {
        const std::int64_t step = std::min(size - done, std::max(done, firstRead));
        contents.resize(done + step);
        const std::int64_t got = stream.read(contents.data() + done, step);
        done += got;
        if (got < step) break;
    }
    contents.truncate(done);
    return contents;
}

QByteArray readFromDisk(const QString& path, const QString& name) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw HException("cannot read file " + name.toStdString());
    QByteArray contents = file.readAll();
    if (file.error() != QFileDevice::NoError) throw HException("cannot read file " + name.toStdString());
    return contents;
}

/// The status of a regular file that can be read and whose size an entry can hold.
struct stat statusOf(const QString& path) {
    struct stat status {};
    const QByteArray bytes = QFile::encodeName(path);
    // A pipe would make the open wait.
    const bool isRegular = ::stat(bytes.constData(), &status) == 0 && S_ISREG(status.st_mode);
    if (!isRegular || status.st_size > std::numeric_limits<std::uint32_t>::max() ||
        !FileHandle(std::fopen(bytes.constData(), "rb")))
        throw HException("cannot read " + path.toStdString());
    return status;
}

QDateTime timeOf(std::int64_t seconds) {
    const auto kept = std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<std::uint32_t>::max());
    return QDateTime::fromSecsSinceEpoch(kept, Qt::UTC);
}

}  // namespace

PackageArchive::PackageArchive(const QString& path) : data_(std::make_unique<PackageArchiveData>()) {
    if (!path.isEmpty()) PackageArchive::load(path);
}

PackageArchive::~PackageArchive() = default;

std::unique_ptr<PackageArchiveIOFileInterface> PackageArchive::createInputStream(Compression compression,
                                                                                 FileHandle file) {
    switch (compression) {
        case Compression::Zlib:
            return std::make_unique<PackageArchiveCompressedGzInputFile>(std::move(file));
        case Compression::Bzip2:
            return std::make_unique<PackageArchiveCompressedBzInputFile>(std::move(file));
    }
    throw HException("unsupported compression algorithm");
}

std::unique_ptr<PackageArchiveCompressedOutputFile> PackageArchive::createOutputStream(
    Compression compression, FileHandle file, int level) {
    switch (compression) {
        case Compression::Zlib:
            return std::make_unique<PackageArchiveCompressedGzOutputFile>(std::move(file), level);
        case Compression::Bzip2:
            return std::make_unique<PackageArchiveCompressedBzOutputFile>(std::move(file), level);
    }
    throw HException("unsupported compression algorithm");
}

void PackageArchive::beforeWrite(std::FILE* /*file*/) {}

void PackageArchive::beforeRead(std::FILE* /*file*/) {}

void PackageArchive::clear() {
    data_->path.clear();
    data_->firstByName.clear();
    data_->files.clear();
    data_->input = {};
}

int PackageArchive::version() const {
    return data_->version;
}
void PackageArchive::setVersion(int version) {
    data_->version = version;
}
Compression PackageArchive::compression() const {
    return data_->compression;
}
void PackageArchive::setCompression(Compression compression) {
    data_->compression = compression;
}

const std::vector<std::unique_ptr<PackageArchiveFile>>& PackageArchive::files() const {
    return data_->files;
}

PackageArchiveFile* PackageArchive::fileNamed(const QString& name) const {
    return data_->firstByName.value(name);
}

PackageArchiveFile* PackageArchive::append(PackageArchiveFile::Data data) {
    PackageArchiveFile* const file =
        data_->files.emplace_back(std::make_unique<PackageArchiveFile>(std::move(data))).get();
    if (!data_->firstByName.contains(file->name())) data_->firstByName.insert(file->name(), file);
    return file;
}

PackageArchiveFile* PackageArchive::addDiskFile(const QString& path, const QString& archiveName) {
    const struct stat status = statusOf(path);
    PackageArchiveFile* file = fileNamed(archiveName);
    if (file == nullptr) file = append({.name = archiveName});
    PackageArchiveFile::Data& data = file->data_;
    data.source = PackageArchiveFile::Source::Disk;
    data.diskPath = path;
    data.size = static_cast<std::uint32_t>(status.st_size);
    data.mode = status.st_mode & format::keptMode;
    data.modified = timeOf(status.st_mtime);
    return file;
}

PackageArchiveFile* PackageArchive::findPackageDescription() const {
    const auto isDescription = [](const auto& file) { return file->name().endsWith(u"_package.xml"); };
    const auto found = std::find_if(data_->files.begin(), data_->files.end(), isDescription);
    return found == data_->files.end() ? nullptr : found->get();
}

QByteArray PackageArchive::readFile(const PackageArchiveFile* file) {
    if (file == nullptr) return {};
    switch (file->data_.source) {
        case PackageArchiveFile::Source::Archive:
            return readFromStream(*file);
        case PackageArchiveFile::Source::Disk:
            return readFromDisk(file->data_.diskPath, file->name());
        case PackageArchiveFile::Source::Memory:
            return file->data_.data;
        case PackageArchiveFile::Source::Nowhere:
            break;
    }
    return {};
}

QByteArray PackageArchive::readFromStream(const PackageArchiveFile& file) {
    const std::int64_t size = file.size();
    if (size == 0) return {};
    QByteArray contents;
    if (data_->input.stream->seek(data_->input.start + file.data_.offset))
        contents = readUpTo(*data_->input.stream, size);
    const bool isLast = std::int64_t{file.data_.offset} + size == data_->input.end;
    if (contents.size() < size || (isLast && !data_->input.isAtEnd()))
        throw HException("cannot read file " + file.name().toStdString() + " from archive");
    return contents;
}

}  // namespace package
