#include "package/io_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace package {

FileHandle openRegular(const QString& path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    struct stat status {};
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    FileHandle file(isRegular ? ::fdopen(descriptor, "rb") : nullptr);
    if (!file) ::close(descriptor);
    return file;
}

std::int64_t PackageArchiveIOFile::readFile(void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    return static_cast<std::int64_t>(std::fread(buffer, 1, static_cast<std::size_t>(size), file()));
}

std::int64_t PackageArchiveIOFile::writeFile(const void* buffer, std::int64_t size) {
    if (size < 1) return 0;
    return static_cast<std::int64_t>(std::fwrite(buffer, 1, static_cast<std::size_t>(size), file()));
}

bool PackageArchiveIOFile::seek(std::int64_t position) {
    return ::fseeko(file(), position, SEEK_SET) == 0;
}

}  // namespace package
