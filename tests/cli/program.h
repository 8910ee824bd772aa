#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

/// Runs the built program `atelis`.
namespace cli_test {

struct Outcome {
    int status;
    std::string output;
    std::string errors;
};

inline std::string drained(std::FILE* stream) {
    std::string text;
    std::array<char, 4096> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), stream))
        text.append(block.data(), got);
    return text;
}

/// `words` are the command line behind the program's name, as a shell takes it, which runs in `directory`.
inline Outcome atelis(const std::string& words, const std::string& directory = ".") {
    std::FILE* const errors = std::tmpfile();
    const std::string redirection = " 2>&" + std::to_string(::fileno(errors));
    const std::string command = "cd '" + directory + "' && " ATELIS_PROGRAM " " + words + redirection;
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    Outcome outcome{};
    outcome.output = drained(pipe);
    outcome.status = WEXITSTATUS(::pclose(pipe));
    std::rewind(errors);
    outcome.errors = drained(errors);
    std::fclose(errors);
    return outcome;
}

}  // namespace cli_test
