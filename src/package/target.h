#pragma once

#include "package/contents.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace package {

/// A file to be written.
struct NewFile {
    std::int64_t modified = 0;            ///< both file times, seconds since 1970
    mode_t creationMode = 0666;           ///< taken down by the mask of the process
    std::optional<std::uint32_t> mode{};  ///< set afterwards, save for the bits that belong to the place
};

class Descriptor;

/// A place for a file: an open directory and a name in it. What is written there appears complete or not at
/// all: it is written beside its place and moved there.
class Target {
public:
    enum class Fault { None, Create, Write, Mode };

    /// Any path; its directory is made, and where that fails, so does `write`.
    static Target at(const QString& path);

    /// Whether something stood there when the place was taken.
    bool exists() const { return mode_ != 0; }
    /// Replaces a file that stands there. `None` is success. What reading the contents throws passes through.
    Fault write(const NewFile& file, Contents& contents) const;

private:
    friend class TargetDirectory;

    Target(std::shared_ptr<const Descriptor> directory, QByteArray name);

    std::shared_ptr<const Descriptor> directory_;
    QByteArray name_;
    mode_t mode_;  // of what stands there, with its type; 0 for nothing
};

/// A directory, however it is reached, in which files are written by their names in an archive. Names that
/// are not those of files below it, or that lead through a symbolic link or are one, are refused by
/// support::HException, "cannot extract file NAME". Names are best taken in table order: the directory of the
/// last one is at hand.
class TargetDirectory {
public:
    explicit TargetDirectory(const QString& directory);

    /// Refuses what `target` would, and changes nothing on the disk.
    void check(const QString& name);
    /// The place for a file. The directories on the way are made, and where that fails, so does its `write`.
    Target target(const QString& name);

private:
    std::shared_ptr<const Descriptor> openParent(const QByteArray& parent, const QString& name);

    std::filesystem::path directory_;
    std::shared_ptr<const Descriptor> top_;
    QByteArray checkedParent_;
    QByteArray openedParent_;
    std::shared_ptr<const Descriptor> opened_;
};

/// The name of an entry as a path below a directory, without ".", ".." and doubled separators. Throws as
/// `TargetDirectory` does, also for what is too long for a path.
QString pathBelow(const QString& name);

/// When the file was modified, in seconds since 1970; 0 when it is missing.
std::int64_t modificationTime(const QString& path);

}  // namespace package
