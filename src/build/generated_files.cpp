#include "build/generated_files.h"

#include "build/build_system.h"
#include "project/base/path.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace build {

void Rehearsal::willMake(const QString& path) {
    if (!path.isEmpty()) paths_.insert(project::Path(path).normalised());
}

bool Rehearsal::makes(const QString& path) const {
    return !paths_.isEmpty() && paths_.contains(project::Path(path).normalised());
}

bool writeGeneratedFile(const BuildSystem& engine, const QString& path, const QStringList& lines) {
    if (engine.rehearsal) {
        engine.rehearsal->willMake(path);
        return true;
    }
    QByteArray text;
    for (const QString& line : lines) text += line.toUtf8() + '\n';
    project::makeDirectoryFor(path);
    const QFileInfo present(path);
    QFile file(path);
    if ((present.exists() && !present.isFile()) || !file.open(QIODevice::WriteOnly)) return false;
    if (file.write(text) == text.size() && file.flush()) return true;
    file.remove();
    return false;
}

void makeDirectory(const BuildSystem& engine, const QString& directory) {
    if (!engine.rehearsal && !directory.isEmpty()) QDir().mkpath(directory);
}

QByteArray readTextFile(const QString& path) {
    constexpr qint64 maxSize = qint64{8} << 20;
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > maxSize || !file.open(QIODevice::ReadOnly)) return {};
    QByteArray text = file.read(maxSize);
    text.replace("\r\n", "\n");
    return text.isNull() ? QByteArray("") : text;
}

}  // namespace build
