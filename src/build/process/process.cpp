#include "build/process/process.h"

#include "build/process/redirection.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

namespace build {

namespace {

/// How long a wait sleeps when nothing happens, so that the host gets its turn.
constexpr int turnMilliseconds = 10;

/// A directory in the form that the system takes: a drive is named by its root.
std::string systemDirectory(const std::string& directory) {
    return directory.ends_with(':') ? directory + "/" : directory;
}

}  // namespace

void Process::waitStep() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

int Process::run(std::span<const std::string> arguments, bool wait, const std::string& workingDirectory,
                 bool captureOutput, bool captureErrors) {
    const bool isCaptured = captureOutput && captureErrors;
    if (!start(arguments, systemDirectory(workingDirectory), isCaptured, isCaptured || !wait)) return -1;
    if (!wait) return 0;
    if (!isCaptured) {
        finish(child_.collect());
        return exitCode_;
    }
    Process* const self = this;
    for (;;) {
        waitForAny({&self, 1}, turnMilliseconds);
        if (update()) return exitCode_;
        waitStep();
    }
}

bool Process::start(std::span<const std::string> arguments, const std::string& workingDirectory, bool capture,
                    bool detach) {
    const RedirectedCommand command = splitRedirections(arguments);
    if (command.arguments.empty() || child_.isRunning()) return false;
    const RedirectedStreams files = openRedirections(command, workingDirectory);
    const auto pipeUnless = [capture](const Descriptor& file) {
        return capture && !file ? makePipe() : Pipe();
    };
    Pipe output = pipeUnless(files.output);
    Pipe errors = pipeUnless(files.errors);
    const Descriptor& outputEnd = files.output ? files.output : output.writing;
    const Descriptor& errorEnd = files.errors ? files.errors : errors.writing;
    if (capture && (!outputEnd || !errorEnd)) return false;
    if (!child_.start({command.arguments, workingDirectory, outputEnd.number(), errorEnd.number(), detach}))
        return false;
    output_ = {std::move(output.reading), {}};
    errors_ = {std::move(errors.reading), {}};
    return true;
}

bool Process::update() {
    if (!isRunning()) return true;
    // The child is asked first, so that nothing it wrote before its end is missed.
    const std::optional<int> code = child_.tryCollect();
    if (code) {
        finish(*code);
    } else {
        readAvailable(output_);
        readAvailable(errors_);
    }
    return code.has_value();
}

void Process::stop() {
    if (isRunning()) finish(child_.stop());
}

void Process::waitForAny(std::span<Process* const> processes, int milliseconds) {
    std::vector<pollfd> watched;
    for (const Process* process : processes) {
        if (!process->isRunning()) continue;
        const int end = process->child_.endDescriptor();
        if (end < 0) milliseconds = std::min(milliseconds, 1);
        for (const int descriptor : {end, process->output_.pipe.number(), process->errors_.pipe.number()})
            if (descriptor >= 0) watched.push_back({descriptor, POLLIN, 0});
    }
    ::poll(watched.data(), watched.size(), milliseconds);
}

/// Reads exactly what the pipe holds now, so that a child that never stops writing can't hold the caller.
void Process::readAvailable(Stream& stream) {
    if (!stream.pipe) return;
    const bool isStandardOutput = &stream == &output_;
    int held = 0;
    ::ioctl(stream.pipe.number(), FIONREAD, &held);
    std::string bytes(static_cast<std::size_t>(std::max(held, 1)), '\0');
    const ssize_t got = ::read(stream.pipe.number(), bytes.data(), bytes.size());
    if (got == 0) stream.pipe.close();  // a closed stream would end every sleep at once
    if (got <= 0) return;
    stream.splitter.add(std::string_view(bytes).substr(0, static_cast<std::size_t>(got)),
                        [&](std::string_view line) { output(isStandardOutput, line); });
}

void Process::finish(int code) {
    exitCode_ = code;
    for (Stream* stream : {&output_, &errors_}) {
        readAvailable(*stream);
        stream->pipe.close();
    }
    for (Stream* stream : {&output_, &errors_})
        stream->splitter.finish([&](std::string_view line) { output(stream == &output_, line); });
}

}  // namespace build
