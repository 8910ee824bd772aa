#include "cli/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using namespace cli_test;

class PackageCommand : public testing::Test {
protected:
    PackageCommand() {
        std::string name = fs::temp_directory_path() / "package.XXXXXX";
        root = ::mkdtemp(name.data());
        ::setenv("ATELIS_USER_DIR", (root / "user").c_str(), 1);
    }
    ~PackageCommand() override { fs::remove_all(root); }

    /// `words` with "@" standing for the test's directory.
    Outcome package(std::string words) const {
        for (std::size_t at = 0; (at = words.find('@', at)) != std::string::npos;) words.replace(at, 1, root);
        return atelis("package " + words);
    }
    void put(const std::string& name, const std::string& contents, std::time_t time = 1'000'000'000,
             mode_t mode = 0644) const {
        const fs::path place = root / name;
        fs::create_directories(place.parent_path());
        std::ofstream(place) << contents;
        const timespec times[] = {{time, 0}, {time, 0}};
        ::utimensat(AT_FDCWD, place.c_str(), times, 0);
        ::chmod(place.c_str(), mode);
    }
    std::string get(const std::string& name) const {
        std::ifstream file(root / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string shown(const Outcome& outcome) const {
        std::string text = std::to_string(outcome.status) + "\n" + outcome.output + outcome.errors;
        for (std::size_t at = 0; (at = text.find(root.string())) != std::string::npos;)
            text.replace(at, root.string().size(), "@");
        return text;
    }

    fs::path root;
};

TEST_F(PackageCommand, MakesListsAndExtractsArchives) {
    put("in/b.txt", "b");
    put("in/a/x", "xxx", 1'769'860'800, 0755);
    put("in/a/.hidden", "h", 0, 0444);
    const std::string listing1 =
        "0\n"
        "0444 1 1970-01-01T00:00:00Z a/.hidden\n"
        "0666 3 2026-01-31T12:00:00Z a/x\n"
        "0666 1 2001-09-09T01:46:40Z b.txt\n";
    const std::string listing2 =
        "0\n"
        "0444 1 1970-01-01T00:00:00Z a/.hidden\n"
        "0755 3 2026-01-31T12:00:00Z a/x\n"
        "0644 1 2001-09-09T01:46:40Z b.txt\n";
    const std::pair<const char*, std::string> cases[] = {
        {"a b.txt", listing1},       {"./a/ ./b.txt --level 0", listing1},          {".", listing1},
        {"--version 2 .", listing2}, {"--compression bzip2 --level 9 .", listing2},
    };
    for (const auto& [words, listing] : cases) {
        EXPECT_EQ(shown(package("create @/p -C @/in " + std::string(words))), "0\n");
        EXPECT_EQ(shown(package("list @/p")), listing) << words;
        EXPECT_EQ(shown(package("cat @/p a/x")), "0\nxxx");
        EXPECT_EQ(shown(package("extract @/p -d @/out")), "0\n");
        EXPECT_EQ(get("out/a/x") + get("out/a/.hidden") + get("out/b.txt"), "xxxhb");
        EXPECT_EQ(shown(package("extract @/p -d @/out b.txt")),
                  "1\natelis: error: cannot overwrite file @/out/b.txt\n");
        EXPECT_EQ(shown(package("extract @/p -d @/out --overwrite b.txt")), "0\n");
        fs::remove_all(root / "out");
    }
}

TEST_F(PackageCommand, WarnsOfWhatIsNoFile) {
    put("in/a", "a");
    fs::create_symlink("none", root / "in/dangling");
    fs::create_symlink("a", root / "in/link");
    ASSERT_EQ(::mkfifo((root / "in/pipe").c_str(), 0600), 0);
    EXPECT_EQ(shown(package("create @/in/p -C @/in .")),
              "0\n"
              "atelis: warning: skipped @/in/dangling, which is no file\n"
              "atelis: warning: skipped @/in/pipe, which is no file\n");
    EXPECT_EQ(shown(package("list @/in/p")),
              "0\n"
              "0666 1 2001-09-09T01:46:40Z a\n"
              "0666 1 2001-09-09T01:46:40Z link\n");
    EXPECT_EQ(package("create @/in/p -C @/in a link").status, 0);
    EXPECT_EQ(shown(package("create @/q -C @/in pipe")), "1\natelis: error: cannot read @/in/pipe\n");
}

TEST_F(PackageCommand, ReportsWhatFails) {
    put("in/a", "a");
    put("odd/c:x", "");
    put("odd/a\\b", "");
    put("text", "no archive at all");
    ASSERT_EQ(::mkfifo((root / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(package("create @/p -C @/in a").status, 0);
    const std::pair<const char*, const char*> cases[] = {
        {"list @/none", "1\natelis: error: @/none does not exist\n"},
        {"list @/text", "1\natelis: error: unsupported package file format\n"},
        {"list @/pipe", "1\natelis: error: unsupported package file format\n"},
        {"cat @/p 'b\n'", "1\natelis: error: no file \"b\\012\"\n"},
        {"cat @/p b", "1\natelis: error: no file \"b\"\n"},
        {"extract @/p -d @/out a b", "1\natelis: error: no file \"b\"\n"},
        {"create @/q -C @/in none", "1\natelis: error: cannot read @/in/none\n"},
        {"create @/q -C @/in ../text", "1\natelis: error: ../text lies outside the directory\n"},
        {"create @/q -C @/odd .", "1\natelis: error: cannot store the name a\\b\n"},
        {"create @/q -C @/odd c:x", "1\natelis: error: cannot store the name c:x\n"},
        {"create @/in/a -C @/in a", "1\natelis: error: @/in/a is the archive itself\n"},
        {"create @/p -C @/in a --compression bzip2 --level 0",
         "1\natelis: error: cannot initialise deflate\n"},
        {"create @/in -C @/in a", "1\natelis: error: cannot open output file\n"},
        {"create @/q /etc/hostname", "1\natelis: error: /etc/hostname lies outside the directory\n"},
        {"create @/q -C @/in a --compression bzip2 --level 0",
         "1\natelis: error: cannot initialise deflate\n"},
        {"create @/q -C @/in a --compression bzip2 --version 1",
         "2\natelis: error: version 1 has no compression bzip2\n"},
        {"info @/p", "1\natelis: error: package has no description @/p\n"},
        {"install @/p", "1\natelis: error: package has no description @/p\n"},
        {"uninstall demo", "1\natelis: error: package \"demo\" is not installed\n"},
        {"open @/text @/out", "1\natelis: error: unsupported package file format\n"},
        {"open @/p @/opened", "1\natelis: error: no solution in @/p\n"},
    };
    for (const auto& [words, expected] : cases) EXPECT_EQ(shown(package(words)), expected) << words;
    EXPECT_FALSE(fs::exists(root / "out"));
    EXPECT_FALSE(fs::exists(root / "q"));
    EXPECT_EQ(package("cat @/p a").output + get("in/a"), "aa") << "what was there stays";
    for (const char* words :
         {"", "list", "create @/q", "create @/q a --version 3", "open @/p @/o --newer perhaps"})
        EXPECT_EQ(package(words).status, 2) << words;
}

TEST_F(PackageCommand, ExchangesArchivesWithAPeer) {
    put("in/dir/first.txt", "one");
    put("in/second", "two", 1, 0444);
    const auto peer = [&](const std::string& words) {
        return std::system((PACKAGE_PEER " " + words).c_str()) == 0;
    };
    const auto printed = [&](const std::string& archive) {
        EXPECT_TRUE(peer("read " + (root / archive).string() + " >" + (root / "printed").string()));
        return get("printed");
    };
    for (const std::string form : {"1", "plain", "2-zlib", "2-bzip2"}) {
        const bool hasModes = form.starts_with("2");
        ASSERT_TRUE(peer("write " + form + " " + (root / "theirs").string()));
        EXPECT_EQ(shown(package("list @/theirs")), std::string("0\n") + (hasModes ? "0644" : "0666") +
                                                       " 11000 2023-11-14T22:13:20Z dir/first.txt\n"
                                                       "0444 1 1970-01-01T00:00:01Z second\n");
        EXPECT_EQ(package("cat @/theirs dir/first.txt").output.size(), 11000U);
        EXPECT_EQ(package("cat @/theirs second").output, "2");
    }
    const std::pair<const char*, const char*> ours[] = {
        {"--version 1", "dir/first.txt 0 1000000000 one\nsecond 1 1 two\n"},
        {"--version 2", "dir/first.txt 100644 1000000000 one\nsecond 100444 1 two\n"},
        {"--compression bzip2", "dir/first.txt 100644 1000000000 one\nsecond 100444 1 two\n"},
    };
    for (const auto& [words, expected] : ours) {
        ASSERT_EQ(package(std::string("create @/ours -C @/in . ") + words).status, 0);
        EXPECT_EQ(printed("ours"), expected);
    }
}

TEST_F(PackageCommand, InstallsPackages) {
    put("one/tool_package.xml",
        R"(<package name="tool" version="1.2" installation_directory="$(AtelisUserDir)/tool" note="a&amp;&#10;b"/>)");
    put("one/lib/l", "l");
    put("one/edited", "e");
    put("two/tool_package.xml",
        R"(<package name="tool" version="1.3" onw_versions="9" installation_directory="@"/>)");
    put("two/edited", "new", 1'000'000'001);
    put("bare/bare_package.xml",
        R"(<package name="ba&#9;re" installation_directory_global_macro_name="Bare"/>)");
    put("bare/f", "f");
    ASSERT_EQ(package("create @/tool.qxPackage -C @/one .").status, 0);
    ASSERT_EQ(package("create @/two.qxPackage -C @/two .").status, 0);
    const auto run = [&](const char* words, const char* expected) {
        EXPECT_EQ(shown(package(words)), expected) << words;
    };
    run("info @/tool.qxPackage",
        "0\ninstallation_directory=\"$(AtelisUserDir)/tool\"\nname=\"tool\"\n"
        "note=\"a&amp;&#10;b\"\nversion=\"1.2\"\n");
    run("installed", "0\n");
    run("install @/tool.qxPackage", "0\nInstalled package 'tool'\n");
    run("installed", "0\ntool\t1.02\t@/user/tool\n");
    EXPECT_EQ(get("user/tool/lib/l"), "l");
    EXPECT_TRUE(fs::exists(root / "user/packages/packages/tool_package.xml"));

    put("user/tool/edited", "mine", 2'000'000'000);
    const std::string incompatible =
        "The package you are installing is incompatible with this release of Kestrelant.";
    run("install @/two.qxPackage --directory @/user/tool",
        ("1\natelis: error: " + incompatible + "\n").c_str());
    EXPECT_EQ(package("create @/bare.qxPackage -C @/bare .").status, 0);
    run("install @/bare.qxPackage --directory '@/<b>'",
        "0\nInstalled package 'ba\\011re'\natelis: warning: the global macro is not kept: -D Bare=@/<b>\n");
    put("<b>/f", "mine", 2'000'000'000);
    run("install @/bare.qxPackage --directory '@/<b>' --newer cancel",
        "1\natelis: warning: the global macro is not kept: -D Bare=@/<b>\n"
        "atelis: error: The file @/<b>/f exists and is dated later than package file.\n"
        "atelis: error: The package installation was cancelled.\n");
    run("installed", "0\nba\\011re\t\t@/<b>\ntool\t1.02\t@/user/tool\n");
    run("uninstall 'ba\tre'", "0\n");
    run("install @/tool.qxPackage --newer cancel",
        "1\natelis: error: The file @/user/tool/edited exists and is dated later than package file.\n"
        "atelis: error: The package installation was cancelled.\n");
    run("install @/two.qxPackage --directory @/user/tool --force",
        ("0\nInstalled package 'tool'\natelis: warning: " + incompatible + "\n").c_str());
    EXPECT_EQ(get("user/tool/edited"), "mine");
    EXPECT_FALSE(fs::exists(root / "user/tool/lib"));
    run("install @/two.qxPackage --directory @/user/tool --force --newer overwrite",
        ("0\nInstalled package 'tool'\natelis: warning: " + incompatible + "\n").c_str());
    EXPECT_EQ(get("user/tool/edited"), "new");
    run("installed", "0\ntool\t1.03\t@/user/tool\n");
    put("user/packages/packages/broken_package.xml", "<package");
    run("uninstall tool",
        "0\natelis: warning: cannot load package description file: "
        "@/user/packages/packages/broken_package.xml - Premature end of document. 8:1\n");
    EXPECT_FALSE(fs::exists(root / "user/tool"));
    EXPECT_FALSE(fs::exists(root / "user/packages/packages/tool_package.xml"));
}

TEST_F(PackageCommand, BundlesSolutions) {
    put("home/demo.qxProject", R"(<!DOCTYPE Kestrelhaus_Project_File>
<solution Name="demo" target="8" version="2">
  <project Name="app">
    <configuration Name="Common" project_directory="app" project_type="Executable"/>
    <folder Name="Source"><file file_name="a.c"/><file file_name="sub/b.c"/><file file_name="a.c"/>
      <file file_name="$(ProjectDir)/macro.c"/><file file_name="../../outside.c"/></folder>
    <file file_name="../top.c"/>
  </project>
  <import file_name="lib/lib.qxProject"/>
</solution>
)");
    put("home/lib/lib.qxProject", R"(<!DOCTYPE Kestrelhaus_Project_File>
<solution Name="lib" target="8" version="2"><project Name="lib"><file file_name="l.c"/></project></solution>
)");
    for (const char* name : {"home/app/a.c", "home/app/sub/b.c", "home/app/macro.c", "outside.c",
                             "home/top.c", "home/lib/l.c", "home/notes.txt"})
        put(name, name);
    EXPECT_EQ(shown(package("solution @/home/demo.qxProject @/demo.qxArchive --extra @/home/notes.txt")),
              "0\n");
    const std::string listed = package("list @/demo.qxArchive").output;
    std::string names;
    for (std::size_t end = 0; (end = listed.find('\n', end)) != std::string::npos; ++end)
        names += listed.substr(listed.rfind(' ', end) + 1, end - listed.rfind(' ', end));
    EXPECT_EQ(names, "demo.qxProject\napp/a.c\napp/sub/b.c\ntop.c\nlib/lib.qxProject\nlib/l.c\nnotes.txt\n");

    EXPECT_EQ(shown(package("open @/demo.qxArchive @/away")), "0\n@/away/demo.qxProject\n");
    const auto tree = [&](const char* place) {
        return atelis("tree --configurations " + (root / place).string()).output;
    };
    EXPECT_EQ(tree("away/demo.qxProject"), tree("home/demo.qxProject"));
    EXPECT_NE(tree("away/demo.qxProject"), "");
    fs::remove(root / "home/top.c");
    EXPECT_EQ(shown(package("solution @/home/demo.qxProject @/q")),
              "1\natelis: error: cannot read @/home/top.c\n");
    EXPECT_EQ(package("solution @/none.qxProject @/q").status, 1);
    EXPECT_FALSE(fs::exists(root / "q"));
    put("home/top.c", "home/top.c");
    EXPECT_EQ(shown(package("solution @/home/demo.qxProject @/home/top.c")),
              "1\natelis: error: @/home/top.c belongs to the archive\n");
    EXPECT_EQ(get("home/top.c"), "home/top.c");
}

TEST_F(PackageCommand, OpensPackagedSolutions) {
    put("in/demo.qxProject", "<solution/>");
    put("in/src/a.c", "packed");
    ASSERT_EQ(package("create @/demo.qxArchive -C @/in demo.qxProject src").status, 0);
    const auto open = [&](const char* words) {
        return shown(package("open @/demo.qxArchive @/to/ " + std::string(words)));
    };
    EXPECT_EQ(open(""), "0\n@/to/demo.qxProject\n");
    EXPECT_EQ(get("to/src/a.c"), "packed");
    put("to/src/a.c", "mine", 2'000'000'000);
    EXPECT_EQ(open("--newer cancel"),
              "1\natelis: error: @/to/src/a.c exists and is dated later than package file\n");
    EXPECT_EQ(open(""), "0\n@/to/demo.qxProject\n");
    EXPECT_EQ(get("to/src/a.c"), "mine");
    put("to/src/a.c", "older", 999'999'999);
    put("to/other.qxProject", "");
    EXPECT_EQ(open("--newer keep"), "0\n@/to/demo.qxProject\n");
    EXPECT_EQ(get("to/src/a.c"), "packed");
    put("to/src/a.c", "mine", 2'000'000'000);
    EXPECT_EQ(open("--newer overwrite"), "0\n@/to/demo.qxProject\n");
    EXPECT_EQ(get("to/src/a.c"), "packed");
}

}  // namespace
