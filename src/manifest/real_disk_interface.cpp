#include "manifest/real_disk_interface.h"

#include "manifest/limits.h"
#include "manifest/message.h"
#include "support/huge_pages.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>

namespace manifest {

namespace {

constexpr std::size_t blockSize = 65536;
constexpr std::size_t longestPath = 260;

class Descriptor {
public:
    explicit Descriptor(const std::string& path) : fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    int get() const { return fd_; }

private:
    int fd_;
};

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

std::string systemText(int code) {
    return std::strerror(code);
}

bool meansMissing(int code) {
    return code == ENOENT || code == ENOTDIR;
}

ssize_t readBlock(int fd, char* block, std::size_t size) {
    ssize_t got = 0;
    do got = ::read(fd, block, size);
    while (got < 0 && errno == EINTR);
    return got;
}

/// Appends blocks until a read gives nothing; answers the system's error code, 0 for none.
int readToEnd(int fd, std::uint64_t limit, std::string* contents) {
    std::array<char, blockSize> block;
    for (;;) {
        const ssize_t got = readBlock(fd, block.data(), block.size());
        if (got < 0) return errno;
        if (got == 0) return 0;
        contents->append(block.data(), static_cast<std::size_t>(got));
        if (contents->size() > limit) return EFBIG;
    }
}

FileReader::Status statusOf(int code, std::string* contents, std::string* error) {
    if (code == 0) return FileReader::Status::Okay;
    *error = systemText(code);
    contents->clear();
    return FileReader::Status::OtherError;
}

/// Seconds as a count of 100-nanosecond ticks from 1601 would give them.
TimeStamp timeStampOf(const struct stat& status) {
    constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
    constexpr std::int64_t origin = 12'622'770'400;
    using Limits = std::numeric_limits<TimeStamp>;
    const std::int64_t seconds = std::int64_t{status.st_mtime} + secondsFrom1601To1970 - origin;
    return static_cast<TimeStamp>(std::clamp<std::int64_t>(seconds, Limits::min(), Limits::max()));
}

std::string lowerCase(std::string text) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

/// Notes each entry's time; answers the system's error code, 0 for none. A directory that is missing is
/// empty.
int listDirectory(const std::string& directory, std::map<std::string, TimeStamp>* listing) {
    const std::unique_ptr<DIR, CloseDirectory> stream(::opendir(directory.c_str()));
    if (!stream) return meansMissing(errno) ? 0 : errno;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(stream.get());
        if (entry == nullptr) return errno;
        struct stat status {};
        if (::fstatat(::dirfd(stream.get()), entry->d_name, &status, 0) == 0)
            (*listing)[lowerCase(entry->d_name)] = timeStampOf(status);
    }
}

}  // namespace

FileReader::Status RealDiskInterface::readFile(const std::string& path, std::string* contents,
                                               std::string* error) {
    error->clear();
    contents->clear();
    const Descriptor file(path);
    struct stat status {};
    int code = file.get() < 0 || ::fstat(file.get(), &status) != 0 ? errno : 0;
    if (code == 0 && S_ISDIR(status.st_mode)) code = EISDIR;
    if (code != 0) {
        *error = systemText(code);
        return Status::NotFound;
    }
    if (!S_ISREG(status.st_mode)) return readDescriptor(file.get(), contents, error);
    const auto size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    if (size <= maxFileBytes) {
        contents->reserve(size);
        support::adviseHugePages(contents->data(), contents->capacity());
    }
    return statusOf(readToEnd(file.get(), maxFileBytes, contents), contents, error);
}

FileReader::Status RealDiskInterface::readDescriptor(int descriptor, std::string* contents,
                                                     std::string* error) {
    error->clear();
    contents->clear();
    return statusOf(readToEnd(descriptor, maxStreamBytes, contents), contents, error);
}

TimeStamp RealDiskInterface::stat(const std::string& path, std::string* error) {
    if (path.size() > longestPath && path.front() != '\\') {
        *error = "Stat(" + path + "): Filename longer than 260 characters";
        return -1;
    }
    if (useCache_) return cachedStat(path, error);
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) return timeStampOf(status);
    if (meansMissing(errno)) return 0;
    *error = "GetFileAttributesEx(" + path + "): " + systemText(errno);
    return -1;
}

TimeStamp RealDiskInterface::cachedStat(const std::string& path, std::string* error) {
    const std::size_t split = path.find_last_of("/\\") + 1;
    const std::string directory = split == 0 ? "." : path.substr(0, split);
    const auto [entry, isNew] = cache_.try_emplace(lowerCase(directory));
    if (const int code = isNew ? listDirectory(directory, &entry->second) : 0) {
        cache_.erase(entry);
        *error = "FindFirstFileExA(" + directory + "): " + systemText(code);
        return -1;
    }
    const auto found = entry->second.find(lowerCase(path.substr(split)));
    return found == entry->second.end() ? 0 : found->second;
}

bool RealDiskInterface::makeDir(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) == 0) return true;
    const int code = errno;
    struct stat status {};
    if (code == EEXIST && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return true;
    manifest::error("mkdir(%s): %s", path.c_str(), std::strerror(code));
    return false;
}

bool RealDiskInterface::writeFile(const std::string& path, const std::string& contents) {
    const auto fail = [&path](const char* problem) {
        manifest::error("WriteFile(%s): %s %s", path.c_str(), problem, std::strerror(errno));
        return false;
    };
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr) return fail("Unable to create file.");
    if (std::fwrite(contents.data(), 1, contents.size(), file) < contents.size()) {
        fail("Unable to write to the file.");
        std::fclose(file);
        return false;
    }
    return std::fclose(file) == 0 || fail("Unable to close the file.");
}

int RealDiskInterface::removeFile(const std::string& path) {
    if (::unlink(path.c_str()) == 0) return 0;
    if (meansMissing(errno)) return 1;
    manifest::error("remove(%s): %s", path.c_str(), std::strerror(errno));
    return -1;
}

}  // namespace manifest
