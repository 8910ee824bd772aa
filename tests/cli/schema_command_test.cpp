#include "cli/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace cli_test;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> linesOf(std::istream& text) {
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

/// Compares line by line, so that a fault shows as one row.
void expectFile(const std::string& output, const std::string& file) {
    std::ifstream expected(SCHEMA_DATA "/" + file);
    std::istringstream printed(output);
    const std::vector<std::string> wanted = linesOf(expected);
    const std::vector<std::string> got = linesOf(printed);
    EXPECT_EQ(got.size(), wanted.size());
    for (std::size_t i = 0; i < std::min(wanted.size(), got.size()); ++i) EXPECT_EQ(got[i], wanted[i]);
}

TEST(SchemaCommand, ListsEveryPropertyAndMacro) {
    for (const auto& [words, file] : {std::pair("schema", "schema.tsv"), {"schema --macros", "macros.tsv"}}) {
        const Outcome outcome = atelis(words);
        EXPECT_EQ(outcome.status, 0);
        expectFile(outcome.output, file);
    }
}

TEST(SchemaCommand, ShowsThePropertyThatAKeyFinds) {
    EXPECT_EQ(
        atelis("schema link_linker_script_file").output,
        "key\tlink_linker_script_file\nkind\tProjFileName\npage\tCode\ngroup\tLinker\n"
        "short name\tLinker Script File\ndefault\t\nspecial value\tLD (*.ld)\norder\t-330\nbuild kinds\t7\n"
        "flags\t\nvalues\t\nheadings\t\nminimum\t\nmaximum\t\n"
        "description\tThe name of the manual linker script file.\n");
    EXPECT_THAT(atelis("schema filter").output, HasSubstr("\nkind\tString\n"));
    EXPECT_THAT(atelis("schema build_output_file_name").output,
                HasSubstr("\nshort name\tLibrary File Name\n"));
    EXPECT_THAT(atelis("schema file_codec").output, HasSubstr("\nheadings\tCommon;Common;ISO;"));
}

TEST(SchemaCommand, FailuresSetTheStatus) {
    for (const char* key : {"nosuch", "date_created", "''", "'$(OutDir)'", "debug_additional_load_file0"}) {
        const Outcome outcome = atelis(std::string("schema ") + key);
        EXPECT_EQ(outcome.status, 1) << key;
        EXPECT_THAT(outcome.errors, StartsWith("atelis: error: no property \"")) << key;
    }
    EXPECT_EQ(atelis("schema nosuch").errors, "atelis: error: no property \"nosuch\"\n");
    EXPECT_EQ(atelis("schema --macros filter").status, 2);
    EXPECT_EQ(atelis("schema --unknown").status, 2);
    EXPECT_EQ(atelis("schema >/dev/full").status, 1);
}

}  // namespace
