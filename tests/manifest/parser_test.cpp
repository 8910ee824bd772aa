#include "manifest/graph_reader.h"
#include "manifest/manifest_parser.h"

#include <gtest/gtest.h>

namespace {

using manifest_test::edgesOf;
using manifest_test::Graph;
using manifest_test::rootsOf;

const std::string ruleR = "rule r\n  command = c\n";

TEST(Parser, MakesEdges) {
    const struct {
        std::string text;
        std::string edges;
        std::string roots;
    } rows[] = {
        {"", "", ""},
        {"\n# only a comment\n\n", "", ""},
        {"build a: r", "", ""},  // no line end: fails
        {"build a: r\n", "build a: r\n", "a "},
        {"build a b | c: r x | y || z\n", "build a b | c: r x | y || z\n", "a b c "},
        {"build | c: r\n", "build | c: r\n", "c "},
        {"build a: r b||c\n", "build a: r b || c\n", "a "},
        {"build a: r b|c\n", "build a: r b | c\n", "a "},
        {"build a$ b: r x$:y $$z\n", "build a b: r x:y $z\n", "a b "},
        {"build ./a: r x/../b\\c\n", "build a: r b/c\n", "a "},
        {"build a: r b\nbuild b: r c\n", "build a: r b\nbuild b: r c\n", "a "},
        {"build a: r b\nbuild b: r c\ndefault b a b\n", "build a: r b\nbuild b: r c\n", "b a b "},
        {"build a: phony b\n", "build a: phony b\n", "a "},
        {"v = x y\nbuild $v: r ${v}.c\nv = z\nbuild $v: r\n", "build x y: r x y.c\nbuild z: r\n", "x y z "},
        {"v = f\nbuild $v: r $w\n  v = s\n  w = $v\n", "build s: r f\n", "s "},
        {"build a: r b\r\n  v = 1\r\n\r\nbuild c: r\r\n", "build a: r b\nbuild c: r\n", "a c "},
        {"build a: r $\n    b $\n    c\n", "build a: r b c\n", "a "},
        {"pool p\n  depth = 2\nbuild a: r\n  pool = p\n", "build a: r\n", "a "},
        {"build a: r\n  pool = console\n", "build a: r\n", "a "},
        {"subninja2 = 1\nbuild a: r $subninja2\n", "build a: r 1\n", "a "},
        {"build /: r //\n", "build : r /\n", " "},
    };
    for (const auto& row : rows) {
        const Graph graph(ruleR + row.text);
        EXPECT_EQ(graph.loaded, graph.error.empty());
        EXPECT_EQ(edgesOf(graph.state), row.edges) << row.text << graph.error;
        std::string error;
        EXPECT_EQ(rootsOf(graph.state, &error), row.roots) << row.text;
        EXPECT_EQ(error, "");
    }
}

TEST(Parser, WarnsOfDuplicateOutputsAndPhonySelfReferences) {
    const std::string duplicate =
        "ninja: warning: multiple rules generate a. builds involving this target will not "
        "be correct; continuing anyway [-w dupbuild=warn]\n";
    const std::string cycle =
        "ninja: warning: phony target 'a' names itself as an input; ignoring [-w phonycycle=warn]\n";
    const struct {
        std::string text;
        std::string edges;
        std::string roots;
        std::string warnings;
    } rows[] = {
        {"build a: r b\nbuild a: r c\n", "build a: r b\n", "a ", duplicate},
        {"build a: r b\nbuild a d: r c\n", "build a: r b\nbuild d: r c\n", "a d ", duplicate},
        {"build a: r b\nbuild d | e a: r c\n", "build a: r b\nbuild d | e: r c\n", "a d e ", duplicate},
        {"build a a: r\n", "build a: r\n", "a ", duplicate},
        {"build a: r\nbuild a: r x\nbuild x: r\n", "build a: r\nbuild x: r\n", "a x ", duplicate},
        {"build a: phony a\n", "build a: phony\n", "a ", cycle},
        {"build a: phony a b ./a\n", "build a: phony b\n", "a ", cycle},
        {"build a: phony b a || a c\n", "build a: phony b || c\n", "a ", cycle},
        {"build x: phony a\nbuild a: phony a\n", "build x: phony a\nbuild a: phony\n", "x ", cycle},
        {"build a | b: phony a\n", "build a | b: phony a\n", "b ", ""},
        {"build a: phony b | a\nbuild c: r\n", "build a: phony b | a\nbuild c: r\n", "c ", ""},
        {"build a: r a\nbuild c: r\n", "build a: r a\nbuild c: r\n", "c ", ""},
    };
    for (const auto& row : rows) {
        testing::internal::CaptureStderr();
        const Graph graph(ruleR + row.text);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row.warnings) << row.text;
        EXPECT_EQ(edgesOf(graph.state), row.edges) << row.text << graph.error;
        std::string error;
        EXPECT_EQ(rootsOf(graph.state, &error), row.roots) << row.text;
    }
}

TEST(Parser, ReportsErrorsWithTheirPlace) {
    const struct {
        std::string text;
        std::string error;
    } rows[] = {
        {"build a b\n", "1: expected ':', got newline ($ also escapes ':')\nbuild a b\n         ^ near here"},
        {"build : r\n", "1: expected path\nbuild : r\n      ^ near here"},
        {"build a: \n", "1: expected build command name\nbuild a: \n       ^ near here"},
        {"build a: q\n", "1: unknown build rule 'q'\nbuild a: q\n       ^ near here"},
        {"build a: phony b : c\n",
         "1: expected newline, got ':'\nbuild a: phony b : c\n                 ^ near here"},
        {"build a: phony b", "1: unexpected EOF\nbuild a: phony b\n                ^ near here"},
        {"build $x: phony\n", "2: empty path\n"},
        {"build a: phony $x\n", "2: empty path\n"},
        {"build a: phony\n  pool = q\n", "3: unknown pool name 'q'\n"},
        {"build a: phony\n  = 1\n", "2: expected variable name\n"},
        {"build a: phony\n  x 1\n", "2: expected '=', got identifier\n  x 1\n    ^ near here"},
        {"rule\n", "1: expected rule name\n"},
        {"rule x y\n", "1: expected newline, got identifier\nrule x y\n       ^ near here"},
        {"rule x\n", "2: expected 'command =' line\n"},
        {"rule x\n  command =\n", "3: expected 'command =' line\n"},
        {"rule x\n  foo = 1\n", "2: unexpected variable 'foo'\n  foo = 1\n         ^ near here"},
        {"rule phony\n", "1: duplicate rule 'phony'\nrule phony\n          ^ near here"},
        {"rule x\n  command = c\n  rspfile = f\n",
         "4: rspfile and rspfile_content need to be both specified\n"},
        {"rule x\n  command = c\n  rspfile_content = f\n",
         "4: rspfile and rspfile_content need to be both specified\n"},
        {"pool\n", "1: expected pool name\n"},
        {"pool console\n", "1: duplicate pool 'console'\npool console\n            ^ near here"},
        {"pool p\n", "2: expected 'depth =' line\n"},
        {"pool p\n  depth = -1\n", "2: invalid pool depth\n  depth = -1\n            ^ near here"},
        {"pool p\n  width = 1\n", "2: unexpected variable 'width'\n  width = 1\n           ^ near here"},
        {"default\n", "1: expected target name\ndefault\n       ^ near here"},
        {"default nosuch\n", "1: unknown target 'nosuch'\ndefault nosuch\n              ^ near here"},
        {"default a\nbuild a: phony\n", "1: unknown target 'a'\ndefault a\n         ^ near here"},
        {"build a: phony\ndefault a:\n", "2: expected newline, got ':'\ndefault a:\n         ^ near here"},
        {"x 1\n", "1: expected '=', got identifier\nx 1\n  ^ near here"},
        {"x = $(\n", "1: bad $-escape (literal $ must be written as $$)\nx = $(\n    ^ near here"},
        {"  x = 1\n", "1: unexpected indent\n"},
        {": x\n", "1: unexpected ':'\n"},
        {"\tx = 1\n", "1: tabs are not allowed, use spaces\n"},
        {"x = 1\n\x01", "2: lexing error\n"},
        {"include nosuch.ninja\n",
         "1: loading 'nosuch.ninja': No such file or directory\ninclude nosuch.ninja\n"
         "                    ^ near here"},
        {"include build.ninja\n",
         "1: loading 'build.ninja': the file includes itself\ninclude build.ninja\n"
         "                   ^ near here"},
        {"rule m\n  command = c\n  deps = gcc\nbuild a b: m\n",
         "5: multiple outputs aren't (yet?) supported by depslog; bring this up on the mailing list if it "
         "affects you\n"},
    };
    for (const auto& row : rows) {
        const Graph graph(row.text);
        EXPECT_FALSE(graph.loaded) << row.text;
        EXPECT_EQ(graph.error, "build.ninja:" + row.error) << row.text;
    }
}

TEST(Parser, TakesTheActionsOfItsCaller) {
    using namespace manifest;
    const auto load = [](const std::string& text, DuplicateOutputAction duplicate, PhonyCycleAction cycle,
                         bool quiet) {
        manifest_test::MemoryReader reader;
        reader.files["f"] = text;
        State state;
        std::string error;
        testing::internal::CaptureStderr();
        ManifestParser(&state, &reader, duplicate, cycle, quiet).load("f", &error, nullptr);
        return error + testing::internal::GetCapturedStderr() + edgesOf(state);
    };
    const std::string twice = "build a: phony\nbuild a: phony\n";
    const std::string self = "build a: phony a\n";
    EXPECT_EQ(load(twice, DuplicateOutputAction::Error, PhonyCycleAction::Warn, true),
              "f:3: multiple rules generate a [-w dupbuild=err]\nbuild a: phony\nbuild: phony\n");
    EXPECT_EQ(load(twice, DuplicateOutputAction::Warn, PhonyCycleAction::Warn, true), "build a: phony\n");
    EXPECT_EQ(load(self, DuplicateOutputAction::Warn, PhonyCycleAction::Warn, true), "build a: phony\n");
    EXPECT_EQ(load(self, DuplicateOutputAction::Warn, PhonyCycleAction::Ignore, false), "build a: phony a\n");
}

TEST(Parser, KeepsWhatASubninjaDefinesToItself) {
    const Graph graph("v = outer\ninclude i\nsubninja s\nbuild a: r $v $w\n",
                      {{"i", ruleR + "w = included\n"},
                       {"s", "v = inner\n" + ruleR + "rule phony\n  command = c\nbuild b: phony b $v $w\n"}});
    EXPECT_EQ(graph.error, "");
    EXPECT_EQ(edgesOf(graph.state), "build b: phony b inner included\nbuild a: r outer included\n");
}

TEST(Parser, NamesTheIncludedFileInItsErrors) {
    const Graph graph("\ninclude a\n", {{"a", "include b\n"}, {"b", "x = 1\ny\n"}});
    EXPECT_EQ(graph.error, "b:2: expected '=', got newline\ny\n ^ near here");
    const Graph circle("include a\n", {{"a", "\n\nsubninja b\n"}, {"b", "include a\n"}});
    EXPECT_EQ(circle.error, "b:1: loading 'a': the file includes itself\ninclude a\n         ^ near here");
}

TEST(Parser, BoundsIncludesInDepthAndNumber) {
    std::map<std::string, std::string> files;
    for (int i = 0; i < 200; ++i) files[std::to_string(i)] = "include " + std::to_string(i + 1) + "\n";
    const Graph deep("include 0\n", files);
    EXPECT_EQ(deep.error,
              "126:1: loading '127': included more than 128 files deep\ninclude 127\n           ^ near here");
    for (auto& [name, text] : files) text += text;
    files["30"].clear();
    const Graph wide("include 0\n", files);
    EXPECT_NE(wide.error.find("more than 100000 files in one manifest"), std::string::npos) << wide.error;
}

TEST(Parser, FailsToFindRootsInACycle) {
    const Graph graph("build a: phony b\nbuild b: phony a\n");
    std::string error;
    EXPECT_EQ(rootsOf(graph.state, &error), "");
    EXPECT_EQ(error, "could not determine root nodes of build graph");
}

TEST(Parser, ChecksTheRequiredVersion) {
    const struct {
        std::string version;
        std::string printed;
    } rows[] = {
        {"1.8", ""},
        {"1.8.9", ""},
        {"1", ""},
        {"0.9",
         "ninja: warning: ninja executable version (1.8.2) greater than build file ninja_required_version "
         "(0.9); "
         "versions may be incompatible.\n"},
        {"x",
         "ninja: warning: ninja executable version (1.8.2) greater than build file ninja_required_version "
         "(x); "
         "versions may be incompatible.\n"},
    };
    for (const auto& row : rows) {
        testing::internal::CaptureStderr();
        const Graph graph("ninja_required_version = " + row.version + "\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row.printed);
        EXPECT_TRUE(graph.loaded);
    }
}

TEST(ParserDeathTest, EndsTheProcessForALaterVersion) {
    for (const char* version : {"1.9", "2", "1.9.0", "99999999999999999999"}) {
        const auto load = [version] { Graph(std::string("ninja_required_version = ") + version + "\n"); };
        EXPECT_EXIT(load(), testing::ExitedWithCode(1),
                    "^ninja: fatal: ninja version \\(1\\.8\\.2\\) incompatible with build file "
                    "ninja_required_version version \\(" +
                        std::string(version) + "\\)\\.\n$");
    }
}

}  // namespace
