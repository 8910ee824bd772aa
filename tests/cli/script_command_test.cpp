// `atelis script` and `atelis threads`.
#include "cli/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace {

using cli_test::atelis;

struct Row {
    const char* words;
    int status;
    const char* output;
    const char* errors = "";  ///< null where the wording is not ours
};

// clang-format off
const Row rows[] = {
    {"script -e '1 + 1'", 0, "2\n"},
    {"script -e 'var a = 3' -e 'a'", 0, "3\n"},
    {"script -e 'a = 5' -e 'var b'", 0, ""},
    {"script -e 'print(1, \"b\", null); print()'", 0, "1 b null\n\n"},
    {"script -e 'print(1)' -e 'x = ' -e 'print(2)'", 1, "1\n", "expected an expression, found end of input\n-e:1\n"},
    {"script -e '\n\nnull.x()'", 1, "", "can't convert null to an object\n-e:3\n"},
    {"script -e 'function f() { f() } f()'", 1, "", "atelis: error: virtual machine stack too small\n"},
    {"script --budget 1000 -e 'print(1)' -e 'while (1) {}' -e 'print(2)'", 1, "1\n", "atelis: error: instruction budget exhausted\n"},
    {"script --budget 3 -e '1 + 1'", 1, "", "atelis: error: instruction budget exhausted\n"},
    {"script --budget 4 -e '1 + 1'", 0, "2\n"},
    {"script --budget x -e 1", 2, "", nullptr},
    {"script no/such/file", 1, "", nullptr},
    {"script - < /dev/null", 0, ""},
    {"threads no/such/file", 1, "", "atelis: error: Cannot open: no/such/file\n"},
    {"threads", 2, "", nullptr},
    {"threads '" EXAMPLES_DIR "/threads/pebble.js'", 0,
     "Id  Name     Priority  State\n"
     "Ready\n"
     "2   main     16        running\n"
     "5   logger   64        ready\n"
     "1   idle     255       ready\n"
     "Blocked\n"
     "4   radio    8         waiting\n"
     "3   display  32        sleeping\n"
     "\n"
     "Timers\n"
     "Name      Expires\n"
     "Running\n"
     "blink     250\n"
     "watchdog  1000\n"},
    {"threads --max 2 '" EXAMPLES_DIR "/threads/pebble.js' 2>/dev/null | head -3 | tail -1", 0, "2   main  16        running\n"},
};
// clang-format on

TEST(ScriptCommand, PrintsItsResults) {
    for (const Row& row : rows) {
        const cli_test::Outcome outcome = atelis(row.words);
        EXPECT_EQ(outcome.status, row.status) << row.words << "\n" << outcome.output;
        EXPECT_EQ(outcome.output, row.output) << row.words;
        if (row.errors != nullptr) {
            EXPECT_EQ(outcome.errors, row.errors) << row.words;
        }
    }
}

TEST(ScriptCommand, TakesFilesAndTextsInTheirOrder) {
    const std::string directory = testing::TempDir();
    std::ofstream(directory + "first.js") << "var list = ['first'];\n";
    std::ofstream(directory + "last.js") << "load('more.js'); print(list.concat('last'));\n";
    std::ofstream(directory + "more.js") << "list.push('more')";
    const cli_test::Outcome outcome = atelis("script -I " + directory + " " + directory +
                                             "first.js -e 'list.push(2); 0' " + directory + "last.js");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "0\nfirst,2,more,last\n");
    EXPECT_EQ(atelis("script < " + directory + "first.js").output, "");
}

/// Runs the console on a terminal of its own.
TEST(ScriptCommand, TheConsoleKeepsVariablesAndOutlivesAnEndlessLoop) {
    if (std::system("command -v script >/dev/null 2>&1") != 0) GTEST_SKIP() << "no terminal to be had";
    const std::string line =
        "(sleep 0.5; echo 'var a = 4'; sleep 0.3; echo 'while (1) {}'; sleep 0.7; printf '\\003'; "
        "sleep 0.5; echo 'a + 38'; sleep 0.5; printf '\\004') | "
        "script -qec '" ATELIS_PROGRAM " script' /dev/null 2>&1 | tr -d '\\r'";
    std::FILE* pipe = ::popen(line.c_str(), "r");
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) output += static_cast<char>(c);
    ::pclose(pipe);
    EXPECT_THAT(output, testing::HasSubstr("interrupted\n"));
    EXPECT_THAT(output, testing::HasSubstr("\n42\n"));
}

}  // namespace
