#include "project/dynamic_folder.h"

#include "project/project_system.h"
#include "project/tree_walk.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegExp>
#include <QStringList>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace project {

namespace dynamicFolderKeys {
const QString path = QStringLiteral("path");
const QString filter = QStringLiteral("filter");
const QString recurse = QStringLiteral("recurse");
const QString exclude = QStringLiteral("exclude");
}  // namespace dynamicFolderKeys

namespace {

/// A list of wildcards, of which a whole name is to match one.
class Wildcards {
public:
    explicit Wildcards(const QString& list) {
        for (const QString& entry : list.split(u';', Qt::SkipEmptyParts)) {
            if (isSuffix(entry)) {
                suffixes_.append(entry.mid(1));
            } else {
                patterns_.emplace_back(entry, Qt::CaseSensitive, QRegExp::Wildcard);
            }
        }
    }
    bool isEmpty() const { return patterns_.empty() && suffixes_.isEmpty(); }
    bool matches(const QString& name) const {
        return std::any_of(suffixes_.begin(), suffixes_.end(),
                           [&](const QString& suffix) { return name.endsWith(suffix); }) ||
               std::any_of(patterns_.begin(), patterns_.end(),
                           [&](const QRegExp& pattern) { return pattern.exactMatch(name); });
    }

private:
    /// "*.c" and the like: most patterns are, and a regular expression would take most of a scan's time.
    static bool isSuffix(const QString& pattern) {
        return pattern.startsWith(u'*') &&
               std::none_of(pattern.begin() + 1, pattern.end(),
                            [](QChar character) { return QStringView(u"*?[]\\").contains(character); });
    }

    QStringList suffixes_;
    std::vector<QRegExp> patterns_;
};

/// A file or subdirectory as its directory lists it.
struct Entry {
    QString name;
    QString sortKey;
    bool isDirectory;
    bool isLink;
};

/// The type of a directory entry, that of its target for a link; where the listing does not tell, the disk is
/// asked.
mode_t typeOf(DIR* directory, const dirent& entry) {
    if (entry.d_type == DT_REG || entry.d_type == DT_DIR) return DTTOIF(entry.d_type);
    struct stat status {};
    return ::fstatat(::dirfd(directory), entry.d_name, &status, 0) == 0 ? status.st_mode & S_IFMT : 0;
}

bool isLink(DIR* directory, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
    struct stat status {};
    return ::fstatat(::dirfd(directory), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISLNK(status.st_mode);
}

/// The files, and with `withDirectories` the subdirectories, in the order of their names without regard to
/// case. Pipes, devices and links to nowhere are neither.
std::vector<Entry> listDirectory(const QString& path, bool withDirectories) {
    const auto close = [](DIR* directory) { ::closedir(directory); };
    const std::unique_ptr<DIR, decltype(close)> directory(::opendir(QFile::encodeName(path).constData()),
                                                          close);
    std::vector<Entry> entries;
    while (const dirent* const entry = directory ? ::readdir(directory.get()) : nullptr) {
        const std::string_view bytes = entry->d_name;
        if (bytes == "." || bytes == "..") continue;
        const mode_t type = typeOf(directory.get(), *entry);
        if (type != S_IFREG && !(type == S_IFDIR && withDirectories)) continue;
        const QString name = QFile::decodeName(entry->d_name);
        const bool isDirectory = type == S_IFDIR;
        entries.push_back(
            {name, name.toLower(), isDirectory, isDirectory && isLink(directory.get(), *entry)});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.sortKey, a.name) < std::tie(b.sortKey, b.name);
    });
    return entries;
}

/// A directory on the way from the one that an entry names, known by its canonical path.
struct OpenDirectory {
    std::shared_ptr<const OpenDirectory> parent;
    QString canonicalPath;

    bool isOpen(const QString& path) const {
        const OpenDirectory* each = this;
        while (each && each->canonicalPath != path) each = each->parent.get();
        return each != nullptr;
    }
};

/// A directory that is still to be listed into its folder.
struct PendingDirectory {
    ProjectElement* folder;
    QString path;
    QString writtenPath;  ///< as the description spells it
    std::shared_ptr<const OpenDirectory> canonical;
};

/// A name below a directory; nothing is put between where the directory is the root of the file system.
QString below(const QString& directory, const QString& name) {
    return directory.endsWith(u'/') ? directory + name : directory + u'/' + name;
}

/// Adds a node for each file and subdirectory that the description of a folder yields, in the order of the
/// disk listing. No directory is entered below itself.
class Scanner {
public:
    Scanner(ProjectElement& folder, LoadWork& work)
        : folder_(folder),
          work_(work),
          filters_(folder.attributes.value(dynamicFolderKeys::filter)),
          excludes_(folder.attributes.value(dynamicFolderKeys::exclude)),
          recurse_(folder.attributes.value(dynamicFolderKeys::recurse) == u"Yes") {}

    /// False when there is more than may be looked at.
    bool scanAll() {
        const QString path = folder_.attributes.value(dynamicFolderKeys::path);
        const QStringList entries = path.split(u';', Qt::SkipEmptyParts);
        return std::all_of(entries.begin(), entries.end(),
                           [this](const QString& entry) { return scanEntry(entry); });
    }

private:
    bool scanEntry(const QString& entry) {
        if (!work_.addScannedEntry()) return false;
        QString path = projectSystem->expandGlobalMacros(entry);
        if (!isAbsolutePath(path))
            path.prepend(projectSystem->projectDirectoryOf(folder_.enclosingProject()) + u'/');
        const QFileInfo file(path);
        if (!file.isDir()) {
            if (file.exists()) add(folder_, path);
            return true;
        }
        pending_.push_back({&folder_, path, entry, open(nullptr, file.canonicalFilePath())});
        while (!pending_.empty()) {
            const PendingDirectory directory = std::move(pending_.back());
            pending_.pop_back();
            if (!scan(directory)) return false;
        }
        return true;
    }

    bool scan(const PendingDirectory& directory) {
        const std::size_t first = pending_.size();
        QHash<QString, ProjectElement*> folders;
        for (ProjectElement* folder : std::as_const(directory.folder->folders))
            if (!folders.contains(folder->elementName())) folders.insert(folder->elementName(), folder);
        for (const Entry& entry : listDirectory(directory.path, recurse_)) {
            if (!work_.addScannedEntry()) return false;
            const bool isFiltered =
                !entry.isDirectory && !filters_.isEmpty() && !filters_.matches(entry.name);
            if (isFiltered || excludes_.matches(entry.name)) continue;
            if (entry.isDirectory) {
                enter(directory, entry, folders[entry.name]);
            } else {
                add(*directory.folder, directory.writtenPath + u'/' + entry.name);
            }
        }
        // The stack gives the last one first.
        std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
        return true;
    }

    /// Finds or adds the folder of a subdirectory and leaves the subdirectory for later.
    void enter(const PendingDirectory& directory, const Entry& entry, ProjectElement*& folder) {
        const QString path = below(directory.path, entry.name);
        const QString canonical = entry.isLink ? QFileInfo(path).canonicalFilePath()
                                               : below(directory.canonical->canonicalPath, entry.name);
        if (!folder) folder = projectSystem->addFolder(directory.folder, entry.name, QString());
        const QString writtenPath = directory.writtenPath + u'/' + entry.name;
        folder->canModify = false;
        projectSystem->setElementAttribute(folder, dynamicFolderKeys::path, writtenPath);
        if (directory.canonical->isOpen(canonical)) return;
        pending_.push_back({folder, path, writtenPath, open(directory.canonical, canonical)});
    }

    static void add(ProjectElement& folder, const QString& fileName) {
        projectSystem->addFile(&folder, fileName)->canModify = false;
    }

    static std::shared_ptr<const OpenDirectory> open(const std::shared_ptr<const OpenDirectory>& parent,
                                                     const QString& canonicalPath) {
        return std::make_shared<const OpenDirectory>(OpenDirectory{parent, canonicalPath});
    }

    ProjectElement& folder_;
    LoadWork& work_;
    const Wildcards filters_;
    const Wildcards excludes_;
    const bool recurse_;
    std::vector<PendingDirectory> pending_;
};

void makePlain(ProjectElement& folder) {
    for (const QString& key : {dynamicFolderKeys::path, dynamicFolderKeys::filter, dynamicFolderKeys::recurse,
                               dynamicFolderKeys::exclude})
        folder.attributes.remove(key);
    folder.modified = true;
    folder.canModify = true;
    for (ProjectElement* child = folder.firstChildElement(); child; child = child->nextSiblingElement())
        if (child->isFile()) child->canModify = true;
}

}  // namespace

void ProjectSystem::populateDynamicFolders(Progress* progress) {
    if (dynamicFolders_.isEmpty()) return;
    {
        const ProgressLevel level(progress, QStringLiteral("Populating dynamic folders"), 3);
        for (ProjectElement* folder : std::exchange(dynamicFolders_, {})) {
            if (progress) progress->line(QStringLiteral("Populating folder"));
            if (folder->isFolder() && !populateDynamicFolder(folder))
                throw SolutionLoadError(
                    solution_->path.normalised(),
                    solution_->path.normalised() +
                        QStringLiteral(" looks at too many files for its dynamic folders"));
        }
    }
    markClean();
}

bool ProjectSystem::populateDynamicFolder(ProjectElement* folder) {
    LoadWork own;
    return Scanner(*folder, loadWork_ ? *loadWork_ : own).scanAll();
}

bool ProjectSystem::setDynamicFolder(ProjectElement* folder, const QString& path, const QString& filter,
                                     bool recurse, const QString& exclude) {
    setElementAttribute(folder, dynamicFolderKeys::path, path);
    setElementAttribute(folder, dynamicFolderKeys::filter, filter);
    setElementAttribute(folder, dynamicFolderKeys::recurse,
                        recurse ? QStringLiteral("Yes") : QStringLiteral("No"));
    setElementAttribute(folder, dynamicFolderKeys::exclude, exclude);
    for (ProjectElement* child = folder->firstChildElement(); child;) {
        ProjectElement* const next = child->nextSiblingElement();
        if (!child->isConfiguration()) removeElement(child);
        child = next;
    }
    return populateDynamicFolder(folder);
}

void ProjectSystem::clearDynamicFolder(ProjectElement* top, bool recursive) {
    forEachElement(*top, [&](ProjectElement& node) {
        if (node.isFolder()) makePlain(node);
        return node.isFolder() && recursive;
    });
}

}  // namespace project
