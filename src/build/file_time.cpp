#include "build/file_time.h"

#include <QFile>

#include <sys/stat.h>

namespace build {

std::optional<std::int64_t> modificationTime(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
    return std::int64_t{status.st_mtim.tv_sec} * 1000 + status.st_mtim.tv_nsec / 1'000'000;
}

QString timeText(std::int64_t time) {
    return QDateTime::fromMSecsSinceEpoch(time).toString(u"dd.MM.yyyy hh:mm:ss");
}

}  // namespace build
