#include "expressions/c_style_lexer.h"
#include "expressions/integer_value.h"
#include "expressions/parser_exception.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

namespace {

using namespace expressions;

/// All tokens of a text, as NAME:TEXT with the precedence behind those that are operators.
std::string tokens(Lexer& lexer, const QString& text) {
    QStringList list;
    lexer.setInput(text);
    for (; lexer.token() != Token::Eol; lexer.next()) {
        QString entry = tokenName(lexer.token()).sliced(6) + u':' + lexer.text();
        if (lexer.precedence() != Lexer::noOperator) entry += u'/' + QString::number(lexer.precedence());
        list.append(entry);
    }
    return list.join(u' ').toStdString();
}

std::string failure(Lexer& lexer, const QString& text) {
    try {
        return "no failure: " + tokens(lexer, text);
    } catch (const ParserException& fault) {
        return fault.message().toStdString();
    }
}

TEST(CStyleLexer, ReadsEveryToken) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {" \t\r\n ", ""},
        {"\"a b\" \"\"", "STRING:\"a b\" STRING:\"\""},
        {"0x 0xfFuLL 0b 0b10", "HEXINTEGER:0x HEXINTEGER:0xfFu IDENT:LL BININTEGER:0b BININTEGER:0b10"},
        {"0xFULLull 10UL 7ull", "HEXINTEGER:0xFULLull INTEGER:10UL INTEGER:7ull"},
        {"1.5 1. .5", "FLOAT:1.5 INTEGER:1 DOT:. DOT:. INTEGER:5"},
        {"a_$1 $x _", "IDENT:a_$1 IDENT:$x IDENT:_"},
        {"@r0 @", "REGISTER:@r0 REGISTER:@"},
        {"; : :: ( ) [ ] { }",
         "SEMICOLON:; COLON:: COLONCOLON::: LPAREN:( RPAREN:) LBRACK:[ RBRACK:] LCURLY:{ RCURLY:}"},
        {". -> ++ -- ! ~", "DOT:. POINTSAT:-> INCREMENT:++ DECREMENT:-- LOGNOT:! BITNOT:~"},
        {"* / % + -", "STAR:*/9 SLASH://9 MOD:%/9 PLUS:+/8 MINUS:-/8"},
        {"<< >> >>>", "LSHIFT:<</7 RSHIFT:>>/7 ARSHIFT:>>>/7"},
        {"< <= > >= == !=", "LT:</6 LE:<=/6 GT:>/6 GE:>=/6 EQ:==/5 NE:!=/5"},
        {"& ^ | && || ? = ,",
         "BITAND:&/4 BITXOR:^/3 BITOR:|/2 LOGAND:&&/1 LOGOR:||/0 CONDITION:?/-1 ASSIGN:=/-2 COMMA:,/-4"},
        {"*= /= %= += -=",
         "STAR_ASSIGN:*=/-3 DIV_ASSIGN:/=/-3 MOD_ASSIGN:%=/-3 PLUS_ASSIGN:+=/-3 MINUS_ASSIGN:-=/-3"},
        {"<<= >>= >>>= &= ^= |=",
         "LSHIFT_ASSIGN:<<=/-3 RSHIFT_ASSIGN:>>=/-3 ARSHIFT_ASSIGN:>>>=/-3 BITAND_ASSIGN:&=/-3 "
         "BITXOR_ASSIGN:^=/-3 BITOR_ASSIGN:|=/-3"},
        {"a+++b", "IDENT:a INCREMENT:++ PLUS:+/8 IDENT:b"},
        {"a>>>>=b", "IDENT:a ARSHIFT:>>>/7 GE:>=/6 IDENT:b"},
    };
    CStyleLexer lexer;
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(tokens(lexer, QString::fromLatin1(text)), expected) << text;
}

TEST(CStyleLexer, RefusesTheRestOfTheText) {
    CStyleLexer lexer;
    EXPECT_EQ(failure(lexer, QStringLiteral("1 + \"abc  ")), "unrecognised token: \"abc  ");
    EXPECT_EQ(failure(lexer, QStringLiteral("#")), "unrecognised token: #");
    const QChar loneSurrogate(0xd800);
    EXPECT_TRUE(failure(lexer, QStringLiteral("1 ") + loneSurrogate).starts_with("unrecognised token: "));
    EXPECT_EQ(tokens(lexer, QStringLiteral("1")), "INTEGER:1") << "the lexer goes on after a failure";
}

TEST(CStyleLexer, PositionIsBehindTheToken) {
    CStyleLexer lexer;
    EXPECT_EQ(lexer.position(), 0);
    lexer.setInput(QStringLiteral("  ab 12"));
    EXPECT_EQ(lexer.position(), 4);
    lexer.next();
    EXPECT_EQ(lexer.position(), 7);
    EXPECT_EQ(lexer.integerValue(), 12);
    lexer.next();
    lexer.next();
    EXPECT_EQ(lexer.token(), Token::Eol);
    EXPECT_EQ(lexer.precedence(), Lexer::noOperator);
}

/// Time is linear in the length: neither a rule that fails nor a check of the text looks at all of it.
TEST(CStyleLexer, ReadsManyTokens) {
    CStyleLexer lexer;
    lexer.setInput(QStringLiteral(", ").repeated(200'000));
    int count = 0;
    for (; lexer.token() != Token::Eol; lexer.next()) ++count;
    EXPECT_EQ(count, 200'000);
}

TEST(Token, NamesEnd) {
    EXPECT_EQ(tokenName(Token::Eof), QStringLiteral("TOKEN_EOF"));
    EXPECT_EQ(tokenName(static_cast<Token>(58)), QString());
}

class ReplacingLexer : public CStyleLexer {
public:
    std::map<QString, QString> replacements;
    QString lookup(const QString& name) override {
        const auto found = replacements.find(name);
        return found == replacements.end() ? QString() : found->second;
    }
};

TEST(Lexer, ReadsTheTextThatANameStandsFor) {
    ReplacingLexer lexer;
    const auto text = [](const char* bytes) { return QString::fromLatin1(bytes); };
    lexer.replacements = {{text("two"), text(" 1+one ")}, {text("one"), text("1")},
                          {text("self"), text("self")},   {text("a"), text("b")},
                          {text("b"), text("a")},         {text("selfish"), text("selfish + 1")},
                          {text("blank"), text("  ")}};
    EXPECT_EQ(tokens(lexer, text("two*two")),
              "INTEGER:1 PLUS:+/8 INTEGER:1 STAR:*/9 INTEGER:1 PLUS:+/8 INTEGER:1");
    EXPECT_EQ(tokens(lexer, text("self")), "IDENT:self");
    EXPECT_EQ(tokens(lexer, text("a;")), "IDENT:a SEMICOLON:;") << "an even number of replacements";
    EXPECT_EQ(tokens(lexer, text("blank 1")), "INTEGER:1");
    lexer.setInput(text("selfish"));
    EXPECT_EQ(lexer.token(), Token::Ident);
    // A hundred replacements, each with one more " + 1" left behind it.
    EXPECT_EQ(tokens(lexer, text("selfish")).size(), std::string("IDENT:selfish").size() + 100 * 19);
    lexer.replacements[text("x")] = text(" x");
    EXPECT_EQ(failure(lexer, text("x")), "input nested too deeply");
}

TEST(Lexer, RulesOfAHostMayHaveGroups) {
    class HostLexer : public Lexer {
    public:
        HostLexer() {
            addToken(QStringLiteral("(a|b)(c)?"), Token::Ident);
            addToken(QStringLiteral("x*"), Token::Star, 9);
            addToken(QStringLiteral("c"), Token::Comma, -4);
        }
        QString lookup(const QString&) override { return {}; }
    } lexer;
    EXPECT_EQ(tokens(lexer, QStringLiteral("acbxxa")), "IDENT:ac IDENT:b STAR:xx/9 IDENT:a");
    EXPECT_EQ(failure(lexer, QStringLiteral("ac?")), "unrecognised token: ?");
    lexer.addToken(QStringLiteral("[?]"), Token::Condition);
    EXPECT_EQ(failure(lexer, QStringLiteral("a?")), "unrecognised token: ?") << "an empty match is none";
}

TEST(IntegerValue, ReadsEveryBase) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    const std::pair<const char*, std::int64_t> rows[] = {
        {"", 0},
        {"0", 0},
        {"0x", 0},
        {"0b", 0},
        {"42", 42},
        {"  -42", -42},
        {"+42", 42},
        {"- 1", 229},
        {"010", 8},
        {"08", 8},
        {"0x1F", 31},
        {"0xff", 255},
        {"0b101", 5},
        {"0b12", 4},
        {"10UL", 10},
        {"10ull", 10},
        {"0x10L9", 16},
        {"1a", 20},
        {"0X1", 265},
        {"-0x10", -16},
        {"9223372036854775808", least},
        {"18446744073709551615", -1},
        {"18446744073709551617", 1},
        {"-9223372036854775808", least},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(integerValue(QString::fromLatin1(text)), expected) << text;
}

}  // namespace
