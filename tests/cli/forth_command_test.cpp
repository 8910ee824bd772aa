#include "cli/program.h"

#include <gtest/gtest.h>

namespace {

using namespace cli_test;

TEST(ForthCommand, RunsLines) {
    const struct {
        const char* words;
        const char* output;
        int status;
    } cases[] = {
        {"-e '1 2 + .'", "3  OK\n", 0},
        {"-e '1 2 3' -e '.s'", " OK\n1 2 3  OK\n", 0},
        {"-e ''", " OK\n", 0},
        {"-e '-7 2 / . -7 2 mod . 7 -1 / .'", "-3 -1 -7  OK\n", 0},
        {"-e '2 3 - . 2 3 * . 1 2 swap . .'", "-1 6 1 2  OK\n", 0},
        {"-e '1 2 over . . . 5 dup . . 1 2 drop .'", "1 2 1 5 5 1  OK\n", 0},
        {"-e '1e 4 / . 1e 2e * . 1e3 .'", "0.25 2 1000  OK\n", 0},
        {"-e ': sq dup * ; 4 sq .'", "16  OK\n", 0},
        {"-e ': sq' -e 'dup *' -e '; 3 sq .'", "9  OK\n", 0},
        {"-e ': a 1 ; : a a 1 + ; a .'", "2  OK\n", 0},
        {"-e ': a a ;' -e '5 .'", "undefined word: A\n5  OK\n", 1},
        {"-e '1 . : a 2'", "1 \n", 0},
        {"-e ':'", "invalid argument: : without a name\n", 1},
        {"-e ';'", "interpreting a compile-only word: ;\n", 1},
        {"-e '1 . +' -e '.'", "1 stack underflow\nstack underflow\n", 1},
        {"-e '1 0 /' -e '1 0 mod'", "divide by zero\ndivide by zero\n", 1},
        {"-e '1e 2 mod'", "argument type mismatch\n", 1},
        {"-e '1.5'", "undefined word: 1.5\n", 1},
        {"-e '1 . bye 2 .' -e '3 .'", "1 \n", 0},
        {"-e \"$(printf '%300s' 1)\" -e 2", "string buffer overflow\n OK\n", 1},
        {"</dev/null", "", 0},
    };
    for (const auto& row : cases) {
        const Outcome outcome = atelis(std::string("forth ") + row.words);
        EXPECT_EQ(outcome.output, row.output) << row.words;
        EXPECT_EQ(outcome.status, row.status) << row.words;
    }
    EXPECT_EQ(atelis("forth <<'END' 2>&1\n1\r\n2 .s\nEND\ntrue").output, " OK\n1 2  OK\n");
    EXPECT_EQ(atelis("forth extra").status, 2);
    EXPECT_EQ(atelis("forth -e 1 >/dev/full").status, 1);
}

}  // namespace
