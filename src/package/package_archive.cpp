#include "package/archive_data.h"
#include "package/archive_format.h"
#include "package/bz_file.h"
#include "package/gz_file.h"
#include "support/hexception.h"

#include <QFile>

#include <sys/stat.h>

#include <algorithm>
#include <limits>

namespace package {

using support::HException;

namespace {

/// The status of a regular file that can be read and whose size an entry can hold.
struct stat statusOf(const QString& path) {
    struct stat status {};
    const FileHandle file = openRegular(path);
    if (!file || ::fstat(::fileno(file.get()), &status) != 0 ||
        status.st_size > std::numeric_limits<std::uint32_t>::max())
        throw HException("cannot read " + path.toStdString());
    return status;
}

bool isSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
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
    data.modified = entryTime(status.st_mtime);
    return file;
}

PackageArchiveFile* PackageArchive::findPackageDescription() const {
    const auto isDescription = [](const auto& file) { return file->isDescription(); };
    const auto found = std::find_if(data_->files.begin(), data_->files.end(), isDescription);
    return found == data_->files.end() ? nullptr : found->get();
}

bool PackageArchive::readsFrom(const QString& path) const {
    struct stat output {};
    if (::stat(QFile::encodeName(path).constData(), &output) != 0) return false;
    const auto isOutput = [&](const QString& other) {
        struct stat input {};
        return ::stat(QFile::encodeName(other).constData(), &input) == 0 && isSame(input, output);
    };
    using Source = PackageArchiveFile::Source;
    const auto readsIt = [&](const auto& file) {
        return file->data_.source == Source::Disk && isOutput(file->data_.diskPath);
    };
    return (!data_->path.isEmpty() && isOutput(data_->path)) ||
           std::any_of(files().begin(), files().end(), readsIt);
}

}  // namespace package
