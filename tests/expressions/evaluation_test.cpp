#include "expressions/host_parser.h"
#include "expressions/operator_expressions.h"
#include "expressions/simple_expression_parser.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace expressions_test;

QString text(const std::string& bytes) {
    return QString::fromStdString(bytes);
}

/// The value as text, or the message of the failure behind "! ".
std::string answer(ExpressionParser& parser, const std::string& expression) {
    try {
        return HostParser::show(parser.parse(text(expression))).toStdString();
    } catch (const ParserException& fault) {
        return "! " + fault.message().toStdString();
    }
}

struct Row {
    const char* expression;
    const char* expected;
};

void expectRows(ExpressionParser& parser, std::initializer_list<Row> rows) {
    for (const Row& row : rows) EXPECT_EQ(answer(parser, row.expression), row.expected) << row.expression;
}

constexpr const char* noBinary = "! unsupported binary numeric operation";
constexpr const char* noUnary = "! unsupported unary num operation";
constexpr const char* noComparison = "! unsupported comparison operation";
constexpr const char* divideByZero = "! divide by zero";

TEST(Evaluation, Arithmetic) {
    SimpleExpressionParser parser;
    expectRows(parser, {
                           {"", "none"},
                           {"1 + 2 * 3", "7"},
                           {"(1 + 2) * 3", "9"},
                           {"10 - 2 - 3", "5"},
                           {"1 2", "1"},
                           {"7 / 2", "3"},
                           {"-7 / 2", "-3"},
                           {"7.0 / 2", "3.5f"},
                           {"7 / 2.0", "3.5f"},
                           {"-7 % 3", "-1"},
                           {"7 % 2.5", "1"},
                           {"1.5 + 2", "3.5f"},
                           {"1 - 0.5", "0.5f"},
                           {"2 * 0.25", "0.5f"},
                           {"(1 == 1) + 0.5", "1.5f"},
                           {"1.5 + \"a\"", "1.5f"},
                           {"1 + \"a\"", "1"},
                           {"1 + (2 == 2)", "2"},
                           {"6 & 3", "2"},
                           {"6 | 3", "7"},
                           {"6 ^ 3", "5"},
                           {"1 && 2", "1"},
                           {"1 && 0", "0"},
                           {"0 || 2", "1"},
                           {"0 || 0", "0"},
                           {"1 << 4", "16"},
                           {"1 << 64", "1"},
                           {"1 << -1", "-9223372036854775808"},
                           {"-16 >> 2", "-4"},
                           {"9223372036854775807 + 1", "-9223372036854775808"},
                           {"-9223372036854775808 / -1", "-9223372036854775808"},
                           {"-9223372036854775808 % -1", "0"},
                           {"0x10 + 010 + 0b11", "27"},
                           {"+5", "5"},
                           {"- - 5", "5"},
                           {"~0", "-1"},
                           {"-1.5", "-1.5f"},
                           {"-(1 == 1)", "-1"},
                           {"!0", "true"},
                           {"!2", "false"},
                           {"!0.0", "true"},
                           {"!(1 == 2)", "true"},
                       });
}

TEST(Evaluation, BooleansCombineByTheirBytes) {
    SimpleExpressionParser parser;
    const std::string yes = "(1==1)";
    const std::string no = "(1==2)";
    struct Column {
        const char* sign;
        const char* results[4];  // yes-yes, yes-no, no-yes, no-no
    };
    const Column columns[] = {
        {"+", {"true", "true", "true", "false"}},
        {"-", {"false", "true", "true", "false"}},
        {"*", {"true", "false", "false", "false"}},
        {"/", {"true", divideByZero, "false", divideByZero}},
        {"%", {"false", divideByZero, "false", divideByZero}},
        {"&", {"true", "false", "false", "false"}},
        {"|", {"true", "true", "true", "false"}},
        {"^", {"false", "true", "true", "false"}},
        {"&&", {"true", "false", "false", "false"}},
        {"||", {"true", "true", "true", "false"}},
        {"==", {"true", "false", "false", "true"}},
        {"!=", {"false", "true", "true", "false"}},
        {"<", {"false", "false", "true", "false"}},
        {"<=", {"true", "false", "true", "true"}},
        {">", {"false", "true", "false", "false"}},
        {">=", {"true", "true", "false", "true"}},
    };
    for (const Column& column : columns)
        for (int i = 0; i < 4; ++i) {
            const std::string expression = (i < 2 ? yes : no) + column.sign + (i % 2 == 0 ? yes : no);
            EXPECT_EQ(answer(parser, expression), column.results[i]) << expression;
        }
    EXPECT_EQ(answer(parser, yes + "&& 256"), "false") << "the first byte alone";
    EXPECT_EQ(answer(parser, yes + "+ 0.5"), "1.5f");
    EXPECT_EQ(answer(parser, yes + "&& 0.5"), "false") << "the first byte of the double";
}

TEST(Evaluation, Comparisons) {
    SimpleExpressionParser parser;
    expectRows(parser, {
                           {"-1 < 0", "true"},
                           {"1 < 1", "false"},
                           {"1 <= 1", "true"},
                           {"2 > 1", "true"},
                           {"1 >= 2", "false"},
                           {"1 == 1", "true"},
                           {"1 != 1", "false"},
                           {"1 == 1.9", "true"},
                           {"\"a\" == \"a\"", "true"},
                           {"\"a\" != \"a\"", "false"},
                           {"\"a\" < \"b\"", "true"},
                           {"\"b\" <= \"a\"", "false"},
                           {"\"b\" > \"a\"", "true"},
                           {"\"a\" >= \"a\"", "true"},
                           {"\"\" == 1", "true"},
                           {"1.5 < 2", noComparison},
                           {"1.5 == 1.5", noComparison},
                       });
}

TEST(Evaluation, EveryFailureHasItsMessage) {
    SimpleExpressionParser parser;
    expectRows(parser, {
                           {"1 && (1/0)", divideByZero},
                           {"1 / 0", divideByZero},
                           {"1 % 0", divideByZero},
                           {"1.0 / 0", divideByZero},
                           {"1 / 0.0", divideByZero},
                           {"1 / (1 == 2)", divideByZero},
                           {"unknown / 0", divideByZero},
                           {"\"a\" / 0", divideByZero},
                           {"1 / \"a\"", noBinary},
                           {"1.5 % 2", noBinary},
                           {"1.5 & 1", noBinary},
                           {"1.5 | 1", noBinary},
                           {"1.5 ^ 1", noBinary},
                           {"1.5 && 1", noBinary},
                           {"1.5 || 1", noBinary},
                           {"\"a\" + 1", noBinary},
                           {"\"a\" + 1.5", noBinary},
                           {"\"a\" - \"a\"", noBinary},
                           {"1 << 1.5", "! integer shift value expected"},
                           {"1.5 << (1==1)", "! integer shift value expected"},
                           {"1.5 << 1", "! can only shift numeric values"},
                           {"(1==1) >> 1", "! can only shift numeric values"},
                           {"~1.0", noUnary},
                           {"~(1 == 1)", noUnary},
                           {"-\"a\"", noUnary},
                           {"!\"a\"", noUnary},
                           {"a", "! a symbol not found"},
                           {"a = 1", "! a symbol not found"},
                           {"A::b", "! A::b symbol not found"},
                           {"::b", "! b symbol not found"},
                           {"@r0", "! r0unknown register"},
                           {"(int)1.5", "! cannot cast"},
                           {"sizeof(int)", "! sizeof(typename) not implemented"},
                           {"sizeof 1", "! cannot determine sizeof of a constant"},
                           {"addressof(\"f.c\", 12)", "! addressof not implemented"},
                           {"&1", "! cannot take address of a constant"},
                           {"*1", "! bad expression type"},
                           {"1[1/0]", "! bad expression type"},
                           {"1.x", "! bad expression type"},
                           {"1 = 1/0", "! bad expression type"},
                           {"1.*x", "! x symbol not found"},
                           {"1(2)", "! bad expression type"},
                           {"1[1:2]", "! bad expression type"},
                           {"1 += 1", "! bad expression type"},
                       });
}

TEST(Evaluation, TheParserWithoutATargetRefuses) {
    SimpleExpressionParser parser;
    HostSymbol symbol(QStringLiteral("s"), {});
    const UserType type(QStringLiteral("T"));
    const auto refusal = [](auto&& operation) -> std::string {
        try {
            operation();
            return "";
        } catch (const ParserException& fault) {
            return fault.what();
        }
    };
    EXPECT_FALSE(parser.isPointer(symbol) || parser.isArray(symbol));
    EXPECT_FALSE(parser.isTypeName(QStringLiteral("int")) || parser.isTemplateName(QStringLiteral("V")));
    EXPECT_EQ(refusal([&] { parser.scopedMember(symbol, {}); }), "cannot dereference");
    EXPECT_EQ(refusal([&] { parser.member(symbol, {}); }), "cannot dereference");
    EXPECT_EQ(refusal([&] { parser.index(symbol, 0); }), "cannot dereference");
    EXPECT_EQ(refusal([&] { parser.pointerToMember(symbol, symbol); }), "cannot dereference");
    EXPECT_EQ(refusal([&] { parser.pointerAdd(symbol, 1); }), "addressof not implemented");
    EXPECT_EQ(refusal([&] { parser.addressOf(symbol); }), "addressof not implemented");
    EXPECT_EQ(refusal([&] { parser.sizeofSymbol(symbol); }), "sizeof expression not implemented");
    EXPECT_EQ(refusal([&] { parser.assign(symbol, {}); }), "this symbol not found");
    EXPECT_EQ(refusal([&] { parser.readSymbol(symbol); }), "this symbol not found");
    EXPECT_EQ(refusal([&] { parser.call(symbol, {}); }), "function calling not implemented");
    EXPECT_EQ(refusal([&] { parser.slice(symbol, 0, 1); }), "cannot array slice");
}

TEST(Evaluation, EntryPointsCatchAndTell) {
    SimpleExpressionParser parser;
    struct Entry {
        const char* expression;
        bool isBoolean, boolean, isInteger;
        std::int64_t integer;
        std::uint64_t natural;
    };
    const Entry entries[] = {
        {"1 == 1", true, true, false, 0, 0},
        {"1 == 2", true, false, false, 0, 0},
        {"-1", false, false, true, -1, ~0ULL},
        {"2.75", false, false, true, 2, std::bit_cast<std::uint64_t>(2.75)},
        {"\"a\"", false, false, false, 0, 0},
        {"", false, false, false, 0, 0},
        {"a = 1", false, false, false, 0, 0},
        {"1 +", false, false, false, 0, 0},
        {"#", false, false, false, 0, 0},
    };
    for (const Entry& entry : entries) {
        bool ok = !entry.isBoolean;
        EXPECT_EQ(parser.evaluateBoolean(text(entry.expression), &ok), entry.boolean) << entry.expression;
        EXPECT_EQ(ok, entry.isBoolean) << entry.expression;
        ok = !entry.isInteger;
        EXPECT_EQ(parser.evaluateInteger(text(entry.expression), &ok), entry.integer) << entry.expression;
        EXPECT_EQ(ok, entry.isInteger) << entry.expression;
        ok = !entry.isInteger;
        EXPECT_EQ(parser.evaluateUnsigned(text(entry.expression), &ok), entry.natural) << entry.expression;
        EXPECT_EQ(ok, entry.isInteger) << entry.expression;
    }
    qsizetype end = -1;
    parser.parse(QStringLiteral(" 1 2"), &end);
    EXPECT_EQ(end, 2);
    parser.parse(QString(), &end);
    EXPECT_EQ(end, 0);
}

TEST(Value, ReadsAsNumbers) {
    struct Reading {
        Value value;
        std::int64_t asSigned;
        std::uint64_t asUnsigned;
        double asDouble;
    };
    const auto field = [](ValueKind kind, std::uint64_t data, std::uint32_t width) {
        Value value = Value::ofUnsigned(data, 1);
        value.kind = kind;
        value.bitWidth = width;
        return value;
    };
    constexpr double huge = 1e30;
    const Reading readings[] = {
        {Value::ofBoolean(true), 1, 1, 1},
        {Value::ofSigned(-1, 1), -1, 0xff, -1},
        {Value::ofSigned(0x180, 1), -128, 0x80, -128},
        {Value::ofSigned(-2, 2), -2, 0xfffe, -2},
        {Value::ofSigned(-2, 4), -2, 0xfffffffe, -2},
        {Value::ofSigned(-2, 8), -2, 0xfffffffffffffffe, -2},
        {Value::ofUnsigned(0xff, 1), -1, 0xff, 255},
        {Value::ofUnsigned(~0ULL, 4), -1, 0xffffffff, 4294967295.0},
        {field(ValueKind::Signed, 0x7, 3), -1, 7, -1},
        {field(ValueKind::Signed, 0x3, 3), 3, 3, 3},
        {field(ValueKind::Unsigned, 0xfff, 12), -1, 0xfff, 4095},
        {field(ValueKind::Signed, ~0ULL, 64), -1, ~0ULL, -1},
        {Value::ofString(QStringLiteral("7")), 0, 0, 0},
        {Value(), 0, 0, 0},
        {Value::ofFloat(-2.75), -2, std::bit_cast<std::uint64_t>(-2.75), -2.75},
        {Value::ofFloat(-2.75, 4), -2, std::bit_cast<std::uint32_t>(-2.75F), -2.75},
        {Value::ofFloat(-2.75, 2), -2, 0xc180, -2.75},
        {Value::ofFloat(1, 2), 1, 0x3c00, 1},
        {Value::ofFloat(1, 1), 1, 0, 1},
        {Value::ofFloat(huge), std::numeric_limits<std::int64_t>::max(), std::bit_cast<std::uint64_t>(huge),
         huge},
        {Value::ofFloat(-huge), std::numeric_limits<std::int64_t>::min(), std::bit_cast<std::uint64_t>(-huge),
         -huge},
    };
    for (const Reading& reading : readings) {
        EXPECT_EQ(reading.value.toSigned(), reading.asSigned);
        EXPECT_EQ(reading.value.toUnsigned(), reading.asUnsigned);
        EXPECT_EQ(reading.value.toDouble(), reading.asDouble);
    }
    EXPECT_EQ(Value::ofFloat(std::numeric_limits<double>::quiet_NaN()).toSigned(), 0);
    EXPECT_EQ(Value().size, 2U);
}

/// Sizes and kinds follow the left side.
TEST(Evaluation, ResultsHaveTheKindAndSizeOfTheLeftSide) {
    HostParser parser;
    struct Result {
        const char* expression;
        ValueKind kind;
        std::uint32_t size;
        const char* shown;
    };
    const Result results[] = {
        {"1", ValueKind::Signed, 8, "1"},
        {"1.5", ValueKind::Float, 8, "1.5f"},
        {"a + 1", ValueKind::Signed, 4, "2"},
        {"1 + a", ValueKind::Signed, 8, "2"},
        {"u8 + 1", ValueKind::Unsigned, 1, "0u"},
        {"1 + u8", ValueKind::Signed, 8, "0"},
        {"u8 >> 4", ValueKind::Unsigned, 1, "15u"},
        {"u8 << 4", ValueKind::Unsigned, 1, "240u"},
        {"u8 > 1", ValueKind::Boolean, 0, "true"},
        {"a + 0.5", ValueKind::Float, 4, "1.5f"},
        {"u8 / 2", ValueKind::Unsigned, 1, "127u"},
        {"u8 % 16", ValueKind::Unsigned, 1, "15u"},
        {"-u8", ValueKind::Unsigned, 1, "1u"},
        {"~u8", ValueKind::Unsigned, 1, "0u"},
        {"!u8", ValueKind::Boolean, 0, "false"},
        {"-real", ValueKind::Float, 8, "-2.5f"},
        {"u8 << u8", ValueKind::None, 0, "! integer shift value expected"},
    };
    for (const Result& result : results) {
        EXPECT_EQ(answer(parser, result.expression), result.shown) << result.expression;
        if (result.kind == ValueKind::None) continue;
        const Value value = parser.parse(text(result.expression));
        EXPECT_EQ(value.kind, result.kind) << result.expression;
        EXPECT_EQ(value.size, result.size) << result.expression;
    }
}

TEST(Evaluation, DivisorsThatReadAsZeroAreRefused) {
    HostParser parser;
    parser.define(QStringLiteral("wide"), Value::ofSigned(std::int64_t{1} << 32, 4));
    expectRows(parser, {{"1 / wide", divideByZero}, {"1 % wide", divideByZero}, {"1 / none", noBinary}});
}

}  // namespace
