#include "loadfiles/image_files.h"

#include <gtest/gtest.h>

namespace {

using namespace loadfiles_test;

struct Case {
    Format format;
    std::vector<Chunk> chunks;
    std::uint32_t start;
    std::string text;  ///< without an S-record header
};

const std::string seventeen("\0\1\2\3\4\5\6\7\10\11\12\13\14\15\16\17\20", 17);
const std::string sixteen = seventeen.substr(0, 16);

// clang-format off
const Case cases[] = {
    {Format::Hex, {}, 0, ""},
    {Format::IntelHex, {}, 0, ":00000001FF\n"},
    {Format::SRecord, {}, 0, "S9030000FC\n"},
    {Format::TIHex, {}, 0, "q\n"},

    {Format::Hex, {{0x1000, "\xAA\xBB"}}, 0x123, "00001000 AA BB\n"},
    {Format::Hex, {{0, seventeen}}, 0, "00000000 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F\n00000010 10\n"},
    {Format::Hex, {{0xFFFFFFFF, "\1"}}, 0, "FFFFFFFF 01\n"},

    {Format::IntelHex, {{0, seventeen}}, 0x123, ":10000000000102030405060708090A0B0C0D0E0F78\n:0100100010DF\n:00000001FF\n"},
    {Format::IntelHex, {{0xFFF8, sixteen}}, 0, ":08FFF8000001020304050607E5\n:020000040001F9\n:0800000008090A0B0C0D0E0F9C\n:00000001FF\n"},
    {Format::IntelHex, {{0x80000000, "\1"}, {0x80000010, "\2"}, {0, "\3"}}, 0, ":0200000480007A\n:0100000001FE\n:0100100002ED\n:020000040000FA\n:0100000003FC\n:00000001FF\n"},
    {Format::IntelHex, {{0xFFFFFFFF, "\1"}}, 0, ":02000004FFFFFC\n:01FFFF000100\n:00000001FF\n"},

    {Format::SRecord, {{0, seventeen}}, 0x12345678, "S1130000000102030405060708090A0B0C0D0E0F74\nS104001010DB\nS90356782E\n"},
    {Format::SRecord, {{0xFFFF, "\1"}}, 0, "S104FFFF01FC\nS9030000FC\n"},
    {Format::SRecord, {{0x10000, "\1"}}, 0, "S20501000001F8\nS9030000FC\n"},
    {Format::SRecord, {{0xFFFFFE, "\1"}}, 0, "S205FFFFFE01FD\nS9030000FC\n"},
    {Format::SRecord, {{0xFFFFFF, "\1"}}, 0, "S30600FFFFFF01FB\nS9030000FC\n"},
    {Format::SRecord, {{0xFFFFFFFF, "\1"}}, 0, "S306FFFFFFFF01FC\nS9030000FC\n"},

    {Format::TIHex, {{0, seventeen}}, 0x123, "@00000000\n00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F\n10\nq\n"},
    {Format::TIHex, {{0xF000, "\1\2"}, {0xF010, "\3"}}, 0, "@0000F000\n01 02\n@0000F010\n03\nq\n"},
    {Format::TIHex, {{0xFFFFFFFF, "\1"}}, 0, "@FFFFFFFF\n01\nq\n"},
    // The current address in mid-line does not break the line.
    {Format::TIHex, {{2, "\1"}, {3, "\2"}}, 0, "@00000002\n01 02\nq\n"},
    {Format::Hex, {{2, "\1"}, {3, "\2"}}, 0, "00000002 01 02\n"},
};
// clang-format on

TEST(CodeBuffer, WritesEachFormat) {
    const Directory directory;
    for (const Case& row : cases) {
        write(*makeCodeBuffer(row.format, directory.file("out")), row.chunks, row.start);
        std::string text = directory.read("out");
        if (row.format == Format::SRecord) text.erase(0, text.find('\n') + 1);
        EXPECT_EQ(text, row.text);
    }
}

TEST(CodeBuffer, PutsRunsAsItPutsBytes) {
    const Directory directory;
    const std::string bytes(70'000, 'x');
    for (const Format format : {Format::Hex, Format::IntelHex, Format::SRecord, Format::TIHex}) {
        write(*makeCodeBuffer(format, directory.file("a")), {{0xFFF3, bytes}});
        const std::string whole = directory.read("a");
        {
            const auto buffer = makeCodeBuffer(format, directory.file("a"));
            buffer->setAddress(0xFFF3);
            for (const char byte : bytes) buffer->putByte(static_cast<std::uint8_t>(byte));
            buffer->finish(0);
            EXPECT_TRUE(buffer->flush());
        }
        EXPECT_EQ(directory.read("a"), whole);
        EXPECT_EQ(chunksOf(*readLoadFile(format, directory.file("a"))),
                  (std::vector<Chunk>{{0xFFF3, bytes}}));
    }
}

TEST(CodeBuffer, SRecordHeaderHoldsThePath) {
    const std::filesystem::path before = std::filesystem::current_path();
    const Directory directory;
    std::filesystem::current_path(directory.file(""));
    makeCodeBuffer(Format::SRecord, "a.s")->finish(0);
    EXPECT_EQ(directory.read("a.s"), "S004612E73F9\nS9030000FC\n");

    std::string longPath = "./";
    while (longPath.size() < 400) longPath += "././";
    makeCodeBuffer(Format::SRecord, longPath + "b.s")->finish(0);
    const std::string header = directory.read("b.s").substr(0, 6);
    EXPECT_EQ(header, "S0FF2E");
    EXPECT_EQ(printFile(Format::SRecord, "b.s"), "@0");
    std::filesystem::current_path(before);
}

TEST(CodeBuffer, DropsWhatItCannotWrite) {
    for (const char* path : {"/nonexistent/a", "/", "/dev/full"})
        for (const Format format : {Format::Hex, Format::IntelHex, Format::SRecord, Format::TIHex}) {
            const auto buffer = makeCodeBuffer(format, path);
            write(*buffer, {{0, seventeen}});
            EXPECT_FALSE(buffer->flush()) << path;
        }
}

}  // namespace
