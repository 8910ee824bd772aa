#include "support/log.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace support;

TEST(Log, WritesLevelTextAndLineFeedAndNothingForAnEmptyText) {
    testing::internal::CaptureStdout();
    logMessage(LogLevel::Warning, LogLineFeed, "no file %s", "a.c");
    logMessage(LogLevel::Error, LogNoFlags, "%d", 7);
    logMessage(LogLevel::Error, LogLineFeed, "%s", "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "warning: no file a.c\nerror: 7");
}

TEST(Log, CutsATextAtTheBufferSize) {
    testing::internal::CaptureStdout();
    logMessage(LogLevel::Error, LogNoFlags, "%s", std::string(100000, 'x').c_str());
    EXPECT_EQ(testing::internal::GetCapturedStdout().size(), std::string("error: ").size() + 65535);
}

}  // namespace
