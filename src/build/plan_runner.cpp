#include "build/plan_runner.h"

#include <algorithm>

namespace build {

PlanRunner::PlanRunner(BuildSystem& engine, std::span<Builder* const> workers, Idler& host)
    : engine_(engine), workers_(workers), host_(host), active_(workers.size()) {}

bool PlanRunner::run(const PlanQueue& queue) {
    const auto& items = queue.items();
    for (std::size_t i = 0; i < items.size() && !engine_.isStopped(); ++i)
        runItem(items[i], i + 1 == items.size());
    drain();
    if (engine_.buildFailed)
        for (Builder* worker : workers_) worker->stop();
    host_.buildDone();
    return didWork_;
}

/// Goes round until the item runs and a worker is free again; with a barrier, until all are.
void PlanRunner::runItem(const PlanItem& item, bool isLast) {
    bool mustDrain = item.isBarrier();
    for (;;) {
        const auto slot =
            static_cast<std::size_t>(std::find(active_.begin(), active_.end(), nullptr) - active_.begin());
        waitForWorkers();
        if (!mustDrain && slot < active_.size()) {
            mustDrain = start(item, slot);
        } else {
            poll(item);
        }
        const std::size_t busy = busyCount();
        if (busy == 0) return;
        if (busy < active_.size() && !mustDrain) {
            if (!isLast) return;
            mustDrain = true;
        }
    }
}

/// True when nothing else may start until the item is through.
bool PlanRunner::start(const PlanItem& item, std::size_t slot) {
    active_[slot] = std::make_unique<BuildThread>(engine_, item, *workers_[slot], host_);
    if (!item.has(BuildFlags::ProjectBegin)) return false;
    host_.beginProject(item.node, item.title, item.configuration, item.stepCount());
    return active_[slot]->recordPreBuild();
}

void PlanRunner::poll(const PlanItem& item) {
    for (auto& thread : active_) {
        if (!thread || !thread->pump()) continue;
        Builder& worker = thread->worker();
        retire(thread);
        if (!engine_.buildFailed || !item.has(BuildFlags::KeepGoing)) continue;
        worker.note(
            QStringLiteral("Build failed - continuing because 'keep going on error' has been enabled"));
        worker.endStep(nullptr, QStringLiteral(""));
        engine_.buildFailed = false;
    }
}

/// Takes over what a thread that has ended has to tell.
void PlanRunner::retire(std::unique_ptr<BuildThread>& thread) {
    didWork_ |= thread->didWork();
    if (thread->hasFailed()) engine_.buildFailed = true;
    thread.reset();
}

/// Lets the threads that still run come to their end.
void PlanRunner::drain() {
    while (busyCount() > 0) {
        waitForWorkers();
        for (auto& thread : active_)
            if (thread && thread->pump()) retire(thread);
    }
}

void PlanRunner::waitForWorkers() {
    busy_.clear();
    for (const auto& thread : active_)
        if (thread) busy_.push_back(&thread->worker());
    host_.waitForWorkers(busy_);
}

std::size_t PlanRunner::busyCount() const {
    return active_.size() - static_cast<std::size_t>(std::count(active_.begin(), active_.end(), nullptr));
}

}  // namespace build
