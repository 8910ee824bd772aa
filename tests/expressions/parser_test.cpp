#include "expressions/host_parser.h"
#include "expressions/limits.h"
#include "expressions/simple_expression_parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace expressions_test;

std::string form(ExpressionParser& parser, const std::string& expression) {
    try {
        return parser.parseTree(QString::fromStdString(expression))->toString().toStdString();
    } catch (const ParserException& fault) {
        return "! " + fault.message().toStdString();
    }
}

struct Row {
    const char* expression;
    const char* expected;
};

void expectForms(std::initializer_list<Row> rows) {
    HostParser parser;
    for (const Row& row : rows) EXPECT_EQ(form(parser, row.expression), row.expected) << row.expression;
}

TEST(Parser, OperandsAndTheirTextForms) {
    expectForms({
        {"10", "0xa"},
        {"-1", "NegateExpression(0x1)"},
        {"1.0", "0x3ff0000000000000"},
        {"\"a\"", "0x0"},
        {"a", "a"},
        {"A::b::c", "A::b::c"},
        {"::a", "a"},
        {"::A::b", "A::b"},
        {"@r0", "Identifier(r0)"},
        {"~a", "BitNotExpression(a)"},
        {"!a", "LogicalNotExpression(a)"},
        {"+a", "a"},
        {"+-+a", "NegateExpression(a)"},
        {"*a", "a[0x0]"},
        {"**a", "a[0x0][0x0]"},
        {"&a", "(&a)"},
        {"&*a", "(&a[0x0])"},
        {"*a.b", "a.b[0x0]"},
        {"-a[1]", "NegateExpression(a[0x1])"},
        {"!f(1)", "LogicalNotExpression(f(0x1))"},
        {"a[1]", "a[0x1]"},
        {"a[1:b + 1]", "a[0x1:(b + 0x1)]"},
        {"a.b", "a.b"},
        {"a->b", "a.b"},
        {"a.*b", "a.*b"},
        {"a->*b", "a.*b"},
        {"a.B::c", "a.B::c"},
        {"(a)::b", "a.b"},
        {"f(1, 2)", "f(0x10x2)"},
        {"f(a+b)", "f(ab)"},
        {"f()", "f()"},
        {"f(-a.b, (c))", "f(NegateExpression(a.b)c)"},
        {"f(1)(2)[3].x", "f(0x1)(0x2)[0x3].x"},
        {"a++", "(a = (a + 0x1))"},
        {"a--", "(a = (a - 0x1))"},
        {"++a", "(a = (a + 0x1))"},
        {"--a", "(a = (a - 0x1))"},
        {"++a.b", "(a.b = (a.b + 0x1))"},
        {"a += b * c", "(a = (a + (b * c)))"},
        {"sizeof a + b", "sizeof (a + b)"},
        {"sizeof(a) + b", "(sizeof a + b)"},
        {"-sizeof a + b", "NegateExpression(sizeof (a + b))"},
        {"1 + sizeof 2 * 3 + 4", "(0x1 + sizeof ((0x2 * 0x3) + 0x4))"},
        {"sizeof(int) + 1", "(sizeof(int) + 0x1)"},
        {"sizeof", "! unexpected token TOKEN_EOL"},
        {"(sizeof a)", "sizeof a"},
        {"f(sizeof a, b)", "! operator not supported"},
        {"addressof(\"f.c\", 0012)", "addressof(\"f.c\", 10)"},
        {"a < b > c", "((a < b) > c)"},
        {"a = b = c", "((a = b) = c)"},
        {"a - b - c", "((a - b) - c)"},
    });
}

TEST(Parser, Types) {
    expectForms({
        {"(char)a", "((char)a)"},
        {"(short)a", "((short)a)"},
        {"(long)a", "((long)a)"},
        {"(long long)a", "((long long)a)"},
        {"(unsigned)a", "((unsigned int)a)"},
        {"(signed)a", "((int)a)"},
        {"(unsigned signed char)a", "((char)a)"},
        {"(unsigned long)a", "((unsigned long)a)"},
        {"(long unsigned long)a", "((unsigned long long)a)"},
        {"(long int)a", "((int)a)"},
        {"(float)a", "(()a)"},
        {"(unsigned double)a", "((unsigned )a)"},
        {"(const volatile unsigned char)a", "((unsigned char)a)"},
        {"(const a)", "a"},
        {"(int*)a", "((int*)a)"},
        {"(int *[3])a", "((int*[0x3])a)"},
        {"(int[2][a + 1]*)b", "((int[0x2][(a + 0x1)]*)b)"},
        {"(int)(char)a + b", "(((int)((char)a)) + b)"},
        {"(int)a.b", "((int)a.b)"},
        {"-(int)a", "NegateExpression(((int)a))"},
        {"(T)a", "((T)a)"},
        {"(T::x::y)a", "((T::x::y)a)"},
        {"(unsigned T)a", "((T)a)"},
        {"(T*::x)a", "! UserType expected"},
        {"(V<int, T*>)a", "((V<int, T*>)a)"},
        {"(V < int,T* >*)a", "((V<int, T*>*)a)"},
        {"(W<V<int>>::iterator::x)a", "((W<V<int>>::iterator::x)a)"},
        {"(W<V<int> >::y)", "W<V<int>>::y"},
        {"(V<int>)", "V<int>"},
        {"(V<unsigned int> + 1)", "(V<unsigned int> + 0x1)"},
        {"V<1, &a::b>", "V<1, &a::b>"},
        {"V<V<int>>::x", "V<V<int>>::x"},
        {"V", "V"},
        {"V + 1", "(V + 0x1)"},
        {"a.V<int>::b", "a.V<int>::b"},
        {"V<int", "! unexpected token TOKEN_EOL"},
        {"V<(>", "! unexpected token TOKEN_LPAREN"},
        {"(struct S)a", "((struct S)a)"},
        {"(struct S*)a", "((struct S*)a)"},
        {"(struct { int a; unsigned b : 3; char; T c; })x", "((int a;unsigned int b:3;char ;T c;)x)"},
        {"(struct {})x", "(()x)"},
        {"(register 4 lo 0 8 \"hi\" 8 0x8;)x", "((4 lo 0 8 \"hi\" 8 8)x)"},
        {"(register 4;*)x", "((4*)x)"},
        {"sizeof(unsigned)", "sizeof(unsigned int)"},
        {"sizeof((int)a)", "sizeof ((int)a)"},
    });
}

TEST(Parser, EveryFailureHasItsMessage) {
    expectForms({
        {"", "! unexpected token TOKEN_EOL"},
        {"1 +", "! unexpected token TOKEN_EOL"},
        {")", "! unexpected token TOKEN_RPAREN"},
        {"x ? 1 : 2", "! operator not supported"},
        {"1, 2", "! operator not supported"},
        {"1 >>> 2", "! operator not supported"},
        {"a >>>= 2", "! operator not supported"},
        {",", "! unexpected token TOKEN_COMMA"},
        {"1, )", "! unexpected token TOKEN_RPAREN"},
        {"(1", "! ')' expected"},
        {"(int", "! ')' expected"},
        {"sizeof(a", "! ')' expected"},
        {"sizeof(int", "! ')' expected"},
        {"sizeof(int*)", "! ')' expected"},
        {"a[1", "! expected ']'"},
        {"a[1:2", "! expected ']'"},
        {"(int[1)a", "! ']' expected"},
        {"a.1", "! identifier expected"},
        {"a->", "! identifier expected"},
        {"a::1", "! identifier expected"},
        {"::1", "! identifier expected"},
        {"(T::1)a", "! identifier expected"},
        {"(a)::1", "! identifier expected"},
        {"addressof", "! '(' expected"},
        {"addressof(1", "! string expected"},
        {"addressof(\"f\" 1", "! ',' expected"},
        {"addressof(\"f\", 0x1", "! int expected"},
        {"addressof(\"f\", 1", "! ')' expected"},
        {"(struct X)a", "! struct type not found"},
        {"(struct 1)a", "! '{' expected"},
        {"(struct { x a; })a", "! struct parse error"},
        {"(struct { int a : x; })a", "! integer must follow ':'"},
        {"(struct { int a })a", "! ';' expected"},
        {"(struct { int a;", "! struct parse error"},
        {"(register x", "! size expected"},
        {"(register 4 5", "! fieldname expected"},
        {"(register 4 a b", "! bitoffset expected"},
        {"(register 4 a 0 b", "! bitsize expected"},
        {"(register 4", "! fieldname expected"},
        {"1++", "(0x1 = (0x1 + 0x1))"},
        {"f()++", "! cannot duplicate expression"},
        {"@r0 += 1", "! cannot duplicate expression"},
        {"a++ ++", "! cannot duplicate expression"},
        {"++-a", "! cannot duplicate expression"},
        {"f(1", "! unexpected token TOKEN_EOL"},
        {"f(,)", "! unexpected token TOKEN_COMMA"},
        {"1 + #", "! unrecognised token: #"},
    });
}

struct Operator {
    std::string sign;
    int precedence;
};

const std::vector<Operator>& operators() {
    static const std::vector<Operator> list = {
        {"*", 9}, {"/", 9},  {"%", 9},  {"+", 8},  {"-", 8}, {"<<", 7}, {">>", 7}, {"<", 6},  {"<=", 6},
        {">", 6}, {">=", 6}, {"==", 5}, {"!=", 5}, {"&", 4}, {"^", 3},  {"|", 2},  {"&&", 1}, {"||", 0},
    };
    return list;
}

std::string value(ExpressionParser& parser, const std::string& expression) {
    try {
        return HostParser::show(parser.parse(QString::fromStdString(expression))).toStdString();
    } catch (const ParserException& fault) {
        return fault.message().toStdString();
    }
}

/// a OP b OP c against its bracketed form, in the tree and in the value.
TEST(Parser, AllPairsOfOperatorsBindAsBracketed) {
    HostParser host;
    SimpleExpressionParser parser;
    const char* triples[][3] = {{"7", "2", "3"}, {"1", "4", "2"}, {"12", "5", "7"}, {"0", "1", "1"}};
    for (const Operator& first : operators())
        for (const Operator& second : operators()) {
            const bool firstBinds = first.precedence >= second.precedence;
            const std::string middle = " " + first.sign + " b " + second.sign + " ";
            EXPECT_EQ(form(host, "a" + middle + "c"),
                      firstBinds ? "((a " + first.sign + " b) " + second.sign + " c)"
                                 : "(a " + first.sign + " (b " + second.sign + " c))");
            for (const auto& [a, b, c] : triples) {
                const std::string open = std::string(a) + first.sign + b + second.sign + c;
                const std::string bracketed =
                    firstBinds ? "(" + std::string(a) + first.sign + b + ")" + second.sign + c
                               : std::string(a) + first.sign + "(" + b + second.sign + c + ")";
                EXPECT_EQ(value(parser, open), value(parser, bracketed)) << open;
            }
        }
}

TEST(Parser, AssignmentsAreWeakAndBindFromTheLeft) {
    HostParser parser;
    for (const char* sign : {"*", "/", "%", "+", "-", "<<", ">>", "&", "^", "|"}) {
        const std::string compound = std::string("a ") + sign + "= b || c";
        EXPECT_EQ(form(parser, compound), std::string("(a = (a ") + sign + " (b || c)))");
    }
    EXPECT_EQ(form(parser, "a = b += c"), "! cannot duplicate expression") << "= binds before +=";
    EXPECT_EQ(form(parser, "a += b = c"), "(a = (a + (b = c)))");
}

std::string nested(const std::string& opening, std::size_t depth, const std::string& kernel,
                   const std::string& closing) {
    std::string result;
    for (std::size_t i = 0; i < depth; ++i) result += opening;
    result += kernel;
    for (std::size_t i = 0; i < depth; ++i) result += closing;
    return result;
}

TEST(Parser, NestingHasALimit) {
    struct Nesting {
        const char* opening;
        const char* kernel;
        const char* closing;
        std::size_t outer = 0;  ///< levels that an opening takes beyond the first
    };
    const Nesting shapes[] = {{"(", "1", ")"},       {"- ", "a", ""},    {"!", "1", ""},
                              {"& ", "a", ""},       {"a[", "1", "]"},   {"a[1:", "1", "]"},
                              {"f(", "1", ")"},      {"(int)", "1", ""}, {"sizeof ", "a", ""},
                              {"sizeof(", "a", ")"}, {"1+(", "1", ")"},  {"*", "a", ""}};
    HostParser parser;
    for (const Nesting& shape : shapes) {
        const std::string deepest = nested(shape.opening, maxNesting, shape.kernel, shape.closing);
        EXPECT_FALSE(form(parser, deepest).starts_with("!")) << shape.opening << form(parser, deepest);
        for (const std::size_t depth : {maxNesting + 1, std::size_t{1'000'000}})
            EXPECT_EQ(form(parser, nested(shape.opening, depth, shape.kernel, shape.closing)),
                      "! expression nested too deeply")
                << shape.opening;
    }
    for (const auto& [stars, fits] :
         {std::pair(maxNesting, true), {maxNesting + 1, false}, {std::size_t{1'000'000}, false}})
        EXPECT_EQ(form(parser, "(int" + std::string(stars, '*') + ")1") != "! expression nested too deeply",
                  fits);
    EXPECT_EQ(form(parser, nested("(int[", 1'000'000, "1", "])1")), "! expression nested too deeply");
    EXPECT_EQ(form(parser, nested("(", 1'000'000, "", "")), "! expression nested too deeply");
}

TEST(Parser, ChainsHaveNone) {
    SimpleExpressionParser parser;
    std::string sum = "1";
    for (int i = 0; i < 100'000; ++i) sum += "+1";
    EXPECT_EQ(value(parser, sum), "100001");
    HostParser host;
    const ExpressionPtr members = host.parseTree(QString::fromStdString("a" + nested(".b", 100'000, "", "")));
    EXPECT_EQ(members->clone()->toString().size(), 200'001);
    members->bindSymbol(QStringLiteral("a"), 1);
    EXPECT_THROW(members->evaluate(), ParserException);
}

TEST(Parser, NothingIsLeftOfAnEarlierText) {
    HostParser parser;
    EXPECT_THROW(parser.parse(QStringLiteral("(((1 + #")), ParserException);
    EXPECT_EQ(form(parser, "1"), "0x1");
}

}  // namespace
