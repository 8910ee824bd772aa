#include "cli/program.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace cli_test;

TEST(EvalCommand, PrintsTheValueOrTheTree) {
    struct Row {
        const char* words;
        int status;
        const char* output;
    };
    const Row rows[] = {
        {"'1 + 2 * 3'", 0, "7\n"},
        {"-1", 0, "-1\n"},
        {"-- '-1 - 2'", 0, "-3\n"},
        {"'1 == 1'", 0, "true\n"},
        {"'!1'", 0, "false\n"},
        {"'7.0 / 2'", 0, "3.5\n"},
        {"'0.1 + 0.2'", 0, "0.30000000000000004\n"},
        {"'\"a b\"'", 0, "a b\n"},
        {"'\"\xc3\xa4\"'", 0, "\xc3\xa4\n"},
        {"0xffffffffffffffff", 0, "-1\n"},
        {"''", 0, "\n"},
        {"--tree '1 + -a.b'", 0, "(0x1 + NegateExpression(a.b))\n"},
        {"'1 2 3'", 0, "atelis: warning: \"2 3\" stands behind the expression and is not looked at\n1\n"},
        {"'1 / 0'", 1, "atelis: error: divide by zero\n"},
        {"'a'", 1, "atelis: error: a symbol not found\n"},
        {"'1 #'", 1, "atelis: error: unrecognised token: #\n"},
        {"' '", 1, "atelis: error: unexpected token TOKEN_EOL\n"},
        {"--tree '1 +'", 1, "atelis: error: unexpected token TOKEN_EOL\n"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = atelis(std::string("eval ") + row.words);
        EXPECT_EQ(outcome.status, row.status) << row.words;
        EXPECT_EQ(outcome.errors + outcome.output, row.output) << row.words;
    }
    EXPECT_EQ(atelis("eval").status, 2);
    EXPECT_EQ(atelis("eval 1 2").status, 2);
    EXPECT_EQ(atelis("eval 1 >/dev/full").status, 1);
}

}  // namespace
