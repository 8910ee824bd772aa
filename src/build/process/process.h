#pragma once

#include "build/process/child.h"
#include "build/process/descriptor.h"
#include "build/process/line_splitter.h"

#include <span>
#include <string>
#include <string_view>

namespace build {

/// Starts a program and hands on its output line by line. All tools run through it. Texts are bytes;
/// subclasses turn them into strings. The only failure is the result -1: the program could not be started.
///
/// Redirection operators in the list of arguments (">", "2>>", "&>" and so on, see redirection.h) send the
/// child's streams to files. A child whose output is captured, or that is not waited for, runs in a process
/// group of its own and has nothing to read. A Process belongs to one thread and runs one child at a time.
class Process {
public:
    Process() = default;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    /// A child that still runs is left to itself; its output is lost.
    virtual ~Process() = default;

    /// A line of the child's, without its line end.
    virtual void output(bool isStandardOutput, std::string_view line) = 0;
    /// Called again and again while `run` waits for a child whose output it captures, so that a host can keep
    /// its event loop alive. By default it sleeps for a millisecond.
    virtual void waitStep();

    /// Runs a command, the program first. Output is captured only when both `capture` arguments are set;
    /// otherwise the child has the program's own streams. Answers with `wait` the exit code (128 and the
    /// signal's number for a child that a signal ended), without it 0 once the child runs; -1 when it could
    /// not be started.
    int run(std::span<const std::string> arguments, bool wait, const std::string& workingDirectory,
            bool captureOutput, bool captureErrors);

    // A child that was started without waiting.
    bool isRunning() const { return child_.isRunning(); }
    /// Hands on what the child has written, without blocking. True when no child runs any more.
    bool update();
    /// That of the last child that ended.
    int exitCode() const { return exitCode_; }
    /// Asks the child and everything that it started to end, without waiting. Many are stopped sooner when
    /// all are asked first.
    void requestStop() { child_.requestStop(); }
    /// Ends the child and everything that it started, and hands on what they had written.
    void stop();

    /// Sleeps until one of the processes has something for `update`, at most for the time given.
    static void waitForAny(std::span<Process* const> processes, int milliseconds);

private:
    struct Stream {
        Descriptor pipe;
        LineSplitter splitter;
    };

    bool start(std::span<const std::string> arguments, const std::string& workingDirectory, bool capture,
               bool detach);
    void readAvailable(Stream& stream);
    void finish(int code);

    Child child_;
    Stream output_;
    Stream errors_;
    int exitCode_ = -1;
};

}  // namespace build
