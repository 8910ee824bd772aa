#include "package/target.h"

#include "package/archive_format.h"
#include "project/base/path.h"
#include "support/hexception.h"

#include <QFile>
#include <QStringList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <string>
#include <system_error>
#include <utility>

namespace package {

using support::HException;

constexpr int none = -1;

/// A file that is closed with its owner, or none.
class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (value_ != none) ::close(value_);
    }

    int get() const { return value_; }
    bool isOpen() const { return value_ != none; }

private:
    int value_;
};

namespace {

constexpr mode_t directoryMode = 0777;

[[noreturn]] void refuse(const QString& name) {
    throw HException("cannot extract file " + name.toStdString());
}

/// The type and mode of what stands there, 0 for nothing. Links are not followed.
mode_t modeAt(int directory, const QByteArray& name) {
    struct stat status {};
    return ::fstatat(directory, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? status.st_mode : 0;
}

bool isLinkAt(int directory, const QByteArray& name) {
    return S_ISLNK(modeAt(directory, name));
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

/// Empty for a bare name.
QByteArray parentOf(const QByteArray& path) {
    return path.left(std::max<qsizetype>(path.lastIndexOf('/'), 0));
}

QByteArray leafOf(const QByteArray& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

/// Until it has its name: a file that is removed unless it is moved to its place.
class FileBeside {
public:
    FileBeside(int directory, mode_t mode) : directory_(directory), descriptor_(make(mode)) {}
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;
    ~FileBeside() {
        if (isOpen() && !isMoved_) ::unlinkat(directory_, name_.c_str(), 0);
    }

    bool isOpen() const { return descriptor_.isOpen(); }

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
        isMoved_ = ::renameat(directory_, name_.c_str(), directory_, name.constData()) == 0;
        return isMoved_;
    }

private:
    int make(mode_t mode) {
        static std::atomic<unsigned> made = 0;
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        int descriptor = none;
        do {
            name_ = ".atelis-" + std::to_string(::getpid()) + '-' + std::to_string(made++);
            descriptor = ::openat(directory_, name_.c_str(), flags, mode);
        } while (descriptor == none && errno == EEXIST);
        return descriptor;
    }

    int directory_;
    std::string name_;
    bool isMoved_ = false;
    Descriptor descriptor_;
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

std::int64_t modificationTime(const QString& path) {
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mtime : 0;
}

Target Target::at(const QString& path) {
    const std::filesystem::path file = pathOf(path);
    const std::filesystem::path directory = file.has_parent_path() ? file.parent_path() : ".";
    return {std::make_shared<Descriptor>(openWithParents(directory)),
            QByteArray::fromStdString(file.filename().string())};
}

Target::Target(std::shared_ptr<const Descriptor> directory, QByteArray name)
    : directory_(std::move(directory)),
      name_(std::move(name)),
      mode_(directory_->isOpen() ? modeAt(directory_->get(), name_) : 0) {}

Target::Fault Target::write(const NewFile& file, Contents& contents) const {
    if (!directory_->isOpen() || name_.isEmpty()) return Fault::Create;
    FileBeside beside(directory_->get(), file.creationMode);
    if (!beside.isOpen()) return Fault::Create;
    for (; !contents.isAtEnd(); contents.advance())
        if (!beside.write(contents.piece())) return Fault::Write;
    beside.setTime(file.modified);
    if (file.mode && !beside.setMode(*file.mode)) return Fault::Mode;
    return beside.moveTo(name_) ? Fault::None : Fault::Create;
}

TargetDirectory::TargetDirectory(const QString& directory)
    : directory_(pathOf(directory)), top_(std::make_shared<Descriptor>(openDirectory(directory_))) {}

void TargetDirectory::check(const QString& name) {
    const QByteArray path = QFile::encodeName(pathBelow(name));
    if (!top_->isOpen()) return;
    const QByteArray parent = parentOf(path);
    for (qsizetype end = parent == checkedParent_ ? parent.size() : 0; end < path.size();) {
        const qsizetype slash = path.indexOf('/', end + 1);
        end = slash < 0 ? path.size() : slash;
        if (isLinkAt(top_->get(), path.left(end))) refuse(name);
    }
    checkedParent_ = parent;
}

Target TargetDirectory::target(const QString& name) {
    const QByteArray path = QFile::encodeName(pathBelow(name));
    if (!top_->isOpen()) top_ = std::make_shared<Descriptor>(openWithParents(directory_));
    Target target(openParent(parentOf(path), name), leafOf(path));
    if (S_ISLNK(target.mode_)) refuse(name);
    return target;
}

std::shared_ptr<const Descriptor> TargetDirectory::openParent(const QByteArray& parent, const QString& name) {
    if (parent.isEmpty()) return top_;
    if (parent == openedParent_) return opened_;
    std::shared_ptr<const Descriptor> place = top_;
    for (const QByteArray& component : parent.split('/')) {
        const int next = openMade(place->get(), component);
        if (next == none && isLinkAt(place->get(), component)) refuse(name);
        place = std::make_shared<Descriptor>(next);
        if (next == none) return place;
    }
    openedParent_ = parent;
    opened_ = place;
    return place;
}

}  // namespace package
