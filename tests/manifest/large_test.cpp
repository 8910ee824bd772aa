#include "manifest/graph_reader.h"
#include "manifest/path_hash.h"

#include <gtest/gtest.h>

// Sizes at which quadratic work or recursion would show as a test that does not end.
namespace {

using manifest_test::Graph;
using manifest_test::rootsOf;

constexpr int many = 200'000;

std::string numbered(const std::string& before, const std::string& after) {
    std::string text;
    for (int i = 0; i < many; ++i) text += before + std::to_string(i) + after;
    return text;
}

std::string chain() {
    std::string text;
    for (int i = 0; i < many; ++i)
        text += "build n" + std::to_string(i + 1) + ": phony n" + std::to_string(i) + "\n";
    return text;
}

TEST(Large, ReadsEachShapeInLinearTime) {
    const struct {
        const char* name;
        std::string text;
        std::size_t edges;
        std::size_t nodes;
        std::size_t roots;
    } rows[] = {
        {"chain", chain(), many, many + 1, 1},
        {"inputs", "build all: phony" + numbered(" i", "") + "\n", 1, many + 1, 1},
        {"self references", "build a: phony" + numbered(" ./a b", "") + " || a a\n", 1, many + 1, 1},
        {"outputs", "build" + numbered(" o", "") + ": phony\n", 1, many, many},
        {"defaults", numbered("build t", ": phony\n") + "default" + numbered(" t", "") + "\n", many, many,
         many},
        {"variables", numbered("v", " = 1\n") + "build a: phony $v7\n", 1, 2, 1},
        {"statement variables", "build a: phony\n" + numbered("  v", " = 1\n"), 1, 1, 1},
        {"rules", numbered("rule r", "\n  command = c\n") + "build a: r7\n", 1, 1, 1},
        {"escapes", "build a: phony\n  v = " + numbered("$$", "$:") + "\n", 1, 1, 1},
        {"comments", numbered("# ", "\n") + "build a: phony\n", 1, 1, 1},
        {"continuations", "build a: phony" + numbered(" $\n  i", "") + "\n", 1, many + 1, 1},
    };
    for (const auto& row : rows) {
        testing::internal::CaptureStderr();
        const Graph graph(row.text);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(graph.error, "") << row.name;
        EXPECT_EQ(graph.state.edges().size(), row.edges) << row.name;
        EXPECT_EQ(graph.state.nodeCount(), row.nodes) << row.name;
        std::string error;
        EXPECT_EQ(graph.state.defaultNodes(&error).size(), row.roots) << row.name;
    }
}

/// Two texts of equal hash wherever they stand, so that n places make 2^n paths of one hash.
std::string collidingPath(unsigned bits, int places) {
    const std::string halves[] = {
        "\x27"
        "\x9b"
        "\xe2"
        "\xd7"
        "\xcd"
        "\x13"
        "\x49"
        "\x22",
        "\xa7"
        "\xbc"
        "\x55"
        "\x8a"
        "\x4d"
        "\xf2"
        "\xd5"
        "\x6f"};
    std::string path;
    for (int place = 0; place < places; ++place) path += halves[bits >> place & 1];
    return path;
}

TEST(Large, PathsThatWereMadeToCollideCostWhatOthersDo) {
    constexpr int places = 16;
    ASSERT_EQ(manifest::hashPath(collidingPath(1, places)), manifest::hashPath(collidingPath(6, places)));
    std::string text;
    for (unsigned bits = 0; bits < 1U << places; ++bits)
        text += "build " + collidingPath(bits, places) + ": phony\n";
    const Graph graph(text);
    EXPECT_EQ(graph.error, "");
    EXPECT_EQ(graph.state.nodeCount(), 1U << places);
    EXPECT_NE(graph.state.lookupNode(collidingPath(77, places)), nullptr);
    EXPECT_EQ(graph.state.lookupNode(collidingPath(77, places) + "x"), nullptr);
}

}  // namespace
