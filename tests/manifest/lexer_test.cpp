#include "manifest/binding_env.h"
#include "manifest/eval_string.h"
#include "manifest/manifest_lexer.h"

#include <gtest/gtest.h>

namespace {

using namespace manifest;

/// A lexer over a text that it keeps.
class TextLexer : public ManifestLexer {
public:
    explicit TextLexer(std::string text) : text_(std::move(text)) {
        start("file", {text_.c_str(), text_.size() + 1});
    }
    TextLexer(const TextLexer&) = delete;

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

TEST(Lexer, CutsTokens) {
    const struct {
        std::string text;
        std::string tokens;
    } rows[] = {
        {"", "eof"},
        {"build pool rule default include subninja",
         "'build' 'pool' 'rule' 'default' 'include' 'subninja' eof"},
        {"subninja2 buildx x.build build- Build",
         "identifier identifier identifier identifier identifier eof"},
        {"= : | || |||", "'=' ':' '|' '||' '||' '|' eof"},
        {"a\nb\r\nc", "identifier newline identifier newline identifier eof"},
        {"   \n  \r\n", "newline newline eof"},
        {"  a", "indent identifier eof"},
        {"# c\n  # d\n\na", "newline identifier eof"},
        {"  # d\n  a", "indent identifier eof"},
        {"a # c\nb", "identifier identifier eof"},
        {"# no line feed", "lexing error identifier identifier identifier eof"},
        {"  # no", "indent lexing error identifier eof"},
        {"a $\n  b $\r\n c", "identifier identifier identifier eof"},
        {"a $b", "identifier lexing error identifier eof"},
        {"\ta", "lexing error identifier eof"},
        {"a\rb", "identifier lexing error identifier eof"},
        {"\xC3\xA4", "lexing error lexing error eof"},
        {std::string("a\0b", 3), "identifier eof"},
    };
    for (const auto& row : rows) {
        TextLexer lexer(row.text);
        std::string tokens;
        Token token = Token::ERROR;
        do {
            token = lexer.readToken();
            tokens.append(tokens.empty() ? "" : " ").append(tokenName(token));
        } while (token != Token::TEOF);
        EXPECT_EQ(tokens, row.tokens) << row.text;
    }
}

TEST(Lexer, PeeksWithoutConsumingAnotherToken) {
    TextLexer lexer("# c\n  a = 1");
    EXPECT_FALSE(lexer.peekToken(Token::IDENT));
    EXPECT_TRUE(lexer.peekToken(Token::INDENT));
    std::string_view name;
    EXPECT_TRUE(lexer.readIdentifier(&name));
    EXPECT_EQ(name, "a");
    EXPECT_FALSE(lexer.readIdentifier(&name));
    EXPECT_TRUE(lexer.peekToken(Token::EQUALS));
}

/// Shows what a lookup asks for.
class NameEnv : public Env {
public:
    std::string_view lookupVariable(std::string_view name) override {
        return names_.emplace_back("<" + std::string(name) + ">");
    }

private:
    std::deque<std::string> names_;
};

TEST(Lexer, ReadsPathsAndValues) {
    const struct {
        std::string text;
        bool isPath;
        std::string result;  ///< or the first line of the error
    } rows[] = {
        {"a b\n", true, "a"},
        {"a$ b c\n", true, "a b"},
        {"a:b\n", true, "a"},
        {"a|b\n", true, "a"},
        {"a$:b$$c$|\n", true, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"a$:b$$c\r\n", true, "a:b$c"},
        {"a$\n   b c\n", true, "ab"},
        {"\n", true, ""},
        {" a\n", true, ""},
        {"a\tb\n", true, "a\tb"},
        {"a b : | c\n", false, "a b : | c"},
        {"  a$\n   b$\r\n  c \r\nd\n", false, "  abc "},
        {"$a.b ${a.b}$a-b\n", false, "<a>.b <a.b><a-b>"},
        {"$$$a$$\n", false, "$<a>$"},
        {"${}\n", false, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"${a\n", false, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"$(\n", false, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"$.\n", false, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"a$\rb\n", false, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"a\rb\n", false, "file:1: lexing error"},
        {"a$", true, "file:1: bad $-escape (literal $ must be written as $$)"},
        {"a", true, "file:1: unexpected EOF"},
        {"a $\n", false, "file:2: unexpected EOF"},
        {std::string("a\0b\n", 4), false, "file:1: unexpected EOF"},
    };
    for (const auto& row : rows) {
        TextLexer lexer(row.text);
        EvalString value;
        std::string error;
        const bool done = row.isPath ? lexer.readPath(&value, &error) : lexer.readValue(&value, &error);
        NameEnv env;
        EXPECT_EQ(done ? value.evaluate(env) : error.substr(0, error.find('\n')), row.result) << row.text;
    }
}

TEST(Lexer, AnswersASinglePieceWithoutACopy) {
    TextLexer lexer("one literal piece\n");
    EvalString value;
    std::string error;
    ASSERT_TRUE(lexer.readValue(&value, &error));
    NameEnv env;
    std::string buffer;
    EXPECT_EQ(value.evaluate(env, &buffer).data(), lexer.text().data());
}

TEST(Lexer, PutsThePlaceAroundAMessage) {
    const std::string wide(80, 'x');
    const struct {
        std::string line;  ///< the token before its "!" is where the error points
        std::string error;
    } rows[] = {
        {"!", "file:2: m\n"},
        {"ab !", "file:2: m\nab !\n   ^ near here"},
        {wide.substr(0, 71) + "!",
         "file:2: m\n" + wide.substr(0, 71) + "!\n" + std::string(71, ' ') + "^ near here"},
        {wide.substr(0, 71) + "!y",
         "file:2: m\n" + wide.substr(0, 71) + "!...\n" + std::string(71, ' ') + "^ near here"},
        {wide.substr(0, 72) + "!", "file:2: m\n"},
    };
    for (const auto& row : rows) {
        for (const char* end : {"\n", "", "\nmore\n"}) {
            TextLexer lexer("first\n" + row.line + end);
            while (lexer.readToken() != Token::ERROR) {
            }
            std::string error;
            EXPECT_FALSE(lexer.error("m", &error));
            EXPECT_EQ(error, row.error);
        }
    }
}

TEST(Lexer, CutsThePlaceAtTheSizeOfItsBuffer) {
    const std::string name(2000, 'n');
    ManifestLexer lexer;
    lexer.start(name, std::string_view("", 1));
    std::string error;
    lexer.error("m", &error);
    EXPECT_EQ(error, name.substr(0, 1023) + "m\n");
}

}  // namespace
