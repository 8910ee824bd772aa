#include "build/process/child.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <vector>

namespace build {

namespace {

/// The file actions and attributes of a start, which the system wants freed.
class SpawnPlan {
public:
    SpawnPlan() {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawnattr_init(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    /// False when memory runs out.
    bool prepare(const ChildSetup& setup) {
        return setSignals(setup.isDetached) && setStreams(setup) && setDirectory(setup.workingDirectory);
    }
    const posix_spawn_file_actions_t* actions() const { return &actions_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    /// A host may block or ignore signals for its own sake; the child starts with none of that.
    bool setSignals(bool ownGroup) {
        sigset_t none;
        sigset_t defaults;
        ::sigemptyset(&none);
        ::sigemptyset(&defaults);
        for (const int signal : {SIGPIPE, SIGINT, SIGQUIT, SIGTERM}) ::sigaddset(&defaults, signal);
        const int flags =
            POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | (ownGroup ? POSIX_SPAWN_SETPGROUP : 0);
        return ::posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
               ::posix_spawnattr_setsigdefault(&attributes_, &defaults) == 0 &&
               ::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags)) == 0;
    }

    bool setStreams(const ChildSetup& setup) {
        return (!setup.isDetached ||
                ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0) &&
               setStream(setup.output, STDOUT_FILENO) && setStream(setup.errors, STDERR_FILENO);
    }

    bool setStream(int descriptor, int stream) {
        return descriptor < 0 || ::posix_spawn_file_actions_adddup2(&actions_, descriptor, stream) == 0;
    }

    bool setDirectory(const std::string& directory) {
        return directory.empty() || ::posix_spawn_file_actions_addchdir_np(&actions_, directory.c_str()) == 0;
    }

    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

/// That of a child whose end somebody else has taken note of.
constexpr int lostStatus = 255 << 8;

/// A parent that ignored the ends of its children hands that down, and then no exit code can be asked for.
void receiveExitCodes() {
    struct sigaction action {};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        ::signal(SIGCHLD, SIG_DFL);
}

int exitCode(int status) {
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

Descriptor watchEnd([[maybe_unused]] pid_t pid) {
#ifdef SYS_pidfd_open  // the library's own call cannot be linked from C++ everywhere
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
#else
    return Descriptor();
#endif
}

}  // namespace

Child::~Child() {
    tryCollect();
}

bool Child::start(const ChildSetup& setup) {
    SpawnPlan plan;
    if (!plan.prepare(setup)) return false;
    std::vector<char*> arguments;
    arguments.reserve(setup.arguments.size() + 1);
    // The interface predates const; nothing is written.
    for (const std::string& argument : setup.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    receiveExitCodes();
    pid_t pid = 0;
    if (::posix_spawnp(&pid, arguments.front(), plan.actions(), plan.attributes(), arguments.data(),
                       environ) != 0)
        return false;
    pid_ = pid;
    isDetached_ = setup.isDetached;
    end_ = watchEnd(pid);
    return true;
}

std::optional<int> Child::tryCollect() {
    int status = 0;
    if (!isRunning()) return std::nullopt;
    const pid_t ended = ::waitpid(pid_, &status, WNOHANG);
    if (ended == 0) return std::nullopt;
    return take(ended < 0 ? lostStatus : status);
}

int Child::collect() {
    int status = 0;
    while (::waitpid(pid_, &status, 0) < 0) {
        if (errno == EINTR) continue;
        status = lostStatus;
        break;
    }
    return take(status);
}

void Child::requestStop() {
    constexpr std::chrono::milliseconds grace(500);
    if (!isRunning() || stopDeadline_) return;
    stopDeadline_ = std::chrono::steady_clock::now() + grace;
    ::kill(target(), SIGTERM);
    ::kill(target(), SIGCONT);
}

int Child::stop() {
    requestStop();
    waitForEnd(*stopDeadline_);
    // As long as the child is not collected its number, and that of its group, belong to nobody else.
    ::kill(target(), SIGKILL);
    return collect();
}

bool Child::waitForEnd(std::chrono::steady_clock::time_point deadline) const {
    using namespace std::chrono;
    constexpr int step = 5;  // where the end of a child cannot be waited for
    while (true) {
        siginfo_t information{};
        const bool failed =
            ::waitid(P_PID, static_cast<id_t>(pid_), &information, WEXITED | WNOHANG | WNOWAIT) != 0;
        if (failed || information.si_pid != 0) return true;
        const auto left = duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now()).count();
        if (left <= 0) return false;
        pollfd end{end_.number(), POLLIN, 0};
        ::poll(&end, 1, end_ ? static_cast<int>(left) : step);
    }
}

int Child::take(int status) {
    pid_ = 0;
    stopDeadline_.reset();
    end_ = Descriptor();
    return exitCode(status);
}

}  // namespace build
