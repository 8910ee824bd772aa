#include "cli/program.h"

#include <gtest/gtest.h>

namespace {

using namespace cli_test;

TEST(Md5Command, PrintsDigests) {
    EXPECT_EQ(atelis("md5 /dev/null /dev/null").output,
              "d41d8cd98f00b204e9800998ecf8427e  /dev/null\nd41d8cd98f00b204e9800998ecf8427e  /dev/null\n");
    EXPECT_EQ(atelis("md5 - </dev/null").output, "d41d8cd98f00b204e9800998ecf8427e  -\n");
    const Outcome outcome = atelis("md5 /nonexistent /dev/null /");
    EXPECT_EQ(outcome.errors + outcome.output,
              "atelis: error: cannot open /nonexistent\natelis: error: cannot read /\n"
              "d41d8cd98f00b204e9800998ecf8427e  /dev/null\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(atelis("md5").status, 2);
}

}  // namespace
