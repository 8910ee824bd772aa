#include "build/response_file.h"

#include "project/base/path.h"

#include <QFile>

namespace build {

bool writeResponseFile(const QString& path, const QStringList& lines) {
    QByteArray text;
    for (const QString& line : lines) text += line.toUtf8() + '\n';
    project::makeDirectoryFor(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (file.write(text) == text.size() && file.flush()) return true;
    file.remove();
    return false;
}

}  // namespace build
