#include "script/forth/forth_engine.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace script;

/// Lines that follow each other through `refill`.
class LinesSource : public Source {
public:
    explicit LinesSource(std::vector<std::string> lines) : lines_(std::move(lines)) {
        fileName = QStringLiteral("lines");
        text = lines_.front();
    }

    int refill(ForthEngine& engine) override {
        if (++line >= lines_.size()) return 0;
        text = lines_[line];
        engine.inputPosition = 0;
        return 1;
    }

private:
    std::vector<std::string> lines_;
};

class Push : public pcode {
public:
    explicit Push(std::int64_t number) : number_(number) {}
    void execute(ForthEngine& engine) override {
        pushValue(engine.dataStack, ForthValue::ofInteger(number_));
    }

private:
    std::int64_t number_;
};

struct Sink : ForthErrorSink {
    void error(const QString& text) override { told.push_back(text.toStdString()); }
    std::vector<std::string> told;
};

class ForthTest : public testing::Test {
protected:
    std::string run(Source& source) {
        engine.source = &source;
        QString result;
        interpret(result, engine);
        return result.toStdString();
    }

    std::string run(const std::string& line) {
        StringSource source(line);
        return run(source);
    }

    /// The stack, bottom first, reals with an "r"; it is empty afterwards.
    std::string takeStack() {
        std::string text;
        for (std::size_t i = 0; i < engine.dataStack.count; ++i) {
            const ForthValue& value = engine.dataStack.values[i];
            if (!text.empty()) text += " ";
            text +=
                value.type == ForthReal ? std::to_string(value.real) + "r" : std::to_string(value.integer);
        }
        engine.dataStack.count = 0;
        return text;
    }

    void enter(WordList& list) { engine.searchOrder[engine.searchOrderCount++] = &list; }

    ForthEngine engine;
};

TEST_F(ForthTest, ReadsNumbers) {
    const struct {
        const char* line;
        const char* stack;
        const char* error;
    } cases[] = {
        {"", "", ""},
        {" \t\r\n\x80", "", ""},
        {"1 -2\t+3", "1 -2 3", ""},
        {"$ff $FFffFFff %101 #10 -#10 -$10", "255 -1 5 10 -10 -16", ""},
        {"4294967297 -2147483648", "1 -2147483648", ""},
        {"12G 1x 7$ 0x10", "12 1 7 0", ""},
        {"%12", "1", ""},
        {"1e3 1E 1.5e1 -1e-2", "1000.000000r 1.000000r 15.000000r -0.010000r", ""},
        {"e 1e3e5", "0.000000r 1000.000000r", ""},
        {"1 1.5", "1", "undefined word: 1.5"},
        {"1.", "", "undefined word: 1."},
        {"1.2.3", "", "undefined word: 1.2.3"},
        {"1g.", "1", ""},
        {"$", "", "undefined word: $"},
        {"-", "", "undefined word: -"},
        {"%2", "", "undefined word: %2"},
        {"--1", "", "undefined word: --1"},
        {"foo\xC3\xA9 1", "", "undefined word: FOO\xC3\xA9"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(run(row.line), row.error) << row.line;
        EXPECT_EQ(takeStack(), row.stack) << row.line;
    }
}

TEST_F(ForthTest, FindsWordsFromTheLastListToTheFirst) {
    Push one(1), two(2), three(3), four(4);
    WordList first{{QStringLiteral("A"), &one}, {QStringLiteral("B"), &one}, {QStringLiteral("12"), &one}};
    WordList second{{QStringLiteral("B"), &two}};
    WordList ahead{{QStringLiteral("B"), &three}, {QStringLiteral("C"), &four}};
    enter(first);
    enter(second);
    EXPECT_EQ(run("a B b 12"), "");
    EXPECT_EQ(takeStack(), "1 2 2 1");
    engine.current = &ahead;
    EXPECT_EQ(run("a b c"), "");
    EXPECT_EQ(takeStack(), "1 3 4");
    EXPECT_EQ(findWord(engine, QStringLiteral("C")), nullptr);
}

TEST_F(ForthTest, CompilesThreadedCode) {
    Push one(1), now(9);
    now.flags = ForthImmediate;
    WordList words{{QStringLiteral("ONE"), &one}, {QStringLiteral("NOW"), &now}};
    enter(words);
    ForthDefinition inner(QStringLiteral("INNER"));
    engine.definition = &inner;
    engine.compiling = 1;
    EXPECT_EQ(run("one now 5 1e1"), "");
    EXPECT_EQ(takeStack(), "9");

    ForthDefinition outer(QStringLiteral("OUTER"));
    words[inner.name] = &inner;
    engine.definition = &outer;
    EXPECT_EQ(run("inner 7 inner"), "");
    engine.compiling = 0;
    outer.execute(engine);
    EXPECT_EQ(takeStack(), "1 5 10.000000r 7 1 5 10.000000r");
    EXPECT_EQ(engine.instruction, nullptr);

    outer.sealed = true;
    engine.compiling = 1;
    EXPECT_EQ(run("1"), "sealed definition: OUTER");
    EXPECT_EQ(engine.definition, nullptr);
    EXPECT_EQ(engine.compiling, 0);
    engine.compiling = 1;
    EXPECT_EQ(run("one"), "no current definition");
}

TEST_F(ForthTest, StopsAtItsLimits) {
    std::string result;
    for (int i = 0; i < 513 && result.empty(); ++i) result = run("1");
    EXPECT_EQ(result, "stack overflow");
    EXPECT_EQ(engine.dataStack.count, 512U);
    engine.dataStack.count = 0;

    EXPECT_EQ(run(std::string(127, 'A')).size(), std::string("undefined word: ").size() + 127);
    EXPECT_EQ(run(std::string(128, 'A')), "string buffer overflow");
    EXPECT_EQ(run("1" + std::string(255, ' ')), "");
    EXPECT_THROW(StringSource(std::string(257, ' ')), ForthException);

    ForthDefinition endless(QStringLiteral("ENDLESS"));
    endless.append(std::make_unique<PCall>(&endless));
    WordList words{{endless.name, &endless}};
    enter(words);
    EXPECT_EQ(run("endless"), "return stack overflow");
    EXPECT_EQ(run("1"), "");
}

TEST_F(ForthTest, TakesTextUpToADelimiter) {
    StringSource source("\"\"a  Text \"2 (b");
    engine.source = &source;
    EXPECT_EQ(nextWord(engine, '"', true, true), QStringLiteral("a  Text "));
    EXPECT_EQ(engine.wordPosition, 2U);
    EXPECT_EQ(nextWord(engine, ' ', false, false), QStringLiteral("2"));
    EXPECT_EQ(engine.wordPosition, 2U);
    EXPECT_EQ(nextWord(engine, ')', false, false), QStringLiteral(" (B"));
    EXPECT_EQ(nextWord(engine, ')', false, false), QString());
}

TEST_F(ForthTest, NotesWhereWordsBegin) {
    LinesSource source({"1", "", "  2  x y"});
    EXPECT_EQ(run(source), "undefined word: X");
    EXPECT_EQ(takeStack(), "1 2");
    EXPECT_EQ(engine.wordPosition, 5U);
    EXPECT_EQ(engine.wordLine, 2U);
    EXPECT_EQ(engine.wordFile, QStringLiteral("lines"));
}

TEST_F(ForthTest, TellsTheSinkOfEachError) {
    Sink sink;
    engine.errorSink = &sink;
    run("1 foo 2");
    run("1");
    run("1.5");
    EXPECT_EQ(sink.told, (std::vector<std::string>{"undefined word: FOO", "undefined word: 1.5"}));
}

TEST_F(ForthTest, NodesRefuseWhatTheyLack) {
    pcode word(QStringLiteral("W"));
    const struct {
        const char* text;
        void (*act)(pcode& word, ForthEngine& engine);
    } cases[] = {
        {"host execution of this word not supported: W", [](pcode& w, ForthEngine& e) { w.execute(e); }},
        {"Wdoes not have a PFA", [](pcode& w, ForthEngine&) { w.parameterField(); }},
        {"no CFA", [](pcode& w, ForthEngine&) { w.codeField(); }},
        {"no store method defined: W", [](pcode& w, ForthEngine&) { w.store(); }},
    };
    for (const auto& row : cases) {
        try {
            row.act(word, engine);
            ADD_FAILURE() << row.text;
        } catch (const ForthException& exception) {
            EXPECT_EQ(errorText(exception).toStdString(), row.text);
        }
    }
    word.body = &engine;
    EXPECT_EQ(word.parameterField(), &engine);
}

TEST(ForthErrorText, JoinsCodeAndText) {
    const struct {
        std::int32_t code;
        const char* text;
        const char* expected;
    } cases[] = {
        {-1, "", "abort thrown"},
        {-2, "", "abort thrown"},
        {-1, "why", "why"},
        {-2, "why", "why"},
        {-3, "", "stack underflow"},
        {-30, "", "olsolescent feature"},
        {-31, "x", ">BODY error: x"},
        {-57, "", "receive/transmit exception"},
        {-269, "", "out of context"},
        {-270, "W", "sealed definition: W"},
        {-8, "", "-8 THROW undefined"},
        {42, "x", "42 THROW undefined: x"},
        {-257, "", "LEAVE not in DO"},
        {-264, "", "no DO loop"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(errorText(ForthException(row.code, QString::fromLatin1(row.text))).toStdString(),
                  row.expected);
}

}  // namespace
