#include "package/archive_fixture.h"
#include "package/target.h"

#include <QDir>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace package_test;

class ExtractTest : public ArchiveTest {
protected:
    /// An archive of version 2 of one entry.
    std::unique_ptr<PackageArchive> archiveOf(const std::string& name, std::uint32_t mode = 0100640) {
        const auto start = static_cast<std::uint32_t>(38 + name.size());
        put("archive", file2(stream2(1, entry2(name, start, 3, mode, 1'000'000) + "abc")));
        return std::make_unique<PackageArchive>(path("archive"));
    }
    std::string faultOfExtracting(const std::string& name, bool overwrite = false) {
        const auto archive = archiveOf(name);
        return faultOf([&] { archive->extract(archive->files()[0].get(), path("out"), overwrite); });
    }
    std::size_t countOfFiles(const char* name) {
        return static_cast<std::size_t>(
            QDir(path(name))
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
                .size());
    }
};

TEST_F(ExtractTest, WritesContentsTimeAndMode) {
    for (const std::uint32_t mode : {0100640U, 0100444U, 0107777U, 0U}) {
        const auto archive = archiveOf("d/e/f", mode);
        archive->extract(archive->files()[0].get(), path("out"), true);
        EXPECT_EQ(status("out/d/e/f").st_mode & ALLPERMS, mode & 0777);
        EXPECT_EQ(status("out/d/e/f").st_mtime, 1'000'000);
        EXPECT_EQ(status("out/d/e/f").st_atime, 1'000'000);
        EXPECT_EQ(status("out/d/e/f").st_size, 3);
        EXPECT_EQ(countOfFiles("out/d/e"), 1U) << "nothing is left beside it";
    }
    put("one", stream1(1, entry1("f", 1048, 0)));
    PackageArchive one(path("one"));
    one.extractTo(one.files()[0].get(), path("new/place"), false);
    EXPECT_EQ(status("new/place").st_mode & ALLPERMS, 0666U);
}

TEST_F(ExtractTest, OverwritesWhenAsked) {
    put("out/f", "old");
    mark("out/f", 0444, 5);
    EXPECT_EQ(faultOfExtracting("f"), "cannot overwrite file " + path("out/f").toStdString());
    EXPECT_EQ(get("out/f"), "old");
    EXPECT_EQ(faultOfExtracting("f", true), "");
    EXPECT_EQ(get("out/f"), "abc");
    put("out/g/h", "");
    EXPECT_EQ(faultOfExtracting("g", true), "cannot create output file " + path("out/g").toStdString());
    EXPECT_EQ(faultOfExtracting("f/x", true), "cannot create output file " + path("out/f/x").toStdString());
    EXPECT_EQ(countOfFiles("out"), 2U);
}

TEST_F(ExtractTest, StaysBelowItsDirectory) {
    QDir().mkpath(path("out/real"));
    put("outside/f", "theirs");
    ASSERT_EQ(::symlink("../outside", path("out/link").toLocal8Bit().constData()), 0);
    ASSERT_EQ(::symlink("../outside/f", path("out/f").toLocal8Bit().constData()), 0);
    ASSERT_EQ(::symlink("../outside/none", path("out/dangling").toLocal8Bit().constData()), 0);
    ASSERT_EQ(::symlink("real", path("out/inward").toLocal8Bit().constData()), 0);
    using std::string_literals::operator""s;
    const std::string refused[] = {
        "/abs",
        "..",
        "../f",
        "a/../../f",
        "a/b/../../../outside/f",
        "a/..",
        ".",
        "",
        "a\0b"s,
        "\0"s,
        "C:/f",
        "\\f",
        "..\\f",
        "//f",
        "link/f",
        "link/a/b",
        "./../f",
        "f",
        "dangling",
        "inward/f",
        "real/../link/f",
        "link",
        std::string(4096, 'n'),
    };
    for (const std::string& name : refused) {
        const std::string fault = "cannot extract file " + name;
        EXPECT_EQ(faultOfExtracting(name, true), fault);
        EXPECT_EQ(faultOf([&] { archiveOf(name)->checkNames(path("out")); }), fault);
        EXPECT_EQ(faultOf([&] { TargetDirectory(path("out")).target(q(name)); }), fault);
    }
    EXPECT_EQ(countOfFiles("outside") + countOfFiles("out"), 1U + 5U);
    EXPECT_EQ(get("outside/f"), "theirs");

    const std::pair<const char*, const char*> taken[] = {
        {"..a", "out/..a"}, {"a/../b", "out/b"}, {"./c//d", "out/c/d"}, {"real/f", "out/real/f"}};
    for (const auto& [name, place] : taken) {
        EXPECT_EQ(faultOfExtracting(name), "");
        EXPECT_EQ(get(place), "abc");
    }
    // How the directory itself is reached is the user's affair.
    const auto archive = archiveOf("x");
    archive->extract(archive->files()[0].get(), path("out/inward"), false);
    EXPECT_EQ(get("out/real/x"), "abc");
    archive->extract(archive->files()[0].get(), path("out/link/../made"), false);
    EXPECT_EQ(get("made/x"), "abc");
}

TEST_F(ExtractTest, LeavesTheOldFileWhenItFails) {
    put("out/f", "old");
    const std::string large(600'000, 'c');
    const std::string stream = stream1(1, entry1("f", 1048, 600'000) + large);
    put("cut", file1(stream.substr(0, stream.size() - 1)));
    PackageArchive archive(path("cut"));
    EXPECT_EQ(faultOf([&] { archive.extract(archive.files()[0].get(), path("out"), true); }),
              "error reading stream");
    EXPECT_EQ(get("out/f"), "old");
    EXPECT_EQ(countOfFiles("out"), 1U);
    archive.load(put("whole", file1(stream)));
    archive.extract(archive.files()[0].get(), path("out"), true);
    EXPECT_EQ(get("out/f"), large);
}

}  // namespace
