#pragma once

#include "build/node_properties.h"

#include <QSet>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace build {

/// One piece of a build, which runs in order; the pieces run side by side where no barrier stands between
/// them. A project begins with an item of `ProjectBegin` and ends with one of `ProjectEnd`.
struct PlanItem {
    ProjectElement* node = nullptr;  ///< null for a barrier
    QString configuration = {};
    std::uint32_t word = 0;  ///< BuildFlags in the low 16 bits, the number of steps in the high 16
    QString title = {};

    bool isBarrier() const { return !node; }
    std::uint32_t flags() const { return word & 0xFFFF; }
    bool has(BuildFlags flag) const { return (word & flag) != 0; }
    int stepCount() const { return static_cast<int>(word >> 16); }

    static std::uint32_t wordOf(std::uint32_t flags, int stepCount) {
        return (flags & 0xFFFF) | static_cast<std::uint32_t>(std::clamp(stepCount, 0, 0xFFFF)) << 16;
    }
};

/// The items of a build in order.
class PlanQueue {
public:
    void append(PlanItem item) { items_.push_back(std::move(item)); }
    /// `flags` tell what becomes of a failure while the barrier holds.
    void appendBarrier(std::uint32_t flags) { append({.word = flags & 0xFFFF}); }
    /// Appends the beginning of a project, which is then found by `holds`.
    void appendProject(PlanItem item) {
        projects_.insert({item.node, item.configuration});
        append(std::move(item));
    }
    bool holds(ProjectElement* project, const QString& configuration) const {
        return projects_.contains({project, configuration});
    }
    bool isEmpty() const { return items_.empty(); }
    const std::vector<PlanItem>& items() const { return items_; }

private:
    std::vector<PlanItem> items_;
    QSet<std::pair<ProjectElement*, QString>> projects_;
};

}  // namespace build
