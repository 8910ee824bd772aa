#pragma once

#include "properties/property_value_group_class.h"
#include "xml/preprocessor.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>
#include <vector>

namespace properties {

/// A property groups file: named choices that set several properties at once. It owns the classes that it
/// defines; those of libraries at hand are appended to its groups and stay alive with it.
class PropertyValueGroupFile : public xml::XMLPP2 {
public:
    explicit PropertyValueGroupFile(const QString& path) : path_(path) {}
    ~PropertyValueGroupFile() override;

    /// Makes the classes of the file; `isLibrary` as for PropertyValueGroupClass. False when it can't be read
    /// or has no root.
    bool load(bool isLibrary);
    /// Takes over a library's file and appends its groups.
    void addLibrary(std::unique_ptr<PropertyValueGroupFile> library);

    const QList<const PropertyValueGroupClass*>& groups() const { return groups_; }
    /// The group of the key, or null.
    const PropertyValueGroupClass* find(const QString& key) const { return groupsByKey_.value(key); }
    const QString& path() const { return path_; }
    bool isUpToDate() const;

    void warning(const QString& text) override { xml::logWarning(text); }

private:
    QString path_;
    QDateTime lastModified_;
    void append(const PropertyValueGroupClass* group);

    QList<const PropertyValueGroupClass*> groups_;
    QHash<QString, const PropertyValueGroupClass*> groupsByKey_;  ///< of several of one key the first
    std::vector<std::unique_ptr<PropertyValueGroupClass>> classes_;
    std::vector<std::unique_ptr<PropertyValueGroupFile>> libraries_;
};

/// The property groups files that have been read. A file that has changed is read again; what was read before
/// lives on, as values can still refer to it.
class PropertyValueGroupFiles {
public:
    /// The file of that path, or null when it can't be read; it belongs to the cache. For an empty path and
    /// for "None" it is one shared file without groups. A file that is read anew gets the groups of the
    /// libraries at hand.
    PropertyValueGroupFile* find(const QString& path);
    /// Forgets all files.
    void clear();

private:
    /// What a file was when it could not be read.
    struct Attempt {
        QDateTime lastModified;
        qint64 size;
        bool isReadable;
        friend bool operator==(const Attempt&, const Attempt&) = default;
    };

    PropertyValueGroupFile* known(const QString& path);
    void addLibraries(PropertyValueGroupFile& file);
    void addLibrary(PropertyValueGroupFile& file, const QString& path);

    std::unique_ptr<PropertyValueGroupFile> none_;
    std::vector<std::unique_ptr<PropertyValueGroupFile>> files_;
    std::vector<std::unique_ptr<PropertyValueGroupFile>> outdated_;
    QHash<QString, Attempt> unreadable_;  // what was last tried in vain
};

}  // namespace properties
