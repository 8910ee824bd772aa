#pragma once

#include <QDateTime>
#include <QDir>
#include <QString>
#include <QStringList>

#include <memory>

namespace project {

/// A file name as a value. Its text is normalised only when needed, and comparing paths never touches the
/// disk: paths are equal when their normal texts are, whatever the case and the separators. A path that
/// begins with a drive letter is absolute on every platform. Copies share what has been worked out; a Path
/// belongs to one thread.
class Path {
public:
    Path() = default;
    Path(const QString& text);  // NOLINT(google-explicit-constructor): a text is a path
    Path(const char* text);     // NOLINT(google-explicit-constructor): UTF-8

    void setFile(const QString& text);

    /// The text with "/" between components, and without ".", "..", and empty components where they can go.
    const QString& normalised() const;
    /// The normal text with "\" for "/".
    const QString& native() const;
    /// The normal text in lower case, by which paths are compared.
    const QString& key() const;
    /// Of the text as given; "." has an empty normal text and is not empty.
    bool isEmpty() const;

    friend bool operator==(const Path& a, const Path& b) {
        return a.record_ == b.record_ || a.key() == b.key();
    }
    friend bool operator!=(const Path& a, const Path& b) { return !(a == b); }
    friend bool operator<(const Path& a, const Path& b) { return a.key() < b.key(); }

    QString absFilePath() const;
    QString filePath() const;
    QString fileName() const;
    /// The file name up to its first ".", or with `complete` up to its last.
    QString baseName(bool complete = false) const;
    /// What stands behind the last "." of the file name, or with `complete` behind the first.
    QString extension(bool complete = true) const;
    /// The directory as written ("." for a bare name), or absolute.
    QString dirPath(bool absolute = false) const;
    QDir dir(bool absolute = false) const;
    bool isDir() const;
    bool isRelative() const;

    // These ask the disk afresh.
    bool exists() const;
    bool isWritable() const;
    QDateTime created() const;
    QDateTime lastModified() const;
    void refresh() const;

    /// Appends to `list` the existing paths that the text stands for, "*" and "?" being wildcards in any
    /// component. False when that are, or on the way there were, more than `maxWildcardPaths`; then it
    /// appends nothing.
    bool expandWildcards(QStringList& list) const;
    static constexpr qsizetype maxWildcardPaths = 10000;

private:
    struct Record;
    Record& record() const;

    mutable std::shared_ptr<Record> record_;  // null for the empty path that nothing was asked of yet
};

/// Makes the directory `target` relative to `baseDirectory`, without a "/" at the end; equal directories give
/// the empty text. Answers false when nothing but a drive is shared.
bool relativePath(const QString& baseDirectory, const QString& target, QString& out);

/// `file` relative to `baseDirectory`, or absolute where no relative path exists.
QString relativeFilePath(const QString& baseDirectory, const QString& file);

/// `file` relative to `baseDirectory` in `out`; false where no relative path exists.
bool tryRelativeFilePath(const QString& baseDirectory, const QString& file, QString& out);

/// Creates the directory that holds `filePath`, with all its parents. An empty text does nothing.
void makeDirectoryFor(const QString& filePath);

/// `name` from `directory`, unless it is absolute or empty.
QString resolvedPath(const QString& directory, const QString& name);

/// True for a text that begins with "/", "\" or a drive letter with its colon.
bool isAbsolutePath(const QString& text);

}  // namespace project
