#pragma once

#include <QFile>
#include <QString>

namespace project {

/// A file that takes the place of another at once, when all of it is written: whatever fails before that
/// leaves the other as it was. It is written beside its place. Where that cannot be, in a directory that is
/// not writable or for what is no regular file, it is written in place.
class ReplacingFile {
public:
    explicit ReplacingFile(const QString& path);
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    /// What was not committed is removed.
    ~ReplacingFile();

    /// False when the file cannot be written at all.
    bool open();
    /// Unbuffered: its user writes in large blocks.
    QFile& device() { return file_; }
    /// Puts the file in its place; false when any of it could not be written.
    bool commit();

private:
    QString target_;
    QFile file_;
    bool isBeside_ = false;
};

}  // namespace project
