#include "manifest/edge_env.h"
#include "manifest/graph_reader.h"

#include <gtest/gtest.h>

namespace {

using namespace manifest;
using manifest_test::Graph;

TEST(Scope, LooksUpFromTheInsideOut) {
    const Graph graph(
        "v = file\nw = file\nrule r\n  command = c\n  description = d\nbuild a: r\n  v = edge\nbuild b: r\nv "
        "= late\n");
    BindingEnv* own = graph.state.edges()[0]->scope();
    BindingEnv* file = graph.state.edges()[1]->scope();
    EXPECT_EQ(own->lookupVariable("v"), "edge");
    EXPECT_EQ(own->lookupVariable("w"), "file");
    EXPECT_EQ(file->lookupVariable("v"), "late");
    EXPECT_EQ(own->lookupVariable("description"), "") << "a rule's bindings are no variables";
    EXPECT_EQ(own->lookupVariable("nobody"), "");
}

TEST(Scope, HoldsEqualValuesOnce) {
    const Graph graph(
        "f = -O2\nbuild a: phony\n  FLAGS = -g -O2\nbuild b: phony\n  FLAGS = -g $f\n  MORE = $f\n");
    const auto value = [&](std::size_t edge, const char* name) {
        return graph.state.edges()[edge]->scope()->lookupVariable(name).data();
    };
    EXPECT_EQ(value(0, "FLAGS"), value(1, "FLAGS"));
    EXPECT_EQ(value(1, "MORE"), value(1, "f"));
}

TEST(EdgeBinding, ExpandsTheRulesValues) {
    const std::string rule =
        "v = file\nrule r\n  command = $in > $out $v\n  description = $command!\n  depfile = $out.d\n"
        "  rspfile = f\n  rspfile_content = $in_newline\n";
    const struct {
        std::string statement;
        std::string name;
        std::string value;
    } rows[] = {
        {"build a | b: r x y | z || o\n", "command", "x y > a file"},
        {"build a: r x\n  v = edge\n", "command", "x > a edge"},
        {"build a: r x\n", "description", "x > a file!"},
        {"build a: r x\n  command = mine\n", "description", "mine!"},
        {"build a: r x\n", "v", "file"},
        {"build a: r x\n", "restat", ""},
        {"build a: r x y\n", "rspfile_content", "x\ny"},
        {"build a: r p$ q c$:\\x$ y a\"b\n", "in", "\"p q\" \"c:\\x y\" \"a\\\"b\""},
        {"build a: r p$ q r\n", "in_newline", "\"p q\"\nr"},
        {"build a: r b\\c/d\\e\n", "in", "b\\c/d\\e"},
        {"build a: r b/c\nbuild d: r b\\c\n", "in", "b/c"},
        {"build a: r / /\n", "in", " "},
        {"build a: phony x\n", "out", "a"},
    };
    for (const auto& row : rows) {
        const Graph graph(rule + row.statement);
        ASSERT_EQ(graph.error, "");
        EXPECT_EQ(graph.state.edges().back()->binding(row.name), row.value) << row.statement << row.name;
    }
}

TEST(EdgeBinding, LeavesPathsAsTheyAreWithoutEscapes) {
    const Graph graph("build a$ b: phony\n");
    EdgeEnv env(*graph.state.edges()[0], EdgeEnv::EscapeMode::None);
    EXPECT_EQ(env.lookupVariable("out"), "a b");
}

TEST(EdgeBinding, EscapesBackslashesInFrontOfQuotesOnly) {
    const struct {
        std::string_view path;
        std::string escaped;
    } rows[] = {
        {"a\\b", "a\\b"},
        {"c:\\x y\\", "\"c:\\x y\\\\\""},
        {"a\\\\\"b", "\"a\\\\\\\\\\\"b\""},
        {"a b\\\\", "\"a b\\\\\\\\\""},
        {"\"", "\"\\\"\""},
    };
    for (const auto& row : rows) {
        std::string escaped;
        appendShellEscaped(row.path, &escaped);
        EXPECT_EQ(escaped, row.escaped);
    }
}

TEST(EdgeBindingDeathTest, EndsTheProcessInACycle) {
    const struct {
        std::string bindings;
        std::string chain;
    } rows[] = {
        {"  command = $depfile\n  depfile = $command\n", "depfile -> command -> depfile"},
        {"  command = $command\n", "command -> command"},
        {"  command = $restat\n  restat = $depfile $depfile\n  depfile = $generator\n  generator = "
         "$depfile\n",
         "depfile -> generator -> depfile"},
    };
    for (const auto& row : rows) {
        const Graph graph("rule r\n" + row.bindings + "build a: r\n");
        EXPECT_EXIT(graph.state.edges()[0]->binding("command"), testing::ExitedWithCode(1),
                    "^ninja: fatal: cycle in rule variables: " + row.chain + "\n$");
    }
}

TEST(EdgeBindingDeathTest, EndsTheProcessForAnEndlessValue) {
    std::string doubling = "v0 = 0123456789\n";
    for (int i = 0; i < 23; ++i)
        doubling +=
            "v" + std::to_string(i + 1) + " = $v" + std::to_string(i) + "$v" + std::to_string(i) + "\n";
    const std::string once = doubling + "a = $v23$v23$v23$v23\n";
    EXPECT_EXIT(Graph{once}, testing::ExitedWithCode(1), "expanded value is longer than 268435456 bytes");
    for (int i = 0; i < 8; ++i) doubling += "a" + std::to_string(i) + " = ${v23}" + std::to_string(i) + "\n";
    const auto limit = (std::uint64_t{512} << 20) + 32 * doubling.size();
    EXPECT_EXIT(Graph{doubling}, testing::ExitedWithCode(1),
                "expanded values are longer than " + std::to_string(limit) + " bytes together");

    // Each of ten bindings names the next one a thousand times.
    const std::vector<std::string> names = {"command", "depfile", "description",     "generator",
                                            "restat",  "rspfile", "rspfile_content", "msvc_deps_prefix"};
    std::string rule = "rule r\n  deps =\n  pool =\n";
    for (std::size_t i = 0; i < names.size(); ++i) {
        rule += "  " + names[i] + " = x";
        for (int k = 0; i + 1 < names.size() && k < 1000; ++k) rule += "$" + names[i + 1];
        rule += "\n";
    }
    const Graph graph(rule + "build a: r\n");
    ASSERT_EQ(graph.error, "");
    EXPECT_EXIT(graph.state.edges()[0]->binding("command"), testing::ExitedWithCode(1),
                "expanded value is longer than 268435456 bytes");
}

}  // namespace
