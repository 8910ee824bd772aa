#pragma once

#include "build/process/process.h"

#include <span>
#include <string>
#include <string_view>

namespace build {

/// Hears of a command while it runs. Texts are bytes as the program gave them.
class CommandObserver {
public:
    virtual ~CommandObserver() = default;
    virtual void commandStarted(std::string_view commandLine) = 0;
    virtual void commandOutput(bool isStandardOutput, std::string_view line) = 0;
    /// Called again and again while the command runs.
    virtual void commandIdle() = 0;
    virtual void commandEnded() = 0;
};

/// A command that a solution runs: the constructor runs it to its end.
class ProjectSystemProcess : public Process {
public:
    /// `observer` may be null. `environment` holds "NAME=value" texts; they are entered in the program's own
    /// environment and stay there.
    ProjectSystemProcess(CommandObserver* observer, std::span<const std::string> arguments,
                         const std::string& workingDirectory, std::span<const std::string> environment);

    void output(bool isStandardOutput, std::string_view line) override;
    void waitStep() override;

    /// That of the command; -1 when it could not be started.
    int result() const { return result_; }

private:
    CommandObserver* observer_;
    int result_;
};

}  // namespace build
