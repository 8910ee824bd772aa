#include "build/process/process.h"

#include "build/process/project_system_process.h"
#include "build/process/qtx_process.h"

#include <QTextCodec>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace build;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using Arguments = std::vector<std::string>;

Arguments child(std::initializer_list<std::string> rest) {
    Arguments arguments{CHILD_PROGRAM};
    arguments.insert(arguments.end(), rest);
    return arguments;
}

class RecordingProcess : public Process {
public:
    void output(bool isStandardOutput, std::string_view line) override {
        (isStandardOutput ? lines : errors).emplace_back(line);
    }
    void waitStep() override {
        ++steps;
        Process::waitStep();
    }
    int runCaptured(const Arguments& arguments, const std::string& directory = "") {
        return run(arguments, true, directory, true, true);
    }
    /// Updates until a line has come.
    void awaitLine() {
        Process* const self = this;
        while (lines.empty() && !update()) waitForAny({&self, 1}, 1000);
    }

    std::vector<std::string> lines;
    std::vector<std::string> errors;
    int steps = 0;
};

/// A directory that lives as long as the test.
class ProcessTest : public testing::Test {
protected:
    ProcessTest() { std::filesystem::create_directories(directory / "sub"); }
    ~ProcessTest() override { std::filesystem::remove_all(directory); }

    std::string file(const std::string& name) const {
        std::ifstream stream(directory / name);
        if (!stream) return "no file";
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    const std::filesystem::path directory = std::filesystem::temp_directory_path() /
                                            ("process_test_" + std::to_string(::getpid()) +
                                             testing::UnitTest::GetInstance()->current_test_info()->name());
    RecordingProcess process;
};

bool isAlive(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/stat");
    std::string number;
    std::string name;
    std::string state;
    return (status >> number >> name >> state) && state != "Z";
}

bool diesSoon(pid_t pid) {
    for (int i = 0; i < 200 && isAlive(pid); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return !isAlive(pid);
}

TEST_F(ProcessTest, LinesAreCutAndUnfinishedOnesDelivered) {
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"", {}},
        {"one\n", {"one"}},
        {"one\n\ntwo\n", {"one", "", "two"}},
        {"one\r\ntwo\r\n", {"one", "two"}},
        {"one\rXtwo\n", {"one", "two"}},
        {"one\ntail", {"one", "tail"}},
        {"tail alone", {}},
        {"one\r\ntail", {"one", "tail"}},
        {"one\r", {"one"}},
    };
    for (const auto& [text, expected] : rows) {
        process.lines.clear();
        EXPECT_EQ(process.runCaptured(child({"output", text})), 0);
        EXPECT_EQ(process.lines, expected) << text;
    }
}

TEST(LineSplitter, LinesMayComeInAnyPieces) {
    const std::string text = "a\r\nb\rXc\n\nlast";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        std::vector<std::string> lines;
        const auto receiver = [&lines](std::string_view line) { lines.emplace_back(line); };
        LineSplitter splitter;
        for (std::size_t i = 0; i < text.size(); i += size)
            splitter.add(std::string_view(text).substr(i, size), receiver);
        splitter.finish(receiver);
        EXPECT_THAT(lines, ElementsAre("a", "b", "c", "", "last")) << size;
    }
}

TEST(LineSplitter, AnEndlessLineComesInPieces) {
    std::vector<std::size_t> sizes;
    const auto receiver = [&sizes](std::string_view line) { sizes.push_back(line.size()); };
    LineSplitter splitter;
    const std::string block(1024 * 1024, 'x');
    for (int i = 0; i < 17; ++i) splitter.add(block, receiver);
    splitter.add("\n", receiver);
    splitter.finish(receiver);
    EXPECT_THAT(sizes, ElementsAre(LineSplitter::maxLine, block.size()));
}

TEST_F(ProcessTest, ExitCodes) {
    const std::string notExecutable = (directory / "text").string();
    std::ofstream(notExecutable) << "text";
    const std::pair<Arguments, int> rows[] = {
        {child({"exit", "0"}), 0},
        {child({"exit", "7"}), 7},
        {child({"signal", "9"}), 137},
        {child({"signal", "15"}), 143},
        {child({"input"}), 0},
        {{}, -1},
        {{""}, -1},
        {{"/no/such/program"}, -1},
        {{"no-such-program-anywhere"}, -1},
        {{notExecutable}, -1},
        {{directory.string()}, -1},
        {{">", "file"}, -1},
        {{"true"}, 0},
    };
    for (const auto& [arguments, code] : rows) EXPECT_EQ(process.runCaptured(arguments), code);
    EXPECT_EQ(process.runCaptured(child({"exit", "0"}), "/no/such/directory"), -1);
    EXPECT_EQ(process.run(child({"exit", "7"}), true, "", false, false), 7);
    EXPECT_EQ(process.run(child({"exit", "7"}), true, "", true, false), 7);
    EXPECT_THAT(process.lines, IsEmpty());
}

TEST_F(ProcessTest, ArgumentsArriveAsTheyAre) {
    const Arguments given = {"a \"b\" c", "", "$HOME", "*", "\\", "line\nfeed"};
    Arguments arguments = child({"arguments"});
    arguments.insert(arguments.end(), given.begin(), given.end());
    EXPECT_EQ(process.runCaptured(arguments), 0);
    EXPECT_THAT(process.lines, ElementsAre("<a \"b\" c>", "<>", "<$HOME>", "<*>", "<\\>", "<line", "feed>"));
}

TEST_F(ProcessTest, RunsInTheWorkingDirectory) {
    process.runCaptured(child({"directory"}), directory.string());
    EXPECT_THAT(process.lines, ElementsAre(std::filesystem::canonical(directory).string()));
    std::filesystem::create_directories(directory / "odd:");
    process.runCaptured(child({"directory"}), (directory / "odd:").string());
    EXPECT_THAT(process.lines.back(), testing::EndsWith("/odd:"));
    std::filesystem::create_symlink(CHILD_PROGRAM, directory / "tool");
    EXPECT_EQ(process.runCaptured({"../tool", "exit", "5"}, (directory / "sub").string()), 5);
    EXPECT_EQ(process.runCaptured({"./tool", "exit", "6"}, directory.string()), 6);
}

TEST_F(ProcessTest, RedirectionsGoToFiles) {
    struct Redirection {
        Arguments operators;
        std::vector<std::string> lines;
        std::vector<std::string> errors;
        const char* a;
        const char* b;
    };
    const Redirection rows[] = {
        {{}, {"out"}, {"err"}, "old\n", "no file"},
        {{">", "a"}, {}, {"err"}, "out\n", "no file"},
        {{"1>", "a"}, {}, {"err"}, "out\n", "no file"},
        {{">>", "a"}, {}, {"err"}, "old\nout\n", "no file"},
        {{"1>>", "a"}, {}, {"err"}, "old\nout\n", "no file"},
        {{"2>", "a"}, {"out"}, {}, "err\n", "no file"},
        {{"2>>", "a"}, {"out"}, {}, "old\nerr\n", "no file"},
        {{"&>", "a"}, {}, {}, "out\nerr\n", "no file"},
        {{"&>>", "a"}, {}, {}, "old\nout\nerr\n", "no file"},
        {{">", "a", "2>", "b"}, {}, {}, "out\n", "err\n"},
        {{">", "a", ">", "b"}, {}, {"err"}, "out\n", "no file"},
        {{"2>", "b", "&>", "a"}, {"out"}, {}, "old\n", "err\n"},
        {{"&>", "a", ">", "b"}, {}, {}, "out\nerr\n", "no file"},
        {{">", "no/such/file", ">", "a"}, {}, {"err"}, "out\n", "no file"},
        {{">", "no/such/file"}, {"out"}, {"err"}, "old\n", "no file"},
        {{">"}, {"out"}, {"err"}, "old\n", "no file"},
        {{"2>", "b", ">"}, {"out"}, {}, "old\n", "err\n"},
        {{">", "a", "exit", "7"}, {}, {"err"}, "out\n", "no file"},
    };
    for (const Redirection& row : rows) {
        std::ofstream(directory / "a") << "old\n";
        std::filesystem::remove(directory / "b");
        Arguments arguments = child({"both"});
        arguments.insert(arguments.end(), row.operators.begin(), row.operators.end());
        RecordingProcess runner;
        EXPECT_EQ(runner.runCaptured(arguments, directory.string()), 0);
        const std::string operators = testing::PrintToString(row.operators);
        EXPECT_EQ(runner.lines, row.lines) << operators;
        EXPECT_EQ(runner.errors, row.errors) << operators;
        EXPECT_EQ(file("a"), row.a) << operators;
        EXPECT_EQ(file("b"), row.b) << operators;
    }
    EXPECT_EQ(process.run(child({"both", ">", (directory / "c").string(), "2>", "/dev/null"}), true, "",
                          false, false),
              0);
    EXPECT_EQ(file("c"), "out\n");
}

TEST_F(ProcessTest, MuchOutputArrivesWhole) {
    EXPECT_EQ(process.runCaptured(child({"repeat", "100000", "0123456789abcde\n"})), 0);
    EXPECT_EQ(process.lines.size(), 100'000U);
    process.lines.clear();
    EXPECT_EQ(process.runCaptured(child({"repeat", "65536", "0123456789abcdef"})), 0);
    EXPECT_THAT(process.lines, IsEmpty()) << "a megabyte without a line end";
}

TEST_F(ProcessTest, AWaitSleeps) {
    process.run(child({"block"}), false, "", true, true);
    process.awaitLine();
    const std::clock_t before = std::clock();
    Process* const waiting = &process;
    Process::waitForAny({&waiting, 1}, 300);
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 20);
    process.stop();

    const std::clock_t beforeRun = std::clock();
    RecordingProcess closing;
    EXPECT_EQ(closing.runCaptured(child({"close"})), 3) << "the child lives on behind its closed streams";
    EXPECT_GE(closing.steps, 1);
    EXPECT_LT(std::clock() - beforeRun, CLOCKS_PER_SEC / 20);
}

TEST_F(ProcessTest, AGrandchildDoesNotHoldTheWait) {
    EXPECT_EQ(process.runCaptured(child({"grandchild"})), 0);
    ASSERT_EQ(process.lines.size(), 1U);
    const pid_t grandchild = std::stoi(process.lines[0]);
    EXPECT_TRUE(isAlive(grandchild));
    ::kill(grandchild, SIGKILL);
}

TEST_F(ProcessTest, ProcessesRunSideBySide) {
    std::vector<RecordingProcess> processes(4);
    std::vector<Process*> running;
    for (RecordingProcess& each : processes) {
        EXPECT_EQ(each.run(child({"output", "a\nb"}), false, "", true, true), 0);
        EXPECT_TRUE(each.isRunning());
        EXPECT_EQ(each.run(child({"exit", "0"}), false, "", true, true), -1) << "one child at a time";
        running.push_back(&each);
    }
    while (!running.empty()) {
        Process::waitForAny(running, 10'000);
        std::erase_if(running, [](Process* each) { return each->update(); });
    }
    for (const RecordingProcess& each : processes) {
        EXPECT_EQ(each.exitCode(), 0);
        EXPECT_THAT(each.lines, ElementsAre("a", "b"));
    }
    EXPECT_EQ(process.run(Arguments{"/no/such/program"}, false, "", true, true), -1);
}

TEST_F(ProcessTest, StopEndsTheWholeGroup) {
    process.run(child({"family"}), false, "", true, true);
    process.awaitLine();
    const pid_t grandchild = std::stoi(process.lines.at(0));
    EXPECT_TRUE(isAlive(grandchild));
    process.stop();
    EXPECT_FALSE(process.isRunning());
    EXPECT_TRUE(process.update());
    EXPECT_EQ(process.exitCode(), 128 + SIGTERM);
    EXPECT_TRUE(diesSoon(grandchild));
    process.stop();  // of a child that has ended: nothing

    RecordingProcess stubborn;
    stubborn.run(child({"stubborn"}), false, "", true, true);
    stubborn.awaitLine();
    stubborn.stop();
    EXPECT_EQ(stubborn.exitCode(), 128 + SIGKILL);
}

TEST_F(ProcessTest, SignalsOfTheHostAreNotInherited) {
    const auto former = ::signal(SIGTERM, SIG_IGN);
    sigset_t blocked;
    sigset_t formerMask;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &blocked, &formerMask);
    EXPECT_EQ(process.runCaptured(child({"signal", "15"})), 143);
    ::sigprocmask(SIG_SETMASK, &formerMask, nullptr);
    ::signal(SIGTERM, former);
}

TEST_F(ProcessTest, NoDescriptorIsLost) {
    const auto count = [] {
        const std::filesystem::directory_iterator open("/proc/self/fd");
        return std::distance(begin(open), end(open));
    };
    const auto before = count();
    for (int i = 0; i < 10; ++i) {
        RecordingProcess runner;
        runner.runCaptured(child({"both", "&>", "/dev/null"}));
        runner.runCaptured(child({"both"}));
        runner.runCaptured({"/no/such/program"});
        runner.run(child({"exit", "0"}), false, "", true, true);
    }
    EXPECT_EQ(count(), before);

    rlimit former{};
    ::getrlimit(RLIMIT_NOFILE, &former);
    const rlimit tight{static_cast<rlim_t>(before), former.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &tight);
    EXPECT_EQ(process.runCaptured(child({"both"})), -1) << "no pipe can be made";
    ::setrlimit(RLIMIT_NOFILE, &former);
}

class RecordingObserver : public CommandObserver {
public:
    void commandStarted(std::string_view line) override { events.push_back("start " + std::string(line)); }
    void commandOutput(bool isStandardOutput, std::string_view line) override {
        events.push_back((isStandardOutput ? "out " : "err ") + std::string(line));
    }
    void commandIdle() override { ++idle; }
    void commandEnded() override { events.emplace_back("end"); }

    std::vector<std::string> events;
    int idle = 0;
};

TEST_F(ProcessTest, ACommandOfASolutionTellsItsObserver) {
    RecordingObserver observer;
    const Arguments environment = {"CHILD_TEST=a=b", "no name", "=empty"};
    const ProjectSystemProcess ran(&observer, child({"environment", "CHILD_TEST"}), directory.string(),
                                   environment);
    EXPECT_EQ(ran.result(), 0);
    EXPECT_THAT(observer.events,
                ElementsAre("start " CHILD_PROGRAM " environment CHILD_TEST", "out a=b", "end"));
    EXPECT_STREQ(std::getenv("CHILD_TEST"), "a=b");
    observer.events.clear();
    EXPECT_EQ(ProjectSystemProcess(&observer, Arguments{"no-such-program"}, "", {}).result(), -1);
    EXPECT_THAT(observer.events, ElementsAre("start no-such-program", "end"));
    EXPECT_EQ(ProjectSystemProcess(nullptr, child({"exit", "4"}), "", {}).result(), 4);
}

TEST_F(ProcessTest, OutputIsGatheredInLists) {
    QTxProcess gathering;
    QStringList lines;
    QStringList errors;
    EXPECT_EQ(gathering.runCapturing(child({"both"}), true, "", &lines, &errors, nullptr), 0);
    EXPECT_EQ(lines, QStringList(QStringLiteral("out")));
    EXPECT_EQ(errors, QStringList(QStringLiteral("err")));
    lines.clear();
    const Arguments umlaut = child({"output", "\xc3\xa4\n"});
    gathering.runCapturing(umlaut, true, "", &lines, nullptr, nullptr);
    gathering.runCapturing(umlaut, true, "", &lines, nullptr, QTextCodec::codecForName("UTF-8"));
    EXPECT_EQ(lines, QStringList({QStringLiteral(u"\u00c3\u00a4"), QStringLiteral(u"\u00e4")}));
    EXPECT_EQ(gathering.runCapturing(child({"both"}), true, "", nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(gathering.runCapturing(child({"exit", "0"}), false, "", &lines, nullptr, nullptr), 0);
    while (!gathering.update()) std::this_thread::yield();
    EXPECT_EQ(lines.size(), 2);
}

}  // namespace
