#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

/// Runs the built program `atelis`.
namespace cli_test {

struct Outcome {
    int status;
    std::string output;  ///< both streams
};

/// `words` are the command line behind the program's name, as a shell takes it.
inline Outcome atelis(const std::string& words) {
    std::FILE* pipe = ::popen((ATELIS_PROGRAM " " + words + " 2>&1").c_str(), "r");
    Outcome outcome{};
    std::array<char, 4096> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), pipe))
        outcome.output.append(block.data(), got);
    outcome.status = WEXITSTATUS(::pclose(pipe));
    return outcome;
}

}  // namespace cli_test
