#include "build/process/command_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace build;

std::string shown(const QStringList& items) {
    return items.isEmpty() ? "" : "<" + items.join(QStringLiteral("> <")).toStdString() + ">";
}

TEST(CommandText, ArgumentsAreParsed) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"  ", ""},
        {"a", "<a>"},
        {" a  b ", "<a> <b>"},
        {"\"a b\" c", "<a b> <c>"},
        {"a\"b c\"d", "<ab cd>"},
        {"\"\"", ""},
        {"a \"\" b", "<a> <b>"},
        {"\\\"a b\\\"", "<\"a> <b\">"},
        {"\"a \\\" b\"", "<a \" b>"},
        {"c:\\dir\\file \\", "<c:\\dir\\file> <\\>"},
        {"\\\\\"a b\"", "<\\\"a> <b>"},
        {"\"open a", "<open a>"},
        {"a\tb\nc", "<a\tb\nc>"},
        {"'a b'", "<'a> <b'>"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(shown(parseCommandLine(QString::fromLatin1(text))), expected) << text;
}

TEST(CommandText, ListsAreSplit) {
    struct Split {
        const char* text;
        const char* dropping;
        const char* keeping;
    };
    const Split rows[] = {
        {"", "", "<>"},
        {"a", "<a>", "<a>"},
        {"a;b", "<a> <b>", "<a> <b>"},
        {";a;;b;", "<a> <b>", "<> <a> <> <b> <>"},
        {"-a\\;b;c", "<-a;b> <c>", "<-a;b> <c>"},
        {"a\\\\;b", "<a\\> <b>", "<a\\> <b>"},
        {"a\\b\\", "<ab\\>", "<ab\\>"},
        {"a;\\", "<a> <\\>", "<a> <\\>"},
        {" a ; b ", "< a > < b >", "< a > < b >"},
    };
    for (const Split& row : rows) {
        EXPECT_EQ(shown(splitEscaped(QString::fromLatin1(row.text), false)), row.dropping) << row.text;
        EXPECT_EQ(shown(splitEscaped(QString::fromLatin1(row.text), true)), row.keeping) << row.text;
    }
}

TEST(CommandText, CommandsAreQuoted) {
    struct Quoting {
        std::vector<std::string> arguments;
        const char* directory;
        const char* text;
    };
    const Quoting rows[] = {
        {{}, "dir", ""},
        {{"cc", "-c", "a.c"}, "", "cc -c a.c"},
        {{"cc", "a \"b\" c"}, "", "cc \"a \\\"b\\\" c\""},
        {{"cc", "-DA=\"x\"", "", "\\"}, "", "cc -DA=\\\"x\\\"  \\"},
        {{"../cc", "../a.c"}, "dir", "dir/../cc ../a.c"},
        {{"../cc"}, "", "../cc"},
        {{"./cc"}, "dir", "./cc"},
        {{"my cc"}, "dir", "\"my cc\""},
    };
    for (const Quoting& row : rows) EXPECT_EQ(commandText(row.arguments, row.directory), row.text);
}

}  // namespace
