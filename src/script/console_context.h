#pragma once

#include "script/context.h"

#include <QCoreApplication>

#include <atomic>
#include <cstdint>

namespace script {

/// The context of an interactive console: while a script runs, the host's event loop goes on, and whoever
/// wants to end the script clears `keepRunning`, from an event or from a signal handler. The host sets it
/// before each evaluation and starts no second one from an event.
class MyESContext2 : public ESContext {
public:
    bool checkInterrupt() override {
        constexpr std::uint32_t callsPerEventPass = 11;
        if (++eventCounter >= callsPerEventPass) {
            eventCounter = 0;
            if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
        }
        return keepRunning.load(std::memory_order_relaxed);
    }

    std::uint32_t eventCounter = 0;
    std::atomic<bool> keepRunning = true;
};

}  // namespace script
