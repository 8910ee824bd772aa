#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// What the planner itself puts on the disk: files that tools read, and directories.
namespace build {

class BuildSystem;

/// A build that is only told of. While the engine has one, the planner writes nothing. What the planner and
/// the commands would have made by then counts as there, and as newer than every target.
class Rehearsal {
public:
    void willMake(const QString& path);
    bool makes(const QString& path) const;

private:
    QSet<QString> paths_;  // normalised
};

/// Writes the lines, in UTF-8, to a file that a tool reads, and creates its directory. False when that can't
/// be done in full; nothing is left of the file then.
bool writeGeneratedFile(const BuildSystem& engine, const QString& path, const QStringList& lines);

/// Creates the directory and its parents; the command that runs there tells when it is not there.
void makeDirectory(const BuildSystem& engine, const QString& directory);

/// Reads the whole of a file of text that a tool or a user wrote, with LF for each CR LF. Null when it can't
/// be read, is no regular file, or has more than 8 MiB.
QByteArray readTextFile(const QString& path);

}  // namespace build
