#pragma once

#include "build/build_thread.h"
#include "build/plan_item.h"

#include <memory>
#include <span>
#include <vector>

namespace build {

/// Runs a queue of plan items on as many workers as there are: one item on a worker, none over a barrier
/// until everything before it has ended. One loop on one thread polls them all.
class PlanRunner {
public:
    /// Everything outlives the object.
    PlanRunner(BuildSystem& engine, std::span<Builder* const> workers, Idler& host);

    /// True when any item did work.
    bool run(const PlanQueue& queue);

private:
    void runItem(const PlanItem& item, bool isLast);
    bool start(const PlanItem& item, std::size_t slot);
    void poll(const PlanItem& item);
    void drain();
    void waitForWorkers();
    void retire(std::unique_ptr<BuildThread>& thread);
    std::size_t busyCount() const;

    BuildSystem& engine_;
    const std::span<Builder* const> workers_;
    Idler& host_;
    std::vector<std::unique_ptr<BuildThread>> active_;  // of each worker, or null
    std::vector<Builder*> busy_;
    bool didWork_ = false;
};

}  // namespace build
