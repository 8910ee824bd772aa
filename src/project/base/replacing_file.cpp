#include "project/base/replacing_file.h"

#include <QFileInfo>

#include <cstdio>

namespace project {

namespace {

constexpr QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;

/// Links are followed: they are to stay.
QString targetOf(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

}  // namespace

ReplacingFile::ReplacingFile(const QString& path) : target_(targetOf(path)) {}

ReplacingFile::~ReplacingFile() {
    if (!isBeside_) return;
    file_.close();
    file_.remove();
}

bool ReplacingFile::open() {
    const QFileInfo present(target_);
    if (present.exists() && !present.isWritable()) return false;
    if (!present.exists() || present.isFile()) {
        file_.setFileName(target_ + QStringLiteral(".partial"));
        file_.remove();
        isBeside_ = file_.open(mode | QIODevice::NewOnly);
        if (isBeside_ && present.exists()) file_.setPermissions(present.permissions());
        if (isBeside_) return true;
    }
    file_.setFileName(target_);
    return file_.open(mode);
}

bool ReplacingFile::commit() {
    file_.close();
    if (file_.error() != QFileDevice::NoError) return false;
    if (!isBeside_) return true;
    const bool moved = std::rename(QFile::encodeName(file_.fileName()).constData(),
                                   QFile::encodeName(target_).constData()) == 0;
    isBeside_ = !moved;
    return moved;
}

}  // namespace project
