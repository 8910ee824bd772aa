#include "package/target.h"

#include "package/archive_format.h"
#include "project/base/path.h"
#include "support/hexception.h"

#include <QFile>
#include <QStringList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace package {

using support::HException;

namespace {

constexpr int none = -1;
constexpr mode_t directoryMode = 0777;

[[noreturn]] void refuse(const QString& name) {
    throw HException("cannot extract file " + name.toStdString());
}

class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(none); }

    int get() const { return value_; }
    int release() { return std::exchange(value_, none); }
    void reset(int value) {
        if (value_ != none) ::close(value_);
        value_ = value;
    }

private:
    int value_;
};

bool isLinkAt(int directory, const QByteArray& name) {
    struct stat status {};
    return ::fstatat(directory, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISLNK(status.st_mode);
}

int openDirectory(const std::filesystem::path& path) {
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

/// The path is left as it stands: behind a symbolic link ".." is not what it looks like.
int openWithParents(const std::filesystem::path& path) {
    const int found = openDirectory(path);
    if (found != none || errno != ENOENT) return found;
    std::error_code ignored;
    std::filesystem::create_directories(path, ignored);
    return openDirectory(path);
}

std::filesystem::path pathOf(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

int openMade(int directory, const QByteArray& name) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const int found = ::openat(directory, name.constData(), flags);
    if (found != none || errno != ENOENT || ::mkdirat(directory, name.constData(), directoryMode) != 0)
        return found;
    return ::openat(directory, name.constData(), flags);
}

/// Until it has its name: a file that is removed unless it is moved to its place.
class FileBeside {
public:
    FileBeside(int directory, mode_t mode) : directory_(directory), descriptor_(none) {
        static std::atomic<unsigned> made = 0;
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        do {
            name_ = ".atelis-" + std::to_string(::getpid()) + '-' + std::to_string(made++);
            descriptor_.reset(::openat(directory, name_.c_str(), flags, mode));
        } while (descriptor_.get() == none && errno == EEXIST);
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;
    ~FileBeside() {
        if (descriptor_.get() != none) ::unlinkat(directory_, name_.c_str(), 0);
    }

    bool isOpen() const { return descriptor_.get() != none; }

    bool write(QByteArrayView bytes) const {
        while (!bytes.empty()) {
            const ssize_t done =
                ::write(descriptor_.get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
            if (done < 0 && errno != EINTR) return false;
            if (done > 0) bytes = bytes.sliced(done);
        }
        return true;
    }

    void setTime(std::int64_t seconds) const {
        const timespec time{.tv_sec = seconds, .tv_nsec = 0};
        const timespec times[] = {time, time};
        ::futimens(descriptor_.get(), times);
    }

    bool setMode(std::uint32_t mode) const {
        struct stat status {};
        if (::fstat(descriptor_.get(), &status) != 0) return false;
        const std::uint32_t bits =
            (status.st_mode & format::createdMode) | (mode & ~format::createdMode & ALLPERMS);
        return ::fchmod(descriptor_.get(), bits) == 0;
    }

    bool moveTo(const QByteArray& name) {
        if (::renameat(directory_, name_.c_str(), directory_, name.constData()) != 0) return false;
        descriptor_.reset(none);
        return true;
    }

private:
    int directory_;
    Descriptor descriptor_;
    std::string name_;
};

}  // namespace

QString pathBelow(const QString& name) {
    // Empty components go, so that what was absolute must be asked of the name as it stands.
    QString path = project::Path(name).normalised();
    const bool climbs = path == u".." || path.startsWith(u"../");
    if (path.isEmpty() || climbs || project::isAbsolutePath(name) || project::isAbsolutePath(path) ||
        name.contains(QChar(u'\0')) || QFile::encodeName(path).size() >= PATH_MAX)
        refuse(name);
    return path;
}

void checkTarget(const QString& directory, const QString& name) {
    const QByteArray path = QFile::encodeName(pathBelow(name));
    const Descriptor top(openDirectory(pathOf(directory)));
    if (top.get() == none) return;
    for (qsizetype end = 0; end < path.size();) {
        const qsizetype slash = path.indexOf('/', end + 1);
        end = slash < 0 ? path.size() : slash;
        if (isLinkAt(top.get(), path.left(end))) refuse(name);
    }
}

std::int64_t modificationTime(const QString& path) {
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mtime : 0;
}

Target Target::below(const QString& directory, const QString& name) {
    QList<QByteArray> components = QFile::encodeName(pathBelow(name)).split('/');
    const QByteArray leaf = components.takeLast();
    Descriptor place(openWithParents(pathOf(directory)));
    for (const QByteArray& component : components) {
        const int next = openMade(place.get(), component);
        if (next == none && isLinkAt(place.get(), component)) refuse(name);
        place.reset(next);
        if (next == none) break;
    }
    if (place.get() != none && isLinkAt(place.get(), leaf)) refuse(name);
    return {place.release(), leaf};
}

Target Target::at(const QString& path) {
    const std::filesystem::path file = pathOf(path);
    const std::filesystem::path directory = file.has_parent_path() ? file.parent_path() : ".";
    return {openWithParents(directory), QByteArray::fromStdString(file.filename().string())};
}

Target::Target(int directory, QByteArray name) : directory_(directory), name_(std::move(name)) {}

Target::Target(Target&& other) noexcept
    : directory_(std::exchange(other.directory_, none)), name_(std::move(other.name_)) {}

Target::~Target() {
    if (directory_ != none) ::close(directory_);
}

bool Target::exists() const {
    struct stat status {};
    return directory_ != none && ::fstatat(directory_, name_.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

Target::Fault Target::write(const NewFile& file, Contents& contents) const {
    if (directory_ == none || name_.isEmpty()) return Fault::Create;
    FileBeside beside(directory_, file.creationMode);
    if (!beside.isOpen()) return Fault::Create;
    for (; !contents.isAtEnd(); contents.advance())
        if (!beside.write(contents.piece())) return Fault::Write;
    beside.setTime(file.modified);
    if (file.mode && !beside.setMode(*file.mode)) return Fault::Mode;
    return beside.moveTo(name_) ? Fault::None : Fault::Create;
}

}  // namespace package
