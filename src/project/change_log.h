#pragma once

#include "properties/property_class.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <memory>

namespace project {

class ProjectElement;

/// One change of a stored value. It tells the rebuild decision what has changed since an output was made.
class ChangeRecord {
public:
    ProjectElement* node() const { return node_; }
    /// One of the log's own stands for a class that a tool description took with it.
    const properties::PropertyClass* propertyClass() const { return class_; }
    const QString& configuration() const { return *configuration_; }
    QDateTime time() const { return QDateTime::fromMSecsSinceEpoch(time_, Qt::UTC); }
    /// The time since 1970.
    std::int64_t milliseconds() const { return time_; }
    /// Null when nothing was stored.
    QString oldText() const { return oldText_ ? *oldText_ : QString(); }
    bool nodeWasModified() const { return nodeWasModified_; }
    bool configurationWasModified() const { return configurationWasModified_; }

private:
    friend class ChangeLog;

    ProjectElement* node_;
    const properties::PropertyClass* class_;
    const QString* configuration_;  // of the log's names
    std::unique_ptr<QString> oldText_;
    std::int64_t time_;
    bool nodeWasModified_;
    bool configurationWasModified_;
};

/// All changes since the solution was loaded or made, newest last. An import makes millions, so a record is
/// small.
class ChangeLog {
public:
    using const_iterator = std::deque<ChangeRecord>::const_iterator;

    /// Adds a record of the present time.
    void add(ProjectElement* node, const properties::PropertyClass* propertyClass,
             const QString& configuration, const QString& oldText, bool nodeWasModified,
             bool configurationWasModified);
    void clear();
    /// Classes that satisfy `isGoing` are about to go: their records get classes of the log's own, which have
    /// the key and the label alone.
    template <typename Test>
    void detach(Test isGoing) {
        for (ChangeRecord& record : records_)
            if (isGoing(record.class_)) record.class_ = standIn(*record.class_);
    }

    std::size_t size() const { return records_.size(); }
    bool isEmpty() const { return records_.empty(); }
    /// The latest time of a record, in milliseconds since 1970; without any, before all times.
    std::int64_t newestTime() const { return newestTime_; }
    const ChangeRecord& operator[](std::size_t place) const { return records_[place]; }
    const_iterator begin() const { return records_.begin(); }
    const_iterator end() const { return records_.end(); }

private:
    const QString* nameOf(const QString& configuration);
    const properties::PropertyClass* standIn(const properties::PropertyClass& going);

    std::deque<ChangeRecord> records_;
    std::deque<QString> configurations_;  // each name once
    std::map<QString, std::unique_ptr<properties::PropertyClass>> standIns_;
    std::int64_t newestTime_ = std::numeric_limits<std::int64_t>::min();
};

}  // namespace project
