#include "project/base/path.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace project;

TEST(Path, NormalText) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"a\\b/./c/../d", "a/b/d"},
        {"../x", "../x"},
        {"a/../..", ".."},
        {"//srv/x", "//srv/x"},
        {"\\\\srv\\x", "//srv/x"},
        {"///a", "//a"},
        {"/a//b/", "/a/b"},
        {"", ""},
        {".", ""},
        {"/", "/"},
        {"/..", "/.."},
        {"../../a/..", "../.."},
        {"C:\\x\\..\\y", "C:/y"},
        {"a.b/c..d", "a.b/c..d"},
        {"./a", "a"},
    };
    for (const auto& [text, normal] : cases) EXPECT_EQ(Path(text).normalised().toStdString(), normal) << text;
}

TEST(Path, ComparesWithoutCaseAndSeparators) {
    EXPECT_EQ(Path("A/B"), Path("a\\b"));
    EXPECT_NE(Path("a/b"), Path("/x/a/b"));
    EXPECT_LT(Path("A"), Path("b"));
    EXPECT_EQ(Path(), Path(""));
    EXPECT_TRUE(Path().isEmpty());
    EXPECT_EQ(Path("a/b").native().toStdString(), "a\\b");
}

TEST(Path, ACopyKeepsItsTextWhenTheOtherIsSet) {
    Path a("one");
    const Path b = a;
    a.setFile(QStringLiteral("two"));
    EXPECT_EQ(b.normalised(), QStringLiteral("one"));
    EXPECT_EQ(a.normalised(), QStringLiteral("two"));
}

TEST(Path, PartsOfAName) {
    const Path path("sub/a.tar.gz");
    EXPECT_EQ(path.fileName(), QStringLiteral("a.tar.gz"));
    EXPECT_EQ(path.baseName(false), QStringLiteral("a"));
    EXPECT_EQ(path.baseName(true), QStringLiteral("a.tar"));
    EXPECT_EQ(path.extension(false), QStringLiteral("gz"));
    EXPECT_EQ(path.extension(true), QStringLiteral("tar.gz"));
    EXPECT_EQ(path.dirPath(false), QStringLiteral("sub"));
    EXPECT_EQ(path.dirPath(true), QDir::currentPath() + QStringLiteral("/sub"));
    EXPECT_EQ(Path("a.c").dirPath(false), QStringLiteral("."));
    EXPECT_TRUE(path.isRelative());
    EXPECT_FALSE(Path("C:/x").isRelative());
}

TEST(Path, RelativePaths) {
    struct Case {
        const char *base, *target;
        bool exists;
        const char* relative;
    };
    const std::vector<Case> cases = {
        {"/a/b/c", "/a/x/y", true, "../../x/y"},
        {"/a/b", "/x", false, ""},
        {"/a/b", "/a/b", true, ""},
        {"C:/x", "C:/y", false, ""},
        {"C:/x/y", "C:/x/z", true, "../z"},
        {"/a/b", ".", true, ""},
        {"/A/b", "/a/B/c", true, "c"},
        {"\\a\\b", "/a/b/c", true, "c"},
        {"/a/b/c", "/a/b", true, ".."},
        {"/a", "/a/./b/../c", true, "c"},
    };
    for (const Case& c : cases) {
        QString out = QStringLiteral("old");
        EXPECT_EQ(relativePath(QString::fromUtf8(c.base), QString::fromUtf8(c.target), out), c.exists);
        EXPECT_EQ(out.toStdString(), c.relative) << c.base << " " << c.target;
    }
}

TEST(Path, RelativeFilePaths) {
    const auto relative = [](const char* base, const char* file) {
        return relativeFilePath(QString::fromUtf8(base), QString::fromUtf8(file)).toStdString();
    };
    EXPECT_EQ(relative("/a", "/a/b/c.txt"), "b/c.txt");
    EXPECT_EQ(relative("/a", "/a/c.txt"), "c.txt");
    EXPECT_EQ(relative("/a/b", "/x/c.txt"), "/x/c.txt");
    QString out;
    EXPECT_FALSE(tryRelativeFilePath(QStringLiteral("/a/b"), QStringLiteral("/x/c.txt"), out));
}

TEST(Path, WildcardsAreExpandedComponentByComponent) {
    QTemporaryDir directory;
    const auto file = [&](const char* name) { return directory.filePath(QString::fromUtf8(name)); };
    for (const char* name : {"b/one.c", "a/one.c", "a/two.c", "a/x.h", "one.c/x.h", "s/x[1].c", "s/x1.c"}) {
        makeDirectoryFor(file(name));
        QFile(file(name)).open(QIODevice::WriteOnly);
    }
    const auto expanded = [&](const char* pattern) {
        QStringList list;
        Path(file(pattern)).expandWildcards(list);
        for (QString& path : list) path.remove(0, directory.path().size() + 1);
        return list.join(u' ').toStdString();
    };
    EXPECT_EQ(expanded("?/*.c"), "a/one.c a/two.c b/one.c s/x1.c s/x[1].c");
    EXPECT_EQ(expanded("*/one.c"), "a/one.c b/one.c");
    EXPECT_EQ(expanded("?/x.h"), "a/x.h");
    EXPECT_EQ(expanded("a/x.h"), "a/x.h");
    EXPECT_EQ(expanded("s/x[1]*"), "s/x[1].c");
    EXPECT_EQ(expanded("a/nosuch"), "");
    EXPECT_EQ(expanded("nosuch/*"), "");
}

}  // namespace
