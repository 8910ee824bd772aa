#include "project/change_log.h"

#include <algorithm>

namespace project {

void ChangeLog::add(ProjectElement* node, const properties::PropertyClass* propertyClass,
                    const QString& configuration, const QString& oldText, bool nodeWasModified,
                    bool configurationWasModified) {
    ChangeRecord record;
    record.node_ = node;
    record.class_ = propertyClass;
    record.configuration_ = nameOf(configuration);
    if (!oldText.isNull()) record.oldText_ = std::make_unique<QString>(oldText);
    record.time_ = QDateTime::currentMSecsSinceEpoch();
    newestTime_ = std::max(newestTime_, record.time_);  // a clock can be set back
    record.nodeWasModified_ = nodeWasModified;
    record.configurationWasModified_ = configurationWasModified;
    records_.push_back(std::move(record));
}

void ChangeLog::clear() {
    records_.clear();
    configurations_.clear();
    standIns_.clear();
    newestTime_ = std::numeric_limits<std::int64_t>::min();
}

const QString* ChangeLog::nameOf(const QString& configuration) {
    const auto known = std::find(configurations_.begin(), configurations_.end(), configuration);
    return known != configurations_.end() ? &*known : &configurations_.emplace_back(configuration);
}

const properties::PropertyClass* ChangeLog::standIn(const properties::PropertyClass& going) {
    std::unique_ptr<properties::PropertyClass>& known = standIns_[going.name];
    if (!known) {
        known = std::make_unique<properties::PropertyClass>(going.name, going.kind, going.order);
        known->shortName = going.shortName;
    }
    return known.get();
}

}  // namespace project
