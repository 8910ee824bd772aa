#include "cli/program.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace cli_test;

class ImageCommand : public testing::Test {
protected:
    ImageCommand() {
        std::string pattern = (std::filesystem::temp_directory_path() / "image-XXXXXX").string();
        std::filesystem::current_path(::mkdtemp(pattern.data()));
        write("a.lst", "00000100 01 02\n00000104 03\n");
        write("a.bin", "abc");
        write("far.lst", "00000000 01\nF0000000 02\n");
        write("wraps.lst", "FFFFFFFF 01 02\n");
        write("bad.hex", ":00000001FE\n");
        write("a.hex", ":0100000001FE\n:0400000508000131BD\n:00000001FF\n");
    }

    ~ImageCommand() override {
        const std::filesystem::path directory = std::filesystem::current_path();
        std::filesystem::current_path("/");
        std::filesystem::remove_all(directory);
    }

    static void write(const std::string& name, const std::string& text) { std::ofstream(name) << text; }

    static std::string read(const std::string& name) {
        std::ifstream stream(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

struct Case {
    const char* words;
    int status;
    const char* output;
};

void check(std::initializer_list<Case> cases) {
    for (const Case& row : cases) {
        const Outcome outcome = atelis(std::string("image ") + row.words);
        EXPECT_EQ(outcome.errors + outcome.output, row.output) << row.words;
        EXPECT_EQ(outcome.status, row.status) << row.words;
    }
}

TEST_F(ImageCommand, ListsSections) {
    check({
        {"info a.lst", 0, "0x00000100 0x00000002\n0x00000104 0x00000001\n"},
        {"info a.hex", 0, "0x00000000 0x00000001\nentry 0x08000131\n"},
        {"info a.bin --address 0x8000", 0, "0x00008000 0x00000003 data\n"},
        {"info - --from lst <a.lst", 0, "0x00000100 0x00000002\n0x00000104 0x00000001\n"},
        {"info a.lst --from bin", 0, "0x00000000 0x0000001b data\n"},
        {"info bad.hex", 1, "atelis: error: invalid checksum : line 1\n"},
        {"info none.hex", 1, "atelis: error: cannot open none.hex\n"},
    });
}

TEST_F(ImageCommand, Converts) {
    check({
        {"convert a.lst -  --to txt", 0, "@00000100\n01 02\n@00000104\n03\nq\n"},
        {"convert a.lst a.HEX", 0, ""},
        {"convert a.bin - --to lst --address 0x1000", 0, "00001000 61 62 63\n"},
        {"convert a.hex out.s19", 0,
         "atelis: warning: only the low 16 bits of the entry point 0x08000131 are written\n"},
        {"convert a.hex out.lst --entry 0x10", 0,
         "atelis: warning: the entry point 0x00000010 is not written: only srec has one\n"},
        {"convert a.lst out.srec --entry 0x1234", 0, ""},
        {"convert a.lst a.bin", 0, ""},
        {"compare a.lst a.bin --address 0x100", 1, "> 0x00000102 0x00000002\n"},
        {"convert a.lst zero.bin --fill 0", 0, ""},
    });
    EXPECT_EQ(read("a.HEX"), ":020100000102FA\n:0101040003F7\n:00000001FF\n");
    EXPECT_EQ(read("out.srec"), "S0096F75742E73726563C3\nS10501000102F6\nS104010403F3\nS9031234B6\n");
    EXPECT_EQ(read("a.bin"), "\1\2\xFF\xFF\3");
    EXPECT_EQ(read("zero.bin"), std::string("\1\2\0\0\3", 5));
}

TEST_F(ImageCommand, RefusesWhatItCannotConvert) {
    write("out.bin", "old");
    check({
        {"convert far.lst out.bin", 1,
         "atelis: error: the gap from 0x00000001 to 0xf0000000 makes a binary of more than 1 GiB\n"},
        {"convert far.lst far.hex", 0, ""},
        {"convert wraps.lst out.hex", 1, "atelis: error: the section at 0xffffffff runs past 4 GiB\n"},
        {"convert a.bin out.hex --address 0xfffffffe", 1,
         "atelis: error: the section at 0xfffffffe runs past 4 GiB\n"},
        {"convert bad.hex out.bin", 1, "atelis: error: invalid checksum : line 1\n"},
        {"convert a.lst none/out.hex", 1, "atelis: error: cannot write none/out.hex\n"},
        {"convert a.lst none/out.bin", 1, "atelis: error: cannot write none/out.bin\n"},
        {"convert a.lst /dev/full --to hex", 1, "atelis: error: cannot write /dev/full\n"},
        {"convert a.lst /dev/full --to bin", 1, "atelis: error: cannot write /dev/full\n"},
    });
    EXPECT_EQ(read("out.bin"), "old");
    EXPECT_FALSE(std::filesystem::exists("out.hex"));
    for (const char* words :
         {"convert a.lst out", "convert a.lst out.elf", "convert a.lst out.hex --to elf", "convert a.lst", "",
          "info", "convert a.lst out.bin --fill 256", "convert a.lst out.bin --fill -1",
          "info a.bin --address 0x100000000", "info a.bin --address 12x", "convert a.lst out.srec --entry -1",
          "info - <a.lst"}) {
        const Outcome outcome = atelis(std::string("image ") + words);
        EXPECT_EQ(outcome.status, 2) << words << outcome.output;
    }
    EXPECT_EQ(atelis("image info a.elf").errors,
              "atelis: error: no format goes with the name \"a.elf\": name one with --from\n");
    EXPECT_EQ(read("out.bin"), "old");
}

TEST_F(ImageCommand, Compares) {
    write("b.lst", "000000FF 00 01 09\n00000105 07\n");
    check({
        {"compare a.lst a.lst", 0, ""},
        {"compare a.lst b.lst", 1,
         "> 0x000000ff 0x00000001\n0x00000101 0x00000001\n< 0x00000104 0x00000001\n> 0x00000105 "
         "0x00000001\n"},
        {"compare - b.lst --from lst <b.lst", 0, ""},
        {"compare a.lst none.lst", 1, "atelis: error: cannot open none.lst\n"},
    });
}

}  // namespace
