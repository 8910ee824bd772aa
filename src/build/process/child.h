#pragma once

#include "build/process/descriptor.h"

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <span>
#include <string>

namespace build {

/// How a child is started. Descriptors are borrowed for the call; -1 leaves the stream as the parent has it.
struct ChildSetup {
    std::span<const std::string> arguments;  ///< the program first, searched in PATH unless it holds a "/"
    std::string workingDirectory;            ///< empty for the parent's
    int output = -1;
    int errors = -1;
    bool isDetached = false;  ///< in a process group of its own, with nothing to read
};

/// A child process. The object owns the duty to collect its exit status; a child that still runs when the
/// object goes is left to itself.
class Child {
public:
    Child() = default;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    /// Starts a program by a call that does not copy the parent. False when it can't be started.
    bool start(const ChildSetup& setup);
    bool isRunning() const { return pid_ > 0; }

    /// Collects the exit status if the child has ended: its exit code, or 128 plus the number of the signal
    /// that ended it.
    std::optional<int> tryCollect();
    /// Waits for the end and collects the exit status.
    int collect();
    /// Asks a detached child and all that it started to end.
    void requestStop();
    /// Asks unless that was done, waits a little from then on, and insists.
    int stop();

    /// Becomes readable when the child ends; -1 where the system has no such descriptor.
    int endDescriptor() const { return end_.number(); }

private:
    bool waitForEnd(std::chrono::steady_clock::time_point deadline) const;
    int take(int status);

    pid_t target() const { return isDetached_ ? -pid_ : pid_; }

    pid_t pid_ = 0;
    bool isDetached_ = false;
    std::optional<std::chrono::steady_clock::time_point> stopDeadline_;
    Descriptor end_;
};

}  // namespace build
