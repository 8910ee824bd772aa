#include "build/clean_builder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace build {

void CleanBuilder::run(const QString& workingDirectory, const QStringList& arguments, const QString&) {
    if (arguments.size() < 2 || arguments[0] != u"rm") return;
    const QFileInfo info(QDir(workingDirectory).filePath(arguments[1]));
    if (!info.exists() && !info.isSymLink()) return;  // two nodes may share a file
    QFile file(info.filePath());
    // Those of a link are its target's.
    if (!info.isSymLink()) file.setPermissions(file.permissions() | QFile::WriteOwner);
    if (file.remove()) {
        hasDeleted_ = true;
    } else {
        error(QStringLiteral("Cannot delete file: ") + info.filePath());
    }
}

}  // namespace build
