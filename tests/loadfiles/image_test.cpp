#include "loadfiles/image.h"

#include "loadfiles/image_files.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace loadfiles_test;

/// A file of these lines of a listing.
std::unique_ptr<LoadFileInterface> listing(const Directory& directory, const std::string& text) {
    return readLoadFile(Format::Hex, directory.write("f.lst", text));
}

TEST(Contiguous, FillsTheGaps) {
    const Directory directory;
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"", ""},
        {"00000100 01 02\n00000104 03\n", "100:0102FFFF03"},
        {"00000104 03\n00000100 01 02\n", "100:0102FFFF03"},
        {"00000100 01 02 03\n00000101 09\n", "100:010903"},
        {"00000101 09\n00000100 01 02 03\n", "100:010203"},
        {"FFFFFFFF 01 02\n", "ffffffff:0102"},
    };
    for (const auto& row : cases) {
        const auto file = listing(directory, row.text);
        file->makeContiguous(0xFF);
        EXPECT_EQ(print(*file), row.expected);
        for (const auto& section : file->sections()) EXPECT_STREQ(section->name(), "Contiguous section");
    }
    const auto tooLarge = listing(directory, "00000000 01\nFFFFFFFF 02\n");
    EXPECT_THROW(tooLarge->makeContiguous(0), support::HException);
    EXPECT_EQ(print(*tooLarge), "0:01 ffffffff:02");
}

TEST(Image, FindsTheLargestGap) {
    const Directory directory;
    const struct {
        const char* text;
        AddressRange gap;
        AddressRange extent;
    } cases[] = {
        {"", {0, 0}, {0, 0}},
        {"00000100 01\n", {0, 0}, {0x100, 0x101}},
        {"00000200 01\n00000100 01\n00000110 01\n", {0x111, 0x200}, {0x100, 0x201}},
        {"00000000 01 02 03 04\n00000001 09\n00000005 01\n", {4, 5}, {0, 6}},
        {"FFFFFFFF 01 02\n00000000 01\n", {1, 0xFFFFFFFF}, {0, 0x100000001}},
    };
    for (const auto& row : cases) {
        const auto file = listing(directory, row.text);
        EXPECT_EQ(largestGap(file->sections()), row.gap) << row.text;
        EXPECT_EQ(extentOf(file->sections()), row.extent) << row.text;
    }
}

std::string differences(const Directory& directory, const std::string& a, const std::string& b) {
    const auto first = listing(directory, a);
    const auto second = listing(directory, b);
    std::string text;
    compareImages(first->sections(), second->sections(), [&text](Difference difference, AddressRange range) {
        text += "!<>"[static_cast<int>(difference)] + std::to_string(range.start) + "+" +
                std::to_string(range.size()) + " ";
    });
    return text;
}

TEST(Image, TellsDifferences) {
    const Directory directory;
    const struct {
        const char* first;
        const char* second;
        const char* expected;
    } cases[] = {
        {"", "", ""},
        {"00000001 01 02\n", "00000001 01\n00000002 02\n", ""},
        {"00000001 01\n", "", "<1+1 "},
        {"", "00000001 01\n00000002 02\n00000009 01\n", ">1+2 >9+1 "},
        {"00000001 01 02 03 04 05\n", "00000001 01 09 09 04 09\n", "!2+2 !5+1 "},
        {"00000001 01 02 03\n", "00000002 02\n00000003 09 09\n", "<1+1 !3+1 >4+1 "},
        {"00000000 01 02 03 04\n", "00000001 09\n00000002 09\n", "<0+1 !1+2 <3+1 "},
        // The later of two sections wins.
        {"00000000 01 02 03 04\n00000001 09 09\n", "00000000 01 09 09 04\n", ""},
        {"00000001 09 09\n00000000 01 02 03 04\n", "00000000 01 02 03 04\n", ""},
        {"00000002 07 08 09\n00000001 05 06\n00000000 01 02\n", "00000000 01 02 06 08 09\n", ""},
        {"FFFFFFFF 01 02\n", "FFFFFFFF 01\n", "<4294967296+1 "},
    };
    for (const auto& row : cases)
        EXPECT_EQ(differences(directory, row.first, row.second), row.expected) << row.first << row.second;
}

TEST(Image, HandlesAMillionSections) {
    const Directory directory;
    std::string text;
    for (std::uint32_t i = 0; i < 1'000'000; ++i) {
        char line[32];
        std::snprintf(line, sizeof line, "@%X\n%02X\n", (i * 7919U % 1'000'000U) * 2U, i % 256U);
        text += line;
    }
    const auto start = std::chrono::steady_clock::now();
    const auto file = readLoadFile(Format::TIHex, directory.write("f.txt", text + "q"));
    ASSERT_EQ(file->sections().size(), 1'000'000);
    file->sortSections();
    EXPECT_EQ(file->sections().back()->address(), 1'999'998);
    file->makeContiguous(0);
    EXPECT_EQ(file->sections().front()->size(), 1'999'999);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
