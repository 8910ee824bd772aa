#include "build/file_time.h"

#include <QFile>

#include <sys/stat.h>

#include <algorithm>
#include <limits>

namespace build {

std::optional<std::int64_t> modificationTime(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
    constexpr std::int64_t farthest = std::numeric_limits<std::int64_t>::max() / 2000;  // a disk may hold any
    const std::int64_t seconds = std::clamp(std::int64_t{status.st_mtim.tv_sec}, -farthest, farthest);
    return seconds * 1000 + status.st_mtim.tv_nsec / 1'000'000;
}

QString timeText(std::int64_t time) {
    return QDateTime::fromMSecsSinceEpoch(time).toString(u"dd.MM.yyyy hh:mm:ss");
}

}  // namespace build
