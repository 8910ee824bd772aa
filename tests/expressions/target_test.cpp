#include "expressions/host_parser.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace expressions_test;

struct Row {
    const char* expression;
    const char* asked;  ///< the questions that reach the host, in order
    const char* answer;
};

// clang-format off
constexpr Row rows[] = {
    {"a", "", "a"},
    {"N::x + 0", "", "9"},
    {"@r0", "", "@r0"},
    {"a + b", "", "3"},
    {"-a", "", "-1"},
    {"p + 2", "pointerAdd(p, 2)", "pointerAdd(p, 2)"},
    {"arr + u8", "pointerAdd(arr, -1)", "pointerAdd(arr, -1)"},
    {"p + 2.5", "", "7.5f"},
    {"2 + p", "", "7"},
    {"arr[2]", "index(arr, 2)", "index(arr, 2)"},
    {"arr[i]", "readSymbol(i)\nindex(arr, 4)", "index(arr, 4)"},
    {"arr[1.9]", "index(arr, 1)", "index(arr, 1)"},
    {"arr[none]", "readSymbol(none)", "! bad index type"},
    {"*p", "index(p, 0)", "index(p, 0)"},
    {"arr[1][2]", "index(arr, 1)\nindex(index(arr, 1), 2)", "index(index(arr, 1), 2)"},
    {"a.b", "member(a, b)", "member(a, b)"},
    {"a->b", "member(a, b)", "member(a, b)"},
    {"a.N::x", "scopedMember(a, N::x)", "scopedMember(a, N::x)"},
    {"(a)::b", "member(a, b)", "member(a, b)"},
    {"a.*b", "pointerToMember(a, b)", "pointerToMember(a, b)"},
    {"a->*b", "pointerToMember(a, b)", "pointerToMember(a, b)"},
    {"a.*1", "", "! identifier expected"},
    {"&a", "addressOf(a)", "4096u"},
    {"&arr[1]", "index(arr, 1)\naddressOf(index(arr, 1))", "4096u"},
    {"-arr[1]", "index(arr, 1)", "0"},
    {"addressof(\"f.c\", 12)", "addressOfLine(f.c, 12)", "8192u"},
    {"a = 5", "assign(a, 5)", "a"},
    {"a = b", "readSymbol(b)\nassign(a, 2)", "a"},
    {"a = b = c", "readSymbol(b)\nassign(a, 2)\nreadSymbol(c)\nassign(a, 3)", "a"},
    {"a += 5", "assign(a, 6)", "a"},
    {"c -= 1", "assign(c, 2)", "c"},
    {"c *= 2", "assign(c, 6)", "c"},
    {"i /= 2", "assign(i, 2)", "i"},
    {"i %= 3", "assign(i, 1)", "i"},
    {"a <<= 3", "assign(a, 8)", "a"},
    {"i >>= 1", "assign(i, 2)", "i"},
    {"c &= 2", "assign(c, 2)", "c"},
    {"c ^= 1", "assign(c, 2)", "c"},
    {"c |= 4", "assign(c, 7)", "c"},
    {"++a", "assign(a, 2)", "a"},
    {"--a", "assign(a, 0)", "a"},
    {"a++", "assign(a, 2)", "a"},
    {"a--", "assign(a, 0)", "a"},
    {"N::x++", "assign(N::x, 10)", "N::x"},
    {"arr[1]++", "index(arr, 1)\nindex(arr, 1)\nassign(index(arr, 1), 1)", "index(arr, 1)"},
    {"a.b += 2", "member(a, b)\nmember(a, b)\nassign(member(a, b), 2)", "member(a, b)"},
    {"(int)1.5", "cast(int, 1.5f)", "1"},
    {"(int)-a + 1", "cast(int, -1)", "0"},
    {"(unsigned long long)a", "cast(unsigned long long, a)", "0"},
    {"sizeof(int)", "sizeofType(int)", "4u"},
    {"sizeof(a)", "sizeofSymbol(a)", "4u"},
    {"sizeof a", "sizeofSymbol(a)", "4u"},
    {"sizeof(a + 1)", "", "! cannot determine sizeof of a constant"},
    {"f()", "call(f)", "call(f)"},
    {"f(1, a)", "call(f, 1, a)", "call(f, 1, a)"},
    {"f(1 a)", "call(f, 1, a)", "call(f, 1, a)"},
    {"f(a+b)", "call(f, a, b)", "call(f, a, b)"},
    {"f(1,)", "call(f, 1)", "call(f, 1)"},
    {"f((a+b), -1)", "call(f, 3, -1)", "call(f, 3, -1)"},
    {"f(f(1))(2)", "call(f, 1)\ncall(f, call(f, 1))\ncall(call(f, call(f, 1)), 2)", "call(call(f, call(f, 1)), 2)"},
    {"1((1/0))", "", "! bad expression type"},
    {"arr[1:3]", "slice(arr, 1, 3)", "slice(arr, 1, 3)"},
    {"arr[i:3]", "", "! start should be an integer"},
    {"arr[1:2.5]", "", "! stop should be an integer"},
    {"1[1:2]", "", "! bad expression type"},
    {"real + 1", "", "3.5f"},
    {"text == \"abc\"", "", "true"},
    {"text + 1.5", "", "! unsupported binary numeric operation"},
    {"none + 1.5", "", "! unsupported binary numeric operation"},
    {"missing", "", "! missing?"},
};
// clang-format on

TEST(Target, EveryQuestionReachesTheHost) {
    for (const Row& row : rows) {
        HostParser parser;
        std::string answer;
        try {
            answer = HostParser::show(parser.parse(QString::fromLatin1(row.expression))).toStdString();
        } catch (const ParserException& fault) {
            answer = "! " + fault.message().toStdString();
        }
        EXPECT_EQ(answer, row.answer) << row.expression;
        EXPECT_EQ(parser.takeLog().toStdString(), row.asked) << row.expression;
    }
}

TEST(Target, ABoundNameIsNoLongerLookedUp) {
    HostParser parser;
    struct Binding {
        const char* expression;
        const char* bound;  ///< the text form with x bound to 0x100
    };
    const Binding bindings[] = {
        {"x + x", "(0x100 + 0x100)"},
        {"-x", "NegateExpression(0x100)"},
        {"(int)x", "((int)0x100)"},
        {"sizeof(x)", "sizeof 0x100"},
        {"a.x", "a.0x100"},
        {"a[x]", "a[0x100]"},
        {"x::y + xx", "(x::y + xx)"},
        {"f(x)", "f(x)"},
        {"&x", "(&x)"},
        {"a[x:x]", "a[x:x]"},
    };
    for (const Binding& row : bindings) {
        const ExpressionPtr tree = parser.parseTree(QString::fromLatin1(row.expression));
        tree->bindSymbol(QStringLiteral("x"), 0x100);
        EXPECT_EQ(tree->toString().toStdString(), row.bound);
    }
    const ExpressionPtr sum = parser.parseTree(QStringLiteral("x + 1"));
    EXPECT_THROW(sum->evaluate(), ParserException);
    sum->bindSymbol(QStringLiteral("x"), 0x100);
    const Value value = sum->evaluate();
    EXPECT_EQ(HostParser::show(value).toStdString(), "257u");
    EXPECT_EQ(value.size, 4U);
    sum->bindSymbol(QStringLiteral("x"), 0);
    EXPECT_THROW(sum->evaluate(), ParserException);
}

TEST(Target, SomeTreesCanBeCopied) {
    HostParser parser;
    for (const char* expression : {"1", "1.5", "a", "N::x", "a[1]", "a.b", "a.*b", "a.b[c][0x2].d", "*p"}) {
        ExpressionPtr tree = parser.parseTree(QString::fromLatin1(expression));
        const QString form = tree->toString();
        const ExpressionPtr copy = tree->clone();
        tree.reset();
        EXPECT_EQ(copy->toString(), form);
    }
    for (const char* expression : {"a + 1", "-a", "@r0", "&a", "f()", "(int)a", "sizeof a", "a[1:2]", "a = 1",
                                   "a[b + 1]", "addressof(\"f\", 1)"}) {
        try {
            parser.parseTree(QString::fromLatin1(expression))->clone();
            ADD_FAILURE() << expression;
        } catch (const ParserException& fault) {
            EXPECT_STREQ(fault.what(), "cannot duplicate expression");
        }
    }
}

}  // namespace
