#include "project/dynamic_folder.h"

#include "project/solution_fixture.h"

#include <QDir>

#include <sys/stat.h>

namespace {

using namespace project_test;

class DynamicFolders : public SolutionTest {
protected:
    DynamicFolders() {
        newSolution("s");
        project = newProject("p");
        for (const char* path : {"src/b.c", "src/A.c", "src/a.h", "src/.hidden.c", "src/sub/c.c",
                                 "src/sub/x.txt", "src/empty/x.txt", "src/skip/d.c", "other/e.c"})
            touch(path);
        macros.globalMacros.insert(q("SRC"), q("src"));
    }
    void touch(const char* path) {
        const QFileInfo file(directory.filePath(q(path)));
        QDir().mkpath(file.path());
        EXPECT_TRUE(QFile(file.filePath()).open(QIODevice::WriteOnly));
    }
    ProjectElement* newFolder() { return engine.addFolder(project, q("f"), QString()); }
    /// Stored file names and, in brackets, what is in each folder.
    static std::string content(ProjectElement* folder) {
        std::string text;
        for (ProjectElement* child = folder->firstChildElement(); child;
             child = child->nextSiblingElement()) {
            EXPECT_EQ(child->canModify, child->isConfiguration());
            if (child->isFile()) text += child->attributes.value(keys::fileName).toStdString() + " ";
            if (child->isFolder())
                text += child->attributes.value(u"path").toStdString() + "{ " + content(child) + "} ";
        }
        return text;
    }

    ProjectElement* project;
};

TEST_F(DynamicFolders, HoldWhatTheirDescriptionYields) {
    struct Row {
        const char* path;
        const char* filter;
        bool recurse;
        const char* exclude;
        const char* content;
    };
    const Row rows[] = {
        // In the order of names without regard to case, hidden files included.
        {"src", "", false, "", "src/.hidden.c src/A.c src/a.h src/b.c "},
        {"src", "*.c;*.txt", false, "", "src/.hidden.c src/A.c src/b.c "},
        {"src", "*.c", true, "",
         "src/.hidden.c src/A.c src/b.c src/empty{ } src/skip{ src/skip/d.c } src/sub{ "
         "src/sub/c.c } "},
        {"src", "*.c", true, "s*;.*", "src/A.c src/b.c src/empty{ } "},
        {"src", "[ab].?", false, "b*", "src/a.h "},
        {"src", "a", false, "", ""},
        {"src", "[a", false, "", ""},
        {"$(SRC)/sub", "", false, "", "$(SRC)/sub/c.c $(SRC)/sub/x.txt "},
        {";src/sub;;other;", "*.c", false, "", "src/sub/c.c other/e.c "},
        {"missing;other", "", true, "", "other/e.c "},
    };
    for (const Row& row : rows) {
        ProjectElement* const folder = newFolder();
        engine.setDynamicFolder(folder, q(row.path), q(row.filter), row.recurse, q(row.exclude));
        EXPECT_EQ(content(folder), row.content) << row.path << "|" << row.filter << "|" << row.exclude;
        engine.setDynamicFolder(folder, q(row.path), q(row.filter), row.recurse, q(row.exclude));
        EXPECT_EQ(content(folder), row.content);
    }
}

TEST_F(DynamicFolders, TakeSingleFilesByTheirWholePath) {
    ProjectElement* const folder = newFolder();
    engine.setDynamicFolder(folder, q("$(SRC)/b.c;other"), QString(), false, QString());
    EXPECT_EQ(content(folder), (directory.path() + q("/src/b.c other/e.c ")).toStdString());
}

TEST_F(DynamicFolders, GoRoundNoCircle) {
    QFile::link(q(".."), directory.filePath(q("src/sub/up")));
    QFile::link(q("../../other"), directory.filePath(q("src/sub/aside")));
    QFile::link(q("nowhere"), directory.filePath(q("src/sub/broken")));
    ProjectElement* const folder = newFolder();
    engine.setDynamicFolder(folder, q("src/sub"), q("*.c"), true, QString());
    EXPECT_EQ(
        content(folder),
        "src/sub/aside{ src/sub/aside/e.c } src/sub/c.c src/sub/up{ src/sub/up/.hidden.c src/sub/up/A.c "
        "src/sub/up/b.c src/sub/up/empty{ } src/sub/up/skip{ src/sub/up/skip/d.c } src/sub/up/sub{ } } ");
}

TEST_F(DynamicFolders, DoNotWaitForPipes) {
    const QString pipe = directory.filePath(q("src/sub/pipe.xml"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ProjectElement* const folder = newFolder();
    engine.setDynamicFolder(folder, q("src/sub"), q("*.xml"), false, QString());
    EXPECT_EQ(content(folder), "");
    // An entry that names the pipe itself counts as a file, of which nothing is read.
    engine.setDynamicFolder(folder, q("src/sub/pipe.xml"), QString(), false, QString());
    ASSERT_EQ(content(folder), pipe.toStdString() + " ");
    EXPECT_EQ(engine.fileType(engine.findFile(folder, pipe), q("Common")), u"");
}

TEST_F(DynamicFolders, AreStoredWithoutWhatTheyHold) {
    ProjectElement* const folder = newFolder();
    set(folder, "Debug", "build_quietly", "No");
    engine.setDynamicFolder(folder, q("other"), q("*.c"), true, QString());
    const std::string text = saved(false);
    EXPECT_EQ(text.find("e.c"), std::string::npos) << text;
    load("s.qxProject");
    EXPECT_FALSE(engine.isModified(engine.solution(), true));
    EXPECT_TRUE(engine.changeLog().isEmpty());
    EXPECT_EQ(shape(), "s(p(Common()f(Debug()e.c())))");
    EXPECT_EQ(saved(false), text);

    ProjectElement* const loaded = engine.findElement(engine.solution(), q("f"));
    engine.clearDynamicFolder(loaded, true);
    EXPECT_TRUE(loaded->canModify);
    EXPECT_EQ(saved(false).find("path="), std::string::npos);
    EXPECT_NE(saved(false).find("<file file_name=\"other/e.c\" />"), std::string::npos);
}

TEST_F(DynamicFolders, BecomePlainWithTheirSubfolders) {
    ProjectElement* const folder = newFolder();
    engine.setDynamicFolder(folder, q("src"), QString(), true, QString());
    engine.clearDynamicFolder(folder, false);
    ProjectElement* const sub = engine.findFolder(folder, q("sub"));
    EXPECT_TRUE(sub->attributes.contains(u"path"));
    engine.clearDynamicFolder(folder, true);
    EXPECT_FALSE(sub->attributes.contains(u"path"));
    EXPECT_TRUE(sub->canModify && engine.findFile(sub, q("src/sub/c.c"))->canModify);
}

TEST_F(DynamicFolders, AreFoldersOnly) {
    writeSolution("odd.qxProject", R"(><project Name="p" path="src"><configuration Name="Common" path="src"/>
        <file file_name="f" path="src"/></project></solution>)");
    load("odd.qxProject");
    EXPECT_EQ(shape(), "odd(p(Common()f()))");
}

}  // namespace
