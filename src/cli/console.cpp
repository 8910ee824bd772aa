#include "cli/script_host.h"

#include <editline/readline.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>

namespace cli {

namespace {

/// What Ctrl-C ends; set while a console runs.
std::atomic<bool>* keepRunning = nullptr;

void stopScript(int) {
    if (keepRunning != nullptr) keepRunning->store(false, std::memory_order_relaxed);
}

/// Lets Ctrl-C end the running script for as long as the object stands.
class InterruptHandler {
public:
    explicit InterruptHandler(std::atomic<bool>& flag) {
        static_assert(std::atomic<bool>::is_always_lock_free);
        keepRunning = &flag;
        struct sigaction action {};
        action.sa_handler = stopScript;
        sigaction(SIGINT, &action, &previous_);
    }
    InterruptHandler(const InterruptHandler&) = delete;
    InterruptHandler& operator=(const InterruptHandler&) = delete;
    ~InterruptHandler() {
        sigaction(SIGINT, &previous_, nullptr);
        keepRunning = nullptr;
    }

private:
    struct sigaction previous_ {};
};

struct FreeLine {
    void operator()(char* line) const { std::free(line); }
};
using Line = std::unique_ptr<char, FreeLine>;

/// The next line, or null at the end of the input. An interrupt at the prompt gives an empty line.
Line readLine() {
    errno = 0;
    Line line(readline("> "));
    if (line == nullptr && errno == EINTR) {
        std::fputc('\n', stdout);
        line.reset(static_cast<char*>(std::calloc(1, 1)));
    }
    return line;
}

}  // namespace

void runConsole(script::MyESContext2& context, Output& output) {
    const InterruptHandler handler(context.keepRunning);
    using_history();
    while (const Line line = readLine()) {
        if (*line == '\0') continue;
        add_history(line.get());
        context.keepRunning = true;
        const auto ranToItsEnd = [&context] { return context.keepRunning.load(); };
        evaluateText(context, QStringLiteral("-"), QString::fromUtf8(line.get()), ranToItsEnd, output);
        output.finish();
        if (!context.keepRunning) reportError("interrupted");
    }
}

}  // namespace cli
