#include "manifest/canonical_path.h"
#include "manifest/path_hash.h"

#include <gtest/gtest.h>

namespace {

using namespace manifest;

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

TEST(CanonicalPath, DropsDotsAndDoubledSeparatorsAndNotesBackslashes) {
    const struct {
        std::string written;
        std::string canonical;
        std::uint64_t slashBits = 0;
    } rows[] = {
        {"foo", "foo"},
        {"foo/./bar", "foo/bar"},
        {"./foo", "foo"},
        {"foo/../bar", "bar"},
        {"../foo", "../foo"},
        {"../../foo/..", "../.."},
        {"foo/..", "."},
        {"foo/../..", ".."},
        {"a/b/../../..", ".."},
        {"a//b", "a/b"},
        {"a///b//", "a/b"},
        {"a/", "a"},
        {"a/.", "a"},
        {".", "."},
        {"./", "."},
        {"././.", "."},
        {"..", ".."},
        {"../", ".."},
        {".hidden/..x/...", ".hidden/..x/..."},
        {"/", ""},
        {"\\", ""},
        {"//", "/"},
        {"/a", "/a"},
        {"/a/..", ""},
        {"/..", "/.."},
        {"//server/x", "//server/x"},
        {"///server/x", "//server/x"},
        {"\\\\server\\x", "//server/x", 7},
        {"a\\b/c", "a/b/c", 1},
        {"a/b\\c", "a/b/c", 2},
        {"a\\.\\b", "a/b", 1},
        {"a\\..\\b\\c", "b/c", 1},
        {"a\\", "a"},
        {"c:\\x y\\", "c:/x y", 1},
        {repeated("a/", 60), repeated("a/", 59) + "a"},
        {repeated("../", 100) + "a", repeated("../", 100) + "a"},
        {repeated("..\\", 65) + "a", repeated("../", 65) + "a", ~std::uint64_t{0}},
        {repeated("a/../", 1000) + "b", "b"},
    };
    for (const auto& row : rows) {
        std::string path = row.written;
        std::uint64_t slashBits = 99;
        std::string error;
        EXPECT_TRUE(canonicalizePath(&path, &slashBits, &error)) << row.written;
        EXPECT_EQ(path, row.canonical) << row.written;
        EXPECT_EQ(slashBits, row.slashBits) << row.written;
    }
}

TEST(CanonicalPath, RefusesAnEmptyPath) {
    std::string path;
    std::uint64_t slashBits = 0;
    std::string error;
    EXPECT_FALSE(canonicalizePath(&path, &slashBits, &error));
    EXPECT_EQ(error, "empty path");
}

TEST(CanonicalPathDeathTest, EndsTheProcessAtTheComponentBehindTheLimit) {
    std::string path = repeated("a/", 61) + repeated("../", 60);
    std::uint64_t slashBits = 0;
    std::string error;
    const std::string message = "ninja: fatal: path has too many components : " + path + "\n";
    EXPECT_EXIT(canonicalizePath(&path, &slashBits, &error), testing::ExitedWithCode(1), message);
}

TEST(PathHash, IsMurmurHash2) {
    // Computed with a separate implementation in Python.
    const struct {
        std::string_view path;
        std::uint32_t hash;
    } rows[] = {
        {"", 0xAC97F5AF},
        {"a", 0xF2D358ED},
        {"ab", 0xF2574EA3},
        {"abc", 0xBC52EAFB},
        {"abcd", 0x924FCD64},
        {"main.c.o", 0xDE6AA1AA},
        {"\xff\x80 path/x", 0x9EE400B2},
    };
    for (const auto& row : rows) EXPECT_EQ(hashPath(row.path), row.hash) << row.path;
}

}  // namespace
