#include "loadfiles/binary_load_file.h"
#include "loadfiles/image_files.h"

#include <gtest/gtest.h>

namespace {

using namespace loadfiles_test;

struct Case {
    std::string text;
    std::string expected;
};

void check(Format format, const std::vector<Case>& cases) {
    const Directory directory;
    for (const Case& row : cases)
        EXPECT_EQ(printFile(format, directory.write("f", row.text)), row.expected) << row.text;
}

std::string repeat(const std::string& text, int times) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}

const std::string nul(1, '\0');

TEST(HexLoadFile, ReadsLines) {
    // clang-format off
    check(Format::Hex, {
        {"", ""},
        {"00001000 AA BB\n", "1000:AABB"},
        {"00001000 aa Bb", "1000:AABB"},
        {"00001000 AA\r\n00001001 BB\r\n", "1000:AABB"},
        {"00001000 AA \r\n00001001 BB \n", "1000:AABB"},
        {"00001000 AA \n", "1000:AA"},
        {"00001000\n", ""},
        {"0000100\n", "invalid ASCII encoded byte : line 1"},
        {"000010\n", "invalid address : line 1"},
        {"00001000 AA\n\n", "invalid address : line 2"},
        {"0000100G AA\n", "invalid ASCII encoded byte : line 1"},
        {"00001000 AA-BB\n", "invalid seperator : line 1"},
        {"00001000\tAA\n", "invalid seperator : line 1"},
        {"00001000 A" + nul + "\n", "invalid ASCII encoded byte : line 1"},
        {"00001000 AA" + nul + "BB\n", "invalid seperator : line 1"},
        {"00001000 A\n", "invalid ASCII encoded byte : line 1"},
        {"FFFFFFFF 01\n00000000 02\n", "ffffffff:01 0:02"},
        {"FFFFFFFF 01 02\n00000001 03\n", "ffffffff:0102 1:03"},
        {"00000000 " + repeat("11 ", 16) + "\n00000010 22\n", "0:" + repeat("11", 16) + "22"},
        {"00000000" + repeat(" 11", 19) + "\n", "invalid address : line 1"},
        {"00000000" + repeat(" 11", 40) + "\n", "invalid ASCII encoded byte : line 1"},
    });
    // clang-format on
}

TEST(IntelHexLoadFile, ReadsRecords) {
    const std::string end = ":00000001FF\n";
    // clang-format off
    check(Format::IntelHex, {
        {end, ""},
        {":020000040800F2\n:01000000AA55\n" + end, "8000000:AA"},
        {":020000040800F2\r\n:01000000AA55\r\n:00000001FF", "8000000:AA"},
        {":020000021000EC\n:01000000AA55\n" + end, "10000:AA"},
        // Both bases stay until they change.
        {":020000021000EC\n:020000040800F2\n:01000000AA55\n" + end, "8010000:AA"},
        {":01000000AA55\n:01000100BB43\n:01000300CC30\n" + end, "0:AABB 3:CC"},
        {":01000000aa55\n" + end, "0:AA"},
        {":0000000000\n" + end, ""},
        // Across 64 KiB within a record, and across 4 GiB.
        {":02FFFF000102FD\n" + end, "ffff:0102"},
        {":02000004FFFFFC\n:02FFFF000102FD\n" + end, "ffffffff:0102"},
        {":040000030000380070C1\n" + end, "invalid checksum : line 1"},
        {":0400000300003800C1\n" + end, "@3800"},
        {":04000005080001312D\n" + end, "invalid checksum : line 1"},
        {":0400000508000131BD\n" + end, "@8000131"},
        {":01000000AA55\n" + end + "anything\n", "0:AA"},
        {":00000006FA\n" + end, ""},
        {":01000006AAFA\n" + end, "invalid checksum : line 1"},
        {"", "invalid end of file in hex file : line 1"},
        {":01000000AA55\n", "invalid end of file in hex file : line 2"},
        {":01000000AA55", "invalid end of file in hex file : line 2"},
        {"\n" + end, "missing record mark in hex file : line 1"},
        {":01000000AA55\n\n" + end, "missing record mark in hex file : line 2"},
        {repeat(":01000000AA55\n", 6) + ":01000000AA56\n", "invalid checksum : line 7"},
        {":02000000AA55\n", "invalid ASCII encoded byte : line 1"},
        {":FF000000AA55\n", "invalid ASCII encoded byte : line 1"},
        {":00000000AA55\n", "invalid checksum : line 1"},
        {":01000000A\n", "invalid ASCII encoded byte : line 1"},
        {":" + nul, "invalid ASCII encoded byte : line 1"},
        {":\n", "invalid ASCII encoded byte : line 1"},
        {":01000000AA55" + repeat(" ", 515) + "\n" + end, "0:AA"},
        {":01000000AA55" + repeat(" ", 516) + "\n" + end, "missing record mark in hex file : line 1"},
        {repeat("\n:", 3), "missing record mark in hex file : line 1"},
    });
    // clang-format on
}

TEST(SRecordLoadFile, ReadsRecords) {
    // clang-format off
    check(Format::SRecord, {
        {"", ""},
        {"S104FFFF01FC\n", "ffff:01"},
        {"S20501000001F8\n", "10000:01"},
        {"S306FFFFFFFF01FC\n", "ffffffff:01"},
        {"S10400000AF1\r\nS10400010BEF\r\nS10400030CEC", "0:0A0B 3:0C"},
        {"S00600004844521B\nS10400000AF1\nS5030001FB\nS9030010EC\n", "0:0A @10"},
        {"S004612E73F9\nS8041234565F\n", "@123456"},
        {"S70508000131C0\n", "@8000131"},
        {"S9030010EC\nS10400000AF1\n", "0:0A @10"},
        {"S10400000AF1\nS5030002FA\n", "incorrect data record count : line 2"},
        {"S10400000AF1\nS5030001FC\n", "invalid checksum : line 2"},
        {"S10400000AF2\n", "invalid checksum : line 1"},
        {"S1030000FC\n", ""},
        {"S1020000FD\n", ""},
        {"S000FF\n", ""},
        {"S401FE\n", ""},
        {"S604200000DB\n", "invalid checksum : line 1"},
        {"S400FF\n", ""},
        {"\n", "no leading 'S' character : line 1"},
        {"S10400000AF1\ns10400000AF1\n", "no leading 'S' character : line 2"},
        {"S", "invalid ASCII encoded byte : line 1"},
        {"S1", "invalid ASCII encoded byte : line 1"},
        {"S1FF00000A\n", "invalid ASCII encoded byte : line 1"},
        {"S1040000GAF1\n", "invalid ASCII encoded byte : line 1"},
        {"S10400000AF1" + repeat(" ", 517), "0:0A"},
        {"S10400000AF1" + repeat(" ", 518), "no leading 'S' character : line 1"},
    });
    // clang-format on
    check(Format::SRecord,
          {{repeat("S10400000AF1\n", 65537) + "S5030001FB\n", repeat("0:0A ", 65536) + "0:0A"}});
}

TEST(TIHexLoadFile, ReadsLines) {
    // clang-format off
    check(Format::TIHex, {
        {"q", ""},
        {"@F000\nAA BB CC\nq\n", "f000:AABBCC"},
        {"@F000\nAA BB CC \nq\n", "f000:AABBCC"},
        {"@f000\r\naa bb\r\nCC\r\nq\r\n", "f000:AABBCC"},
        {"@f000\r\nAA BB CC \r\n\r\nDD\r\nq", "f000:AABBCCDD"},
        {"AA\n@10\nBB\n@1 comment\nCC\nquit", "0:AA 10:BB 1:CC"},
        {"@10\nAA\n@\nBB\nq", "10:AA 0:BB"},
        {"AA-BB" + nul + "CC\nq", "0:AABBCC"},
        {"@FFFFFFFF\n01\n02\nq", "ffffffff:01 0:02"},
        {"@0000000012345678\n01\nq", "12345678:01"},
        {"@100000000\n01\nq", "invalid address : line 1"},
        {"@12G\n01\nq", "invalid ASCII encoded byte : line 1"},
        {"", "unexpected end of file : line 1"},
        {"@F000\nAA BB CC\n", "unexpected end of file : line 3"},
        {"\nq", ""},
        {"AA\n \nq", "invalid ASCII encoded byte : line 2"},
        {"AA B\nq", "invalid ASCII encoded byte : line 1"},
        {"AG\nq", "invalid ASCII encoded byte : line 1"},
        // Pieces of a long line: 63 characters hold 21 whole bytes.
        {repeat("11 ", 50) + "\n22\nq", "0:" + repeat("11", 50) + "22"},
        {repeat("11 ", 21) + "1\nq", "invalid ASCII encoded byte : line 1"},
    });
    // clang-format on
}

TEST(LoadFile, ReportsFilesThatCannotBeRead) {
    for (const Format format :
         {Format::Binary, Format::SRecord, Format::IntelHex, Format::Hex, Format::TIHex}) {
        EXPECT_EQ(printFile(format, "/nonexistent/f"), "cannot open /nonexistent/f");
        EXPECT_EQ(printFile(format, "/tmp"), "cannot read /tmp");
    }
}

TEST(BinaryLoadFile, HasOneSectionAtTheLoadAddress) {
    const Directory directory;
    BinaryLoadFile file(directory.write("f.bin", std::string("a\r\n\0b", 5)));
    EXPECT_FALSE(file.hasAddresses());
    EXPECT_EQ(print(file), "0:610D0A0062");
    EXPECT_STREQ(file.sections().front()->name(), "data");

    const LoadFileSectionInterface* section = file.sections().front().get();
    file.setLoadAddress(0);
    EXPECT_EQ(file.sections().front().get(), section);
    file.setLoadAddress(0x8000);
    EXPECT_EQ(print(file), "8000:610D0A0062");
    file.makeContiguous(0);
    file.setLoadAddress(0x9000);
    EXPECT_EQ(print(file), "9000:610D0A0062");
    EXPECT_EQ(file.sections().size(), 1);

    for (const std::size_t size : {0, 65'535, 65'536, 65'537, 1'000'000})
        EXPECT_EQ(BinaryLoadFile(directory.write("g", std::string(size, 'x'))).sections().front()->size(),
                  size);
}

TEST(LoadFileSection, KeepsAWorkingCopyBesideItsBytes) {
    const Directory directory;
    BinaryLoadFile file(directory.write("f", "abc"));
    LoadFileSectionInterface& section = *file.sections().front();
    EXPECT_EQ(section.data(true), section.data(false));
    std::uint8_t* copy = section.makeWorkingCopy();
    copy[0] = 'x';
    EXPECT_EQ(section.makeWorkingCopy(), copy);
    EXPECT_EQ(section.data(true), copy);
    EXPECT_EQ(section.data(false)[0], 'a');
    section.dropWorkingCopy();
    EXPECT_EQ(section.data(true)[0], 'a');
}

TEST(LoadFile, KeepsItsQuestionsApart) {
    const Directory directory;
    const auto file = readLoadFile(Format::Hex, directory.write("f", "00000010 01\n00000000 02\n"));
    EXPECT_TRUE(file->hasAddresses());
    EXPECT_FALSE(file->reservedFlag());
    EXPECT_EQ(file->reservedText(), nullptr);
    EXPECT_TRUE(file->readSections());
    EXPECT_FALSE(file->hasEntryPoint());
    file->setEntryPoint(7);
    file->setLoadAddress(0x100);
    file->sortSections();
    EXPECT_EQ(print(*file), "0:02 10:01 @7");
}

TEST(Format, IsFoundByWordAndExtension) {
    EXPECT_EQ(formatOfWord("lst"), Format::Hex);
    EXPECT_EQ(formatOfWord("ihex"), std::nullopt);
    EXPECT_EQ(formatOfPath("dir.hex/a.MOT"), Format::SRecord);
    EXPECT_EQ(formatOfPath("a.b.ihx"), Format::IntelHex);
    EXPECT_EQ(formatOfPath("dir.hex/a"), std::nullopt);
    EXPECT_EQ(formatOfPath("a."), std::nullopt);
}

}  // namespace
