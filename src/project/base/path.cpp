#include "project/base/path.h"

#include <QFileInfo>

#include <optional>

namespace project {

namespace {

bool hasDriveLetter(const QString& text) {
    return text.size() >= 2 && text[1] == u':' && text[0].unicode() < 128 && text[0].isLetter();
}

bool isSeparator(QChar character) {
    return character == u'/' || character == u'\\';
}

QString normalise(const QString& text) {
    QStringList kept;
    qsizetype real = 0;  // components that a later ".." can remove
    bool dropped = false;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !isSeparator(text[end])) continue;
        const QString component = text.mid(start, end - start);
        const bool opens = component.isEmpty() && start <= 1;
        if (component == u".." && real > 0) {
            kept.removeLast();
            --real;
            dropped = true;
        } else if (component == u"." || (component.isEmpty() && !opens)) {
            dropped = true;
        } else {
            if (component != u".." && !opens) ++real;
            kept.append(component);
        }
        start = end + 1;
    }
    if (!dropped && !text.contains(u'\\')) return text;
    return kept.join(u'/');
}

QString absolute(const QString& text) {
    const QString normal = normalise(text);
    return hasDriveLetter(normal) ? normal : QDir::cleanPath(QFileInfo(normal).absoluteFilePath());
}

}  // namespace

struct Path::Record {
    QString text;
    bool textIsNormal = false;
    std::optional<QString> key;
    std::optional<QString> native;
    std::optional<QFileInfo> information;

    const QString& normalText() {
        if (!textIsNormal) {
            text = normalise(text);
            textIsNormal = true;
        }
        return text;
    }

    QFileInfo& file() {
        if (!information) information.emplace(normalText());
        return *information;
    }

    QFileInfo& freshFile() {
        file().refresh();
        return *information;
    }
};

Path::Path(const QString& text) {
    if (!text.isEmpty()) setFile(text);
}

Path::Path(const char* text) : Path(QString::fromUtf8(text)) {}

Path::Record& Path::record() const {
    if (!record_) record_ = std::make_shared<Record>();
    return *record_;
}

void Path::setFile(const QString& text) {
    record_ = std::make_shared<Record>();
    record_->text = text;
}

const QString& Path::normalised() const {
    return record().normalText();
}

const QString& Path::native() const {
    Record& r = record();
    if (!r.native) r.native = QString(r.normalText()).replace(u'/', u'\\');
    return *r.native;
}

const QString& Path::key() const {
    Record& r = record();
    if (!r.key) r.key = r.normalText().toLower();
    return *r.key;
}

bool Path::isEmpty() const {
    return !record_ || record_->text.isEmpty();
}

QString Path::absFilePath() const {
    return absolute(normalised());
}
QString Path::filePath() const {
    return record().file().filePath();
}
QString Path::fileName() const {
    return record().file().fileName();
}
QString Path::baseName(bool complete) const {
    return complete ? record().file().completeBaseName() : record().file().baseName();
}
QString Path::extension(bool complete) const {
    return complete ? record().file().completeSuffix() : record().file().suffix();
}
QString Path::dirPath(bool absolutely) const {
    if (absolutely && hasDriveLetter(normalised())) return record().file().path();
    return absolutely ? record().file().absolutePath() : record().file().path();
}
QDir Path::dir(bool absolutely) const {
    return QDir(dirPath(absolutely));
}
bool Path::isDir() const {
    return record().file().isDir();
}
bool Path::isRelative() const {
    return !isAbsolutePath(normalised());
}

bool Path::exists() const {
    return record().freshFile().exists();
}
bool Path::isWritable() const {
    return record().freshFile().isWritable();
}
QDateTime Path::created() const {
    return record().freshFile().birthTime();
}
QDateTime Path::lastModified() const {
    return record().freshFile().lastModified();
}
void Path::refresh() const {
    record().freshFile();
}

bool Path::expandWildcards(QStringList& list) const {
    const QStringList components = normalised().split(u'/');
    const auto isPattern = [](const QString& component) {
        return component.contains(u'*') || component.contains(u'?');
    };
    // A directory's listing takes "[" for the beginning of a set.
    const auto nameFilter = [](QString component) { return component.replace(u'[', QStringLiteral("[[]")); };
    const auto isLast = [&](qsizetype i) { return i + 1 == components.size(); };

    QStringList found{QString()};  // what the components so far stand for, each with its "/" behind it
    bool listed = false;           // the last component came from a directory's own list
    for (qsizetype i = 0; i < components.size(); ++i) {
        const QString end = isLast(i) ? QString() : QStringLiteral("/");
        listed = isPattern(components[i]);
        QStringList next;
        for (const QString& prefix : found) {
            if (!listed) {
                next.append(prefix + components[i] + end);
                continue;
            }
            const QDir directory(prefix.isEmpty() ? QStringLiteral(".") : prefix);
            const QDir::Filters filters = (isLast(i) ? QDir::AllEntries : QDir::Dirs) | QDir::Hidden |
                                          QDir::System | QDir::NoDotAndDotDot;
            const QStringList entries = directory.entryList({nameFilter(components[i])}, filters, QDir::Name);
            if (next.size() + entries.size() > maxWildcardPaths) return false;
            for (const QString& entry : entries) next.append(prefix + entry + end);
        }
        found = next;
    }
    for (const QString& path : found)
        if (listed || QFileInfo::exists(path)) list.append(path);
    return true;
}

bool relativePath(const QString& baseDirectory, const QString& target, QString& out) {
    out.clear();
    if (target == u".") return true;
    const QStringList from = absolute(baseDirectory).split(u'/', Qt::SkipEmptyParts);
    const QStringList to = absolute(target).split(u'/', Qt::SkipEmptyParts);
    qsizetype shared = 0;
    while (shared < from.size() && shared < to.size() && from[shared].toLower() == to[shared].toLower())
        ++shared;
    if (shared == 0 || (shared == 1 && from.first().endsWith(u':'))) return false;
    out = QStringLiteral("../").repeated(from.size() - shared);
    for (qsizetype i = shared; i < to.size(); ++i) out += to[i] + u'/';
    out.chop(1);
    return true;
}

bool tryRelativeFilePath(const QString& baseDirectory, const QString& file, QString& out) {
    const Path path(file);
    QString directory;
    if (!relativePath(baseDirectory, path.dirPath(true), directory)) return false;
    out = directory.isEmpty() ? path.fileName() : directory + u'/' + path.fileName();
    return true;
}

QString relativeFilePath(const QString& baseDirectory, const QString& file) {
    QString out;
    return tryRelativeFilePath(baseDirectory, file, out) ? out : Path(file).absFilePath();
}

void makeDirectoryFor(const QString& filePath) {
    if (!filePath.isEmpty()) QDir().mkpath(Path(filePath).dirPath());
}

QString resolvedPath(const QString& directory, const QString& name) {
    return directory.isEmpty() || name.isEmpty() || isAbsolutePath(name) ? name : directory + u'/' + name;
}

bool isAbsolutePath(const QString& text) {
    return (!text.isEmpty() && isSeparator(text[0])) || hasDriveLetter(text);
}

}  // namespace project
