// The commands that tell what a project is described by: memory maps, segments, properties; and `add`.
#include "cli/program.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace cli_test;

class DescribeCommand : public testing::Test {
protected:
    struct Row {
        const char* words;
        int status;
        const char* output;
        const char* errors = "";
    };

    DescribeCommand() {
        write("map.xml", R"(<!DOCTYPE Board_Memory_Definition_File>
<root name="board">
  <MemorySegment name="FLASH" start="0x08000000" size="0x10000" access="ReadOnly">
    <ProgramSection name=".text" start="+0x100" size="16"/>
  </MemorySegment>
  <if RAM="big"><MemorySegment name="RAM" start="0x20000000" size="$(N)*2"/></if>
  <MemorySegment name="none" start="1"/>
</root>
)");
        write("bad.xml", "<root>\n</rot>");
        write("line.xml", "<root></rot>");
        write("regs.xml", "<!DOCTYPE Register_Definition_File><r/>");
        write("s.qxProject", R"(<!DOCTYPE Kestrelhaus_Project_File>
<solution Name="s" target="8" version="2">
  <project Name="p">
    <folder Name="found" path="dir" filter="*.c;c" />
    <configuration Name="Common" linker_memory_map_file="map.xml" linker_memory_map_macros="RAM=big;N=8" project_type="Executable" />
  </project>
  <project Name="q">
    <configuration Name="Common" linker_section_placements_segments="A RX 0x10 0x10;bad;B RW 32 1" project_type="Staging" />
    <file file_name="a.c" />
  </project>
  <project Name="empty" />
</solution>
)");
    }
    void makeDirectory(const char* name) { QDir(directory.path()).mkdir(QString::fromLatin1(name)); }
    void write(const char* name, const std::string& text) {
        QFile file(directory.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
    }
    std::string read(const char* name) {
        QFile file(directory.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }
    Outcome run(const std::string& words) { return atelis(words, directory.path().toStdString()); }
    void check(const Row& row) {
        const Outcome outcome = run(row.words);
        EXPECT_EQ(outcome.status, row.status) << row.words;
        EXPECT_EQ(outcome.output, row.output) << row.words;
        std::string errors = outcome.errors;
        const std::string place = directory.path().toStdString() + "/";
        if (const std::size_t at = errors.find(place); at != std::string::npos)
            errors.erase(at, place.size());
        EXPECT_EQ(errors, row.errors) << row.words;
    }

    QTemporaryDir directory;
};

TEST_F(DescribeCommand, PrintsMemoryMaps) {
    const char* const flash = "0x08000000 0x00010000 ReadOnly FLASH\n0x00000001 0x00000000 ReadWrite none\n";
    const Row rows[] = {
        {"memory-map map.xml", 0, flash},
        {"memory-map map.xml --macros 'RAM=big;N=8'", 0,
         "0x08000000 0x00010000 ReadOnly FLASH\n0x20000000 0x00000010 ReadWrite RAM\n0x00000001 0x00000000 "
         "ReadWrite "
         "none\n"},
        {"memory-map map.xml --no-preprocess", 0,
         "0x08000000 0x00010000 ReadOnly FLASH\n0x20000000 0x00000000 ReadWrite RAM\n0x00000001 0x00000000 "
         "ReadWrite "
         "none\n"},
        {"memory-map --tree map.xml", 0,
         "root 0x00000000 0x00000000 board\n  MemorySegment 0x08000000 0x00010000 FLASH\n    ProgramSection "
         "0x08000100 0x00000010 .text\n  MemorySegment 0x00000001 0x00000000 none\n"},
        {"memory-map - < map.xml", 0, flash},
        {"memory-map - < /dev/null", 1, "", "atelis: error: -: no memory map\n"},
        {"memory-map - < line.xml", 1, "", "atelis: error: -:1: tagName mismatch\n"},
        {"memory-map missing.xml", 1, "", "atelis: error: missing.xml: couldn't read missing.xml\n"},
        {"memory-map bad.xml", 1, "", "atelis: error: bad.xml:2: tagName mismatch\n"},
    };
    for (const Row& row : rows) check(row);
}

TEST_F(DescribeCommand, PrintsSegments) {
    const Row rows[] = {
        {"segments s.qxProject -p p", 0,
         "0x20000000 0x2000000f ReadWrite RAM\n0x08000000 0x0800ffff ReadOnly FLASH\n"},
        {"segments s.qxProject -p q", 0,
         "0x00000020 0x00000020 ReadWrite B\n0x00000010 0x0000001f ReadOnly A\n"},
        {"segments s.qxProject -p empty", 1, "", "atelis: error: no memory segments\n"},
        {"segments s.qxProject -p no", 1, "", "atelis: error: no project \"no\"\n"},
    };
    for (const Row& row : rows) check(row);
}

TEST_F(DescribeCommand, PrintsProperties) {
    const std::string file = run("properties s.qxProject -p q -f a.c").output;
    EXPECT_EQ(file.substr(0, file.find("full_path")),
              "stage_output_filepath\tOutput File Path\t$(OutDir)/$(RelInputPath)\tinherited\n"
              "stage_command\tStage Command\tcp \"$(RelInputPath)\" \"$(StageOutputFilePath)\"\tinherited\n"
              "stage_command_wd\tStage Command Working Directory\t$(ProjectDir)\tinherited\n"
              "build_exclude_from_build\tExclude From Build\tNo\tinherited\n"
              "stage_set_readonly\tSet To Read-only\tNo\tinherited\n");
    EXPECT_NE(run("properties s.qxProject -p q").output.find("project_type\tProject Type\tStaging\tlocal\n"),
              std::string::npos);
}

TEST_F(DescribeCommand, KeepsWhatIsFoundOnTheDiskApart) {
    makeDirectory("dir");
    write("dir/z.c", "");
    write("a.c", "");
    const Row rows[] = {
        {"add s.qxProject -p p a.c", 0, ""},
        {"tree s.qxProject -p p", 0,
         "project p [Executable]\n  folder found\n    file z.c [C]\n  file a.c [C]\n"},
        {"set s.qxProject -p p -f dir/z.c build_exclude_from_build Yes", 1, "",
         "atelis: error: \"z.c\" is found on the disk and not stored\n"},
    };
    for (const Row& row : rows) check(row);
    const std::string folder = run("properties s.qxProject -p p -F found").output;
    EXPECT_NE(folder.find("filter\tDynamic Folder Filter\t*.c;c\tlocal\n"), std::string::npos) << folder;
    EXPECT_NE(folder.find("recurse\tDynamic Folder Recurse\t\tinherited\n"), std::string::npos) << folder;
}

/// Names come from files, and each is to stay in its line.
TEST_F(DescribeCommand, PrintsOddNamesInOneLine) {
    write("tools.xml", "<root><property name='project_type' default='Library'/></root>");
    write("odd.xml", "<root><MemorySegment name='A&#10;0x0' start='1' size='2'/></root>");
    write("odd.qxProject", R"(<!DOCTYPE Kestrelhaus_Project_File>
<solution Name="s" target="8" version="2">
  <project Name="P&#10;project X">
    <configuration Name="Common" build_generic_options_file_name="tools.xml" linker_memory_map_file="odd.xml"
      macros="A=1&#10;B=2" />
  </project>
</solution>
)");
    const Row rows[] = {
        {"tree odd.qxProject --configurations", 0,
         "solution s\n  project P\\012project X [Library]\n    configuration Common\n      "
         "build_generic_options_file_name=\"tools.xml\"\n      linker_memory_map_file=\"odd.xml\"\n      "
         "macros=\"A=1\\012B=2\"\n"},
        {"memory-map odd.xml", 0, "0x00000001 0x00000002 ReadWrite A\\0120x0\n"},
        {"memory-map --tree odd.xml", 0,
         "root 0x00000000 0x00000000\n  MemorySegment 0x00000001 0x00000002 A\\0120x0\n"},
        {"segments odd.qxProject -p \"$(printf 'P\\nproject X')\"", 0,
         "0x00000001 0x00000002 ReadWrite A\\0120x0\n"},
    };
    for (const Row& row : rows) check(row);
}

/// The example uses everything that can describe a project.
TEST_F(DescribeCommand, ShowsTheBoardSupportExample) {
    ASSERT_EQ(
        std::system(
            ("cp -r '" EXAMPLES_DIR "/board-support/.' '" + directory.path().toStdString() + "'").c_str()),
        0);
    const char* const files =
        "solution board\n  project blinky [Externally Built Executable]\n    folder Drivers\n      file "
        "port.c [C]\n      "
        "file port.h [Header]\n      folder serial\n        file serial.c [C]\n        file serial.h "
        "[Header]\n    folder "
        "Source Files\n      file main.c [C]\n    folder System Files\n      file memory_map.xml [Memory "
        "Map]\n";
    const Row rows[] = {
        {"tree board.qxProject", 0, files},
        {"get board.qxProject -p blinky device", 0, "KH64\n"},
        {"get board.qxProject -p blinky gcc_optimise -c Release", 0, "Size\n"},
        {"segments board.qxProject -p blinky", 0,
         "0x20000000 0x20003fff ReadWrite RAM\n0x08000000 0x0800ffff ReadOnly FLASH\n"},
        {"set board.qxProject -p blinky device KH256", 0, ""},
        {"tree board.qxProject", 0, files},
        {"get board.qxProject -p blinky c_preprocessor_definitions", 0, "DEVICE_KH256;HAS_SECOND_SERIAL\n"},
        {"segments board.qxProject -p blinky", 0,
         "0x20000000 0x2000ffff ReadWrite RAM\n0x08000000 0x0803ffff ReadOnly FLASH\n"},
        {"expand board.qxProject -p blinky '$(device) $(FlashSize)'", 0, "KH256 0x40000\n"},
        {"memory-map memory_map.xml --macros FLASH_SIZE=16", 0,
         "0x08000000 0x00000010 ReadOnly FLASH\n0x20000000 0x00004000 ReadWrite RAM\n"},
    };
    for (const Row& row : rows) check(row);
    const std::string file = read("board.qxProject");
    for (const char* gone : {"template_name", "template_configurations", "port.c", "serial"})
        EXPECT_EQ(file.find(gone), std::string::npos) << gone;
    EXPECT_NE(file.find("<folder Name=\"Drivers\" filter=\"*.c;*.h\" path=\"drivers\" recurse=\"Yes\" />"),
              std::string::npos);
    EXPECT_NE(
        run("properties board.qxProject -p blinky").output.find("device\tTarget Device\tKH256\tlocal\n"),
        std::string::npos);
}

TEST_F(DescribeCommand, ProjectsWithMovedOptionsAreUpToDate) {
    std::system(
        ("cp -r '" EXAMPLES_DIR "/board-support/.' '" + directory.path().toStdString() + "'").c_str());
    const Row rows[] = {
        {"clear board.qxProject -p blinky gcc_optimise -c Release", 0, ""},
        {"set board.qxProject -p blinky -c Release c_additional_options -- -Os", 0, ""},
    };
    for (const Row& row : rows) check(row);
    EXPECT_EQ(run("build board.qxProject -c Release").status, 0);
    EXPECT_EQ(run("build board.qxProject -c Release -v").output.find("gcc"), std::string::npos);
}

TEST_F(DescribeCommand, AddsFiles) {
    write("a.c", "");
    write("b.c", "");
    const Row rows[] = {
        {"add s.qxProject -p q b.c a.c", 0, "", "atelis: warning: \"a.c\" is already in the project\n"},
        {"add s.qxProject -p q --duplicate a.c", 0, ""},
        {"add s.qxProject -p p map.xml", 0, ""},
        {"add s.qxProject -p p ./regs.xml --use -c Debug", 0, ""},
        {"add s.qxProject -p q missing.c b.c", 1, "", "atelis: error: no file \"missing.c\"\n"},
        {"add s.qxProject a.c", 1, "", "atelis: error: files go into a project or a folder\n"},
        {"add s.qxProject -p q", 2, "", "atelis: error: FILE is required\n"},
        {"add s.qxProject -p p -F found a.c", 1, "",
         "atelis: error: the files of a dynamic folder are those of its directory\n"},
        {"tree s.qxProject -p q", 0, "project q [Staging]\n  file a.c [C]\n  file b.c [C]\n  file a.c [C]\n"},
        {"tree s.qxProject -p p --configurations -c Debug", 0,
         "project p [Executable]\n  folder found\n  configuration Common\n    "
         "linker_memory_map_file=\"map.xml\"\n    "
         "linker_memory_map_macros=\"RAM=big;N=8\"\n    "
         "project_type=\"Executable\"\n  file "
         "map.xml [Memory Map]\n  file regs.xml [Register Definitions]\n  configuration Debug\n    "
         "debug_register_definition_file=\"regs.xml\"\n"},
    };
    for (const Row& row : rows) check(row);
}

}  // namespace
