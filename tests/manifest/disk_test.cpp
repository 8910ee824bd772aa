#include "manifest/real_disk_interface.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace manifest;
using Status = FileReader::Status;

class Disk : public testing::Test {
protected:
    Disk() {
        std::string name = testing::TempDir() + "diskXXXXXX";
        folder = ::mkdtemp(name.data());
        folder += "/";
    }
    ~Disk() override { std::filesystem::remove_all(folder); }

    std::string folder;
    RealDiskInterface disk;
    std::string contents = "before";
    std::string error = "before";
};

TEST_F(Disk, ReadsWhatItWrote) {
    for (const std::size_t size : {0, 1, 65535, 65536, 65537, 200000}) {
        const std::string written(size, 'x');
        EXPECT_TRUE(disk.writeFile(folder + "f", written));
        EXPECT_EQ(disk.readFile(folder + "f", &contents, &error), Status::Okay);
        EXPECT_EQ(contents, written);
        EXPECT_EQ(error, "");
    }
}

TEST_F(Disk, TellsWhyAReadFailed) {
    EXPECT_EQ(disk.readFile(folder + "no", &contents, &error), Status::NotFound);
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_EQ(disk.readFile(folder, &contents, &error), Status::NotFound);
    EXPECT_EQ(error, "Is a directory");
    EXPECT_EQ(contents, "");
    EXPECT_EQ(disk.readFile("/proc/self/mem", &contents, &error), Status::OtherError);
    EXPECT_EQ(error, "Input/output error");
}

TEST_F(Disk, AnswersTimesWithAndWithoutTheCache) {
    const std::string file = folder + "File.txt";
    ASSERT_TRUE(disk.writeFile(file, "x"));
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    const auto expected = static_cast<TimeStamp>(status.st_mtime + 11644473600 - 12622770400);
    for (const bool cache : {false, true}) {
        disk.useCache(cache);
        EXPECT_EQ(disk.stat(file, &error), expected);
        EXPECT_EQ(disk.stat(folder + "no", &error), 0);
        EXPECT_EQ(disk.stat(folder + "no/such", &error), 0);
        EXPECT_EQ(disk.stat(file + "/below", &error), 0);
    }
    EXPECT_EQ(disk.stat(folder + "FILE.TXT", &error), expected) << "the cache takes no notice of case";
    EXPECT_EQ(error, "before");
}

TEST_F(Disk, RefusesToStatALongName) {
    EXPECT_EQ(disk.stat(std::string(260, 'a'), &error), -1);
    EXPECT_EQ(error, "GetFileAttributesEx(" + std::string(260, 'a') + "): File name too long");
    EXPECT_EQ(disk.stat(std::string(261, 'a'), &error), -1);
    EXPECT_EQ(error, "Stat(" + std::string(261, 'a') + "): Filename longer than 260 characters");
    disk.useCache(true);
    EXPECT_EQ(disk.stat(std::string(256, 'a') + "/b", &error), -1);
    EXPECT_EQ(error, "FindFirstFileExA(" + std::string(256, 'a') + "/): File name too long");
}

TEST_F(Disk, MakesAndRemoves) {
    EXPECT_TRUE(disk.makeDir(folder + "d"));
    EXPECT_TRUE(disk.makeDir(folder + "d"));
    EXPECT_TRUE(disk.writeFile(folder + "f", ""));
    EXPECT_EQ(disk.removeFile(folder + "f"), 0);
    EXPECT_EQ(disk.removeFile(folder + "f"), 1);
}

TEST_F(Disk, PrintsWhyItFailed) {
    ASSERT_TRUE(disk.writeFile(folder + "f", ""));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(disk.makeDir(folder + "f"));
    EXPECT_FALSE(disk.makeDir(folder + "no/d"));
    EXPECT_FALSE(disk.writeFile(folder + "no/f", ""));
    EXPECT_FALSE(disk.writeFile("/dev/full", std::string(100000, 'x')));
    EXPECT_FALSE(disk.writeFile("/dev/full", "x"));
    EXPECT_EQ(disk.removeFile(folder), -1);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "ninja: error: mkdir(" + folder + "f): File exists\n" + "ninja: error: mkdir(" + folder +
            "no/d): No such file or directory\n" + "ninja: error: WriteFile(" + folder +
            "no/f): Unable to create file. No such file or directory\n" +
            "ninja: error: WriteFile(/dev/full): Unable to write to the file. No space left on device\n" +
            "ninja: error: WriteFile(/dev/full): Unable to close the file. No space left on device\n" +
            "ninja: error: remove(" + folder + "): Is a directory\n");
}

}  // namespace
