#include "cli/program.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace cli_test;

class ManifestCommand : public testing::Test {
protected:
    ManifestCommand() {
        std::string name = testing::TempDir() + "cliXXXXXX";
        folder = ::mkdtemp(name.data());
    }
    ~ManifestCommand() override { std::filesystem::remove_all(folder); }

    std::string file(const std::string& name, const std::string& text) {
        std::ofstream(folder + "/" + name, std::ios::binary) << text;
        return folder + "/" + name;
    }

    std::string folder;
};

TEST_F(ManifestCommand, PrintsWhatIsAskedFor) {
    const std::string manifest =
        file("build.ninja",
             "rule CC\n  command = cc $FLAGS -o $out $in\n"
             "build ./main.o | main.d: CC ../my$ main.c | x.h || order\n  FLAGS = -g\n"
             "build | hidden: CC\nbuild order: phony\nbuild all: phony main.o\n");
    const struct {
        std::string words;
        std::string output;
    } rows[] = {
        {"", "edges 4\nnodes 7\n"},
        {"--edges ",
         "build main.o | main.d: CC ../my main.c | x.h || order\nbuild | hidden: CC\nbuild order: phony\n"
         "build all: phony main.o\n"},
        {"--roots ", "main.d\nhidden\nall\n"},
        {"--binding FLAGS ", "main.o\t-g\nhidden\t\norder\t\nall\t\n"},
        {"--binding command ",
         "main.o\tcc -g -o main.o \"../my main.c\"\nhidden\tcc  -o  \norder\t\nall\t\n"},
    };
    for (const auto& row : rows) {
        for (const std::string& source : {manifest, "- < " + manifest}) {
            const Outcome outcome = atelis("manifest " + row.words + source);
            EXPECT_EQ(outcome.output, row.output) << row.words;
            EXPECT_EQ(outcome.status, 0);
        }
    }
}

TEST_F(ManifestCommand, PrintsTheEnginesErrorAsItIs) {
    const std::string broken = file("broken", "build a b\n");
    Outcome outcome = atelis("manifest " + broken);
    EXPECT_EQ(
        outcome.errors,
        broken + ":1: expected ':', got newline ($ also escapes ':')\nbuild a b\n         ^ near here\n");
    EXPECT_EQ(outcome.status, 1);

    outcome = atelis("manifest " + folder);
    EXPECT_EQ(outcome.errors, "loading '" + folder + "': Is a directory\n");
    EXPECT_EQ(outcome.status, 1);

    outcome = atelis("manifest --roots " + file("cycle", "build a: phony b\nbuild b: phony a\n"));
    EXPECT_EQ(outcome.errors, "could not determine root nodes of build graph\n");
    EXPECT_EQ(outcome.status, 1);

    outcome = atelis("manifest " + file("good", "build a: phony\n") + " > /dev/full");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Atelis, NamesACommandThatItDoesNotKnow) {
    const Outcome outcome = atelis("nosuch --edges");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "atelis: error: unknown command \"nosuch\"\n");
    EXPECT_EQ(outcome.output, "");
}

TEST(Atelis, AnswersHelpAndVersionAndRefusesWrongWords) {
    EXPECT_EQ(atelis("--version").output, "atelis 5.68\n");
    for (const char* option : {"--help", "--version", "--atelis-dir", "--user-dir", "-D", "manifest"})
        EXPECT_NE(atelis("-h").output.find(option), std::string::npos) << option;
    for (const char* option : {"--help", "--edges", "--roots", "--binding"})
        EXPECT_NE(atelis("manifest --help").output.find(option), std::string::npos) << option;
    for (const char* words :
         {"", "manifold", "--nosuch manifest x", "manifest", "manifest --nosuch x", "manifest a b",
          "manifest --edges --roots x", "manifest --binding", "-D =x manifest x", "-D x manifest x"}) {
        const Outcome outcome = atelis(words);
        EXPECT_EQ(outcome.status, 2) << words;
        EXPECT_EQ(outcome.errors.rfind("atelis: error: ", 0), 0u) << words << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << words << outcome.errors;
    }
}

}  // namespace
