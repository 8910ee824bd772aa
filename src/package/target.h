#pragma once

#include "package/contents.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <cstdint>
#include <optional>

namespace package {

/// A file to be written.
struct NewFile {
    std::int64_t modified = 0;            ///< both file times, seconds since 1970
    mode_t creationMode = 0666;           ///< taken down by the mask of the process
    std::optional<std::uint32_t> mode{};  ///< set afterwards, save for the bits that belong to the place
};

/// A place for a file: an open directory and a name in it. What is written there appears complete or not at
/// all: it is written beside its place and moved there.
class Target {
public:
    enum class Fault { None, Create, Write, Mode };

    /// `name`, tidied, below `directory`, however that is reached. Throws support::HException, "cannot
    /// extract file NAME", when the name is not that of a file below it, or leads through a symbolic link or
    /// is one. The directories on the way are made. Where that fails, so does `write`.
    static Target below(const QString& directory, const QString& name);
    /// Any path; its directory is made likewise.
    static Target at(const QString& path);

    Target(Target&& other) noexcept;
    Target& operator=(Target&&) = delete;
    ~Target();

    /// Whether something stands there.
    bool exists() const;
    /// Replaces a file that stands there. `None` is success. What reading the contents throws passes through.
    Fault write(const NewFile& file, Contents& contents) const;

private:
    Target(int directory, QByteArray name);

    int directory_;
    QByteArray name_;
};

/// The name of an entry as a path below a directory, without ".", ".." and doubled separators. Throws as
/// `Target::below`, also for what is too long for a path.
QString pathBelow(const QString& name);

/// Throws as `Target::below`, and changes nothing on the disk.
void checkTarget(const QString& directory, const QString& name);

/// When the file was modified, in seconds since 1970; 0 when it is missing.
std::int64_t modificationTime(const QString& path);

}  // namespace package
