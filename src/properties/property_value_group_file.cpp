#include "properties/property_value_group_file.h"

#include "project/base/macro_engine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace properties {

namespace {

/// Each subdirectory of these can hold the groups of a library.
constexpr const char* libraryRoots[] = {
    "$(PackagesDir)/libraries",
    "$(AtelisDir)/targets",
    "$(AtelisDir)/samples",
};
const QString libraryFileName = QStringLiteral("propertyGroups.xml");

QDateTime timeOf(const QString& path) {
    return QFileInfo(path).lastModified();
}

}  // namespace

PropertyValueGroupFile::~PropertyValueGroupFile() = default;

bool PropertyValueGroupFile::load(bool isLibrary) {
    if (!parseRegularFile(path_)) return false;
    processConditionals(path_, {}, false);
    lastModified_ = timeOf(path_);
    if (!root()) return false;
    for (const xml::XMLNode* node = root()->firstChild(); node; node = node->nextSibling()) {
        const xml::XMLElement* const element = xml::asElement(node);
        if (!element) break;
        if (element->tagName() != "group") continue;
        classes_.push_back(std::make_unique<PropertyValueGroupClass>(*element, isLibrary));
        append(classes_.back().get());
    }
    return true;
}

void PropertyValueGroupFile::addLibrary(std::unique_ptr<PropertyValueGroupFile> library) {
    for (const PropertyValueGroupClass* group : std::as_const(library->groups_)) append(group);
    libraries_.push_back(std::move(library));
}

/// A group whose key is none is not found.
void PropertyValueGroupFile::append(const PropertyValueGroupClass* group) {
    groups_.append(group);
    if (isStorableKey(group->name) && !groupsByKey_.contains(group->name))
        groupsByKey_.insert(group->name, group);
}

bool PropertyValueGroupFile::isUpToDate() const {
    return timeOf(path_) == lastModified_;
}

PropertyValueGroupFile* PropertyValueGroupFiles::find(const QString& path) {
    if (path.isEmpty() || path == u"None") {
        if (!none_) none_ = std::make_unique<PropertyValueGroupFile>(QString());
        return none_.get();
    }
    if (PropertyValueGroupFile* const file = known(path)) return file;
    const QFileInfo info(path);
    const Attempt attempt{info.lastModified(), info.size(), info.isReadable()};
    const auto failure = unreadable_.find(path);
    if (failure != unreadable_.end() && *failure == attempt) return nullptr;
    auto file = std::make_unique<PropertyValueGroupFile>(path);
    if (!file->load(false)) {
        unreadable_.insert(path, attempt);
        return nullptr;
    }
    unreadable_.remove(path);
    addLibraries(*file);
    files_.push_back(std::move(file));
    return files_.back().get();
}

void PropertyValueGroupFiles::clear() {
    none_.reset();
    files_.clear();
    outdated_.clear();
    unreadable_.clear();
}

/// The file when it has been read and is up to date, else null.
PropertyValueGroupFile* PropertyValueGroupFiles::known(const QString& path) {
    const auto place =
        std::find_if(files_.begin(), files_.end(), [&](const auto& file) { return file->path() == path; });
    if (place == files_.end()) return nullptr;
    if ((*place)->isUpToDate()) return place->get();
    outdated_.push_back(std::move(*place));
    files_.erase(place);
    return nullptr;
}

void PropertyValueGroupFiles::addLibraries(PropertyValueGroupFile& file) {
    if (!project::macroEngine) return;
    for (const char* root : libraryRoots) {
        const QDir directory(project::macroEngine->expandGlobal(QString::fromLatin1(root)));
        for (const QString& name : directory.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            addLibrary(file, directory.filePath(name) + u'/' + libraryFileName);
    }
}

void PropertyValueGroupFiles::addLibrary(PropertyValueGroupFile& file, const QString& path) {
    if (path == file.path() || known(path)) return;
    auto library = std::make_unique<PropertyValueGroupFile>(path);
    if (library->load(true)) file.addLibrary(std::move(library));
}

}  // namespace properties
