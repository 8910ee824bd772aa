// How entries become files on disk.
#include "package/package_archive.h"
#include "package/target.h"
#include "support/hexception.h"

#include <QFile>

#include <string>

namespace package {

using support::HException;

namespace {

constexpr mode_t privateMode = 0600;

void writeTo(const Target& target, const QString& path, const PackageArchiveFile& file, Contents& contents,
             bool overwrite) {
    if (!overwrite && target.exists()) throw HException("cannot overwrite file " + path.toStdString());
    const NewFile newFile{
        .modified = file.modifiedSeconds(), .creationMode = privateMode, .mode = file.mode()};
    switch (target.write(newFile, contents)) {
        case Target::Fault::None:
            return;
        case Target::Fault::Create:
            throw HException("cannot create output file " + path.toStdString());
        case Target::Fault::Write:
            throw HException("cannot write to output file " + path.toStdString());
        case Target::Fault::Mode:
            throw HException("cannot set mode of output file " + path.toStdString());
    }
}

}  // namespace

void PackageArchive::extract(const PackageArchiveFile* file, const QString& directory, bool overwrite) {
    if (file != nullptr) extractAll({file}, directory, overwrite);
}

void PackageArchive::extractAll(const std::vector<const PackageArchiveFile*>& files, const QString& directory,
                                bool overwrite) {
    TargetDirectory place(directory);
    for (const PackageArchiveFile* file : files) place.check(file->name());
    for (const PackageArchiveFile* file : files) {
        Contents pieces(contents(file));
        const QString path = directory + u'/' + file->name();
        writeTo(place.target(file->name()), path, *file, pieces, overwrite);
    }
}

void PackageArchive::extractTo(const PackageArchiveFile* file, const QString& path, bool overwrite) {
    if (file == nullptr) return;
    Contents pieces(contents(file));
    writeTo(Target::at(path), path, *file, pieces, overwrite);
}

void PackageArchive::checkNames(const QString& directory) const {
    TargetDirectory place(directory);
    for (const auto& file : files()) place.check(file->name());
}

}  // namespace package
