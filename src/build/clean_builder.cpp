#include "build/clean_builder.h"

#include <QDir>
#include <QFile>

namespace build {

void CleanBuilder::run(const QString& workingDirectory, const QStringList& arguments, const QString&) {
    if (arguments.size() < 2 || arguments[0] != u"rm") return;
    QFile file(QDir(workingDirectory).filePath(arguments[1]));
    file.setPermissions(file.permissions() | QFile::WriteOwner);
    file.remove();
}

}  // namespace build
