#include "cli/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace cli_test {

namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// A copy of the example solution, built by the compilers of this machine.
class BuildCommandTest : public testing::Test {
protected:
    BuildCommandTest() {
        std::string name = (fs::temp_directory_path() / "atelis-build-XXXXXX").string();
        folder = ::mkdtemp(name.data());
        fs::copy(EXAMPLES_DIR "/workshop", folder, fs::copy_options::recursive);
    }
    ~BuildCommandTest() override { fs::remove_all(folder); }

    Outcome build(const std::string& words) { return atelis("build " + solution() + ' ' + words); }
    std::string solution() const { return (folder / "workshop.qxProject").string(); }
    std::string shell(const std::string& command) {
        std::FILE* const pipe = ::popen(("cd " + folder.string() + "; " + command).c_str(), "r");
        std::string output = drained(pipe);
        ::pclose(pipe);
        return output;
    }
    std::string outputs() { return shell("test -d Output && find Output -type f | sort"); }
    void writeFile(const std::string& name, const std::string& text) { std::ofstream(folder / name) << text; }
    /// Makes every output older than what is written from now on.
    void age() { shell("find . -type f -exec touch -d '1 hour ago' {} +"); }
    void replaceInSolution(const std::string& from, const std::string& to) {
        std::stringstream text;
        text << std::ifstream(solution()).rdbuf();
        std::string content = text.str();
        const std::size_t place = content.find(from);
        ASSERT_NE(place, std::string::npos);
        content.replace(place, from.size(), to);
        std::ofstream(solution()) << content;
    }

    fs::path folder;
};

TEST_F(BuildCommandTest, BuildsWhatIsOutOfDate) {
    const Outcome first = build("-j 1");
    EXPECT_EQ(first.status, 0) << first.errors;
    EXPECT_EQ(first.output,
              "Compiling ‘mean.c’\nCompiling ‘steps.c’\nArchiving ‘libgauge.a’\n"
              "Compiling ‘main.cpp’\nCompiling ‘report.cpp’\nLinking ‘app.elf’\n"
              "Post-link command\nCopying ‘notice.txt’\nCopying ‘readme.txt’\n"
              "Combining ‘manual’\nBuild complete\n");
    EXPECT_EQ(shell("Output/Debug/Exe/app.elf"), "mean 2.00, 200 steps\n");
    age();
    EXPECT_EQ(build("").output, "Build up to date\n");
    EXPECT_EQ(build("-n").output, "");
    shell("touch app/report.h");
    EXPECT_THAT(build("-n").output,
                testing::AllOf(HasSubstr("main.o"), HasSubstr("-o Output/Debug/Exe/app.elf"),
                               HasSubstr("objcopy"), Not(HasSubstr("mean.o -"))));
    EXPECT_THAT(build("-n -v").output, HasSubstr("# Linking ‘app.elf’\n"));
    EXPECT_EQ(build("-j 1").output,
              "Compiling ‘main.cpp’\nCompiling ‘report.cpp’\nLinking ‘app.elf’\n"
              "Post-link command\nBuild complete\n");
    const std::string files = outputs();
    EXPECT_EQ(build("--clean").output, "Build complete\n");
    EXPECT_EQ(outputs(), "");
    EXPECT_EQ(build("--clean").output, "Build up to date\n");
    EXPECT_EQ(atelis("build " + solution() + " > /dev/full").status, 1);
    EXPECT_EQ(build("-j 4").status, 0);
    EXPECT_EQ(outputs(), files);
    EXPECT_THAT(build("-v gauge").output, HasSubstr("'Output/Debug/Exe/libgauge.a' is up to date"));
    EXPECT_THAT(build("-n --rebuild --no-dependencies app").output, Not(HasSubstr("mean.c")));
    EXPECT_EQ(build("-c Release gauge").output,
              "Compiling ‘mean.c’\nCompiling ‘steps.c’\n"
              "Archiving ‘libgauge.a’\nBuild complete\n");
}

TEST_F(BuildCommandTest, ADryRunFollowsDependenciesAndWritesNothing) {
    EXPECT_THAT(build("-n").output, HasSubstr("gcc -std=c99"));
    EXPECT_EQ(shell("ls"), "app\nassets\nlibrary\nworkshop.qxProject\n");
    build("");
    age();
    shell("touch library/steps.c");
    const std::string commands = build("-n").output;
    EXPECT_THAT(commands, testing::AllOf(HasSubstr("ar rcs"), HasSubstr("-o Output/Debug/Exe/app.elf")));
    writeFile("commands.sh", commands);
    shell("sh -e commands.sh");
    EXPECT_EQ(build("").output, "Build up to date\n");
    replaceInSolution("ar rcs", "A=b ar &quot;it's&quot; &amp;&gt; log x");
    EXPECT_THAT(build("-n --rebuild gauge").output, HasSubstr(" && 'A=b' ar 'it'\\''s' > log 2>&1\n"));
}

TEST_F(BuildCommandTest, SaysWhatCannotBeDeleted) {
    shell("mkdir -p Output/Debug/Exe/libgauge.a/full");
    const Outcome outcome = build("--clean gauge");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "Build failed\n");
    EXPECT_THAT(outcome.errors, testing::MatchesRegex("atelis: error: Cannot delete file: .*/libgauge.a\n"));
}

TEST_F(BuildCommandTest, SaysWhatFails) {
    writeFile("library/mean.c", "int broken(\n");
    const Outcome outcome = build("-j 1");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "Compiling ‘mean.c’\nBuild failed\n");
    EXPECT_THAT(outcome.errors, EndsWith("atelis: error: gcc failed with exit code 1\n"));
    const Outcome goesOn = build("-k -j 2");
    EXPECT_EQ(goesOn.status, 1);
    EXPECT_THAT(goesOn.output, HasSubstr("Compiling ‘steps.c’\n"));
    EXPECT_THAT(goesOn.output,
                HasSubstr("Build failed - continuing because 'keep going on error' has been enabled\n"));
    EXPECT_THAT(goesOn.output, EndsWith("Build failed\n"));
}

TEST_F(BuildCommandTest, RefusesWhatIsNotThere) {
    struct Row {
        const char* words;
        int status;
        const char* error;
    };
    const Row rows[] = {
        {"nothing", 1, "atelis: error: no project \"nothing\"\n"},
        {"-c None", 1, "atelis: error: no configuration \"None\"\n"},
        {"-j 0", 2, "atelis: error: -j: "},
        {"-j 129", 2, "atelis: error: -j: "},
    };
    for (const Row& row : rows) {
        const Outcome outcome = build(row.words);
        EXPECT_EQ(outcome.status, row.status) << row.words;
        EXPECT_EQ(outcome.output, "");
        EXPECT_THAT(outcome.errors, testing::StartsWith(row.error));
    }
    EXPECT_EQ(outputs(), "");
}

TEST_F(BuildCommandTest, KeepsTheLinesOfAStepTogether) {
    replaceInSolution("external_c_compile_command=\"gcc",
                      "compile_post_build_command=\"sh -c &quot;for i in 1 2 3; do echo $(InputName) line; "
                      "sleep 0.02; done; printf end\\\\n&quot;\"\n    external_c_compile_command=\"gcc");
    const std::string lines = build("-j 2 gauge").output;
    for (const char* name : {"mean", "steps"}) {
        const std::string line = std::string(name) + " line\n";
        EXPECT_THAT(lines, HasSubstr("Post-compile command\n" + line + line + line + "end\n"));
    }
}

TEST_F(BuildCommandTest, AnInterruptEndsTheBuildInOrder) {
    // The command starts another, and neither ends when it is asked to.
    replaceInSolution("gcc -std=c99",
                      "sh -c &quot;trap '' TERM; sh -c 'sleep 100; :' & echo $$! &gt; grandchild; echo $$$$ "
                      "&gt; pid; sleep 100; :&quot; gcc -std=c99");
    // A shell starts what runs beside it deaf to interrupts.
    const std::string program = "env --default-signal=INT " ATELIS_PROGRAM " build workshop.qxProject -j 1";
    for (const char* signals : {"INT", "HUP", "INT INT"}) {
        shell("rm -f pid");
        const std::string output =
            shell("(" + program +
                  " & echo $! > atelis; wait $!; echo status $?) & while ! test -s pid; do sleep 0.02; done; "
                  "for s in " +
                  std::string(signals) + "; do kill -$s $(cat atelis); sleep 0.1; done; wait");
        EXPECT_EQ(output, "Compiling ‘mean.c’\nBuild terminated\nstatus 1\n") << signals;
        EXPECT_EQ(shell("cat /proc/$(cat pid)/status /proc/$(cat grandchild)/status 2> log | grep State: | "
                        "grep -v Z"),
                  "");
    }
}

TEST_F(BuildCommandTest, OutputWithoutALineEndComesWhole) {
    replaceInSolution("gcc -std=c99",
                      "sh -c &quot;echo; head -c 3000000 /dev/zero | tr '\\0' x; exit 3&quot; gcc -std=c99");
    const Outcome outcome = build("-j 1 gauge");
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), 'x'), 3000000);
    EXPECT_THAT(outcome.errors, EndsWith("atelis: error: sh failed with exit code 3\n"));
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(BuildCommandTest, ExportsRunUnderShAndMake) {
    const std::string words = "--atelis-dir /usr export " + solution() + ' ';
    ASSERT_EQ(atelis(words + "-o " + (folder / "build.sh").string()).status, 0);
    EXPECT_EQ(shell("find Output -type f"), "");
    shell("sh build.sh");
    EXPECT_EQ(shell("Output/Debug/Exe/app.elf; cat Output/Debug/Exe/manual.txt"),
              "mean 2.00, 200 steps\nThe workshop gauge.\nNo warranty.\n");
    shell("find Output -type f -delete");
    const Outcome makefile = atelis(words + "--makefile");
    writeFile("build.mak", makefile.output);
    shell("make -f build.mak 2>&1");
    EXPECT_EQ(shell("Output/Debug/Exe/app.elf"), "mean 2.00, 200 steps\n");
    EXPECT_EQ(shell("make -f build.mak 2>&1"), "make: Nothing to be done for 'all'.\n");
    EXPECT_EQ(build("app").output, "Build up to date\n");
}

}  // namespace

}  // namespace cli_test
