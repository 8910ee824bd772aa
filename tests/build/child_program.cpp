// Plays one role a run, for the tests of the process runner:
//   child_program ROLE [ARGUMENT...]
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void write(int stream, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(stream, text.data(), text.size());
        if (written <= 0) std::exit(99);
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void block() {
    for (;;) ::pause();
}

/// Starts a process that keeps the streams open, and tells its number.
int spawnGrandchild() {
    const pid_t grandchild = ::fork();
    if (grandchild == 0) {
        ::signal(SIGTERM, SIG_IGN);
        block();
    }
    write(STDOUT_FILENO, std::to_string(grandchild) + "\n");
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string role = argc > 1 ? argv[1] : "";
    const char* argument = argc > 2 ? argv[2] : "";
    if (role == "arguments")
        for (int i = 2; i < argc; ++i) write(STDOUT_FILENO, "<" + std::string(argv[i]) + ">\n");
    else if (role == "output")
        write(STDOUT_FILENO, argument);
    else if (role == "both") {
        write(STDOUT_FILENO, "out\n");
        write(STDERR_FILENO, "err\n");
    } else if (role == "exit")
        return std::atoi(argument);
    else if (role == "signal")
        ::raise(std::atoi(argument));
    else if (role == "repeat")  // COUNT TEXT
        for (int i = std::atoi(argument); i > 0; --i) write(STDOUT_FILENO, argv[3]);
    else if (role == "environment")
        write(STDOUT_FILENO, std::string(std::getenv(argument) ? std::getenv(argument) : "unset") + "\n");
    else if (role == "directory") {
        char* directory = ::getcwd(nullptr, 0);
        write(STDOUT_FILENO, std::string(directory) + "\n");
        std::free(directory);
    } else if (role == "input") {
        char byte = 0;
        return static_cast<int>(::read(STDIN_FILENO, &byte, 1));
    } else if (role == "close") {
        ::close(STDOUT_FILENO);
        ::close(STDERR_FILENO);
        ::usleep(50'000);
        return 3;
    } else if (role == "grandchild")
        return spawnGrandchild();
    else if (role == "family") {
        spawnGrandchild();
        block();
    } else if (role == "block") {
        write(STDOUT_FILENO, "ready\n");
        block();
    } else if (role == "stubborn") {
        ::signal(SIGTERM, SIG_IGN);
        write(STDOUT_FILENO, "ready\n");
        block();
    }
    return 0;
}
