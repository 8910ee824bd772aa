#include "build/rebuild_decision.h"

#include "build/build_fixture.h"
#include "build/dependency_file.h"
#include "build/file_time.h"
#include "build/tool_options.h"

namespace build_test {

namespace {

std::vector<std::string> texts(const QStringList& list) {
    std::vector<std::string> result;
    for (const QString& text : list) result.push_back(text.toStdString());
    return result;
}

TEST(DependencyFile, NamesWhatStandsBehindTheSource) {
    struct Row {
        const char* text;
        const char* directory;
        std::vector<std::string> files;
    };
    const Row rows[] = {
        {"", "", {}},
        {"main.o: main.c", "", {}},
        {"main.o: main.c a\\ b.h c.h \\\n", "", {"a b.h", "c.h"}},
        {"main.o: main.c \\\n a.h \\\n\tb.h\n", "", {"a.h", "b.h"}},
        {"main.o: \\\n main.c \\\n a.h\n", "", {"a.h"}},
        {"main.o: main.c a.h\r\n", "", {"a.h"}},
        {"main.o:main.c a.h\n", "", {}},
        {"x: a.c b.h\ny: c.h\n", "", {"b.h", "c.h"}},
        {"x: a.c $$b.h c\\#.h d\\:.h e\\f.h", "", {"$b.h", "c#.h", "d:.h", "e/f.h"}},
        {"c:/x.o: c:/x.c y.h", "/p", {"/p/y.h"}},
        {"x: a.c sub/../b.h /abs/./c.h", "/p", {"/p/b.h", "/abs/c.h"}},
        {"no rule at all\n\n\n", "", {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(texts(parseDependencies(row.text, q(row.directory))), row.files) << row.text;
}

TEST(OptionFile, IsAnOptionALine) {
    const std::string longLine(1030, 'x');
    struct Row {
        std::string text;
        std::vector<std::string> options;
    };
    const Row rows[] = {
        {"-a\n-b c\n", {"-a", "-b c"}},
        {"-a", {}},
        {"-a\n-b", {"-a"}},
        {"// no\n# no\n-a\n", {"-a"}},
        {"x\n\n-a\n", {"x", "-a"}},
        {"-a\n-b /* gone\n-c\n*/ -d\n-e\n", {"-a", "-e"}},
        {"/* one line */\n-a\n*/\n-b\n", {"-b"}},
        {"// /* \n-a\n", {"-a"}},
        {longLine + "\n", {longLine.substr(1023)}},
    };
    for (const Row& row : rows) EXPECT_EQ(texts(parseOptions(row.text)), row.options) << row.text;
}

class RebuildDecisionTest : public BuildTest {
protected:
    RebuildDecisionTest() : app(newProject("app", "Executable")), file(addFile(app, "a.c")) {}

    Target targetAt(int seconds) {
        writeAt("a.o", seconds);
        Target target{q("a.o"), path("a.o")};
        target.time = modificationTime(target.path);
        return target;
    }
    bool isUnchanged(ProjectElement* node, BuildKind kind, std::int64_t time) {
        return propertiesUnchangedSince({engine, node, debug}, time, kind, {&builder, false});
    }

    ProjectElement* app;
    ProjectElement* file;
    RecordingBuilder builder{directory.path()};
};

TEST_F(RebuildDecisionTest, InputsAreComparedInWholeSeconds) {
    struct Row {
        int target;
        int input;
        bool isOlder;
        const char* said;
    };
    const Row rows[] = {
        {-10, -20, true, ""},
        {-10, -10, true, ""},
        {-10, -9, false, "is later than a.o ("},
        {100, 90, true, "clock skew detected on in.h."},
        {-10, 90, false, "clock skew detected on in.h."},
    };
    for (const Row& row : rows) {
        const Target target = targetAt(row.target);
        writeAt("in.h", row.input);
        builder.lines.clear();
        EXPECT_EQ(inputsOlderThan(directory.path(), target, {q("in.h")}, {&builder, false}), row.isOlder);
        EXPECT_EQ(builder.lines.empty(), *row.said == 0);
        EXPECT_THAT(testing::PrintToString(builder.lines), testing::HasSubstr(row.said));
    }
    EXPECT_FALSE(inputsOlderThan(directory.path(), targetAt(0), {q("none.h")}, {nullptr, true}));
    EXPECT_TRUE(inputsOlderThan(directory.path(), targetAt(0), {}, {nullptr, true}));
}

TEST_F(RebuildDecisionTest, ChangesCountByPropertyPlaceAndConfiguration) {
    ProjectElement* const sibling = addFile(app, "b.c");
    engine.setInheritedConfigurations(engine.solution(), debug, {q("Base")});
    struct Row {
        ProjectElement* node;
        const char* key;
        const char* configuration;
        BuildKind kind;
        bool counts;
    };
    const Row rows[] = {
        {file, "cpp_enable_rtti", "Common", BuildKind::CompileCpp, true},
        {file, "cpp_enable_rtti", "Common", BuildKind::CompileC, false},
        {file, "c_only_additional_options", "Common", BuildKind::CompileC, true},
        {file, "c_only_additional_options", "Common", BuildKind::CompileCpp, false},
        {app, "c_preprocessor_definitions", "Debug", BuildKind::CompileC, true},
        {engine.solution(), "c_preprocessor_definitions", "Base", BuildKind::Assemble, true},
        {app, "c_preprocessor_definitions", "Release", BuildKind::CompileC, false},
        {sibling, "c_preprocessor_definitions", "Common", BuildKind::CompileC, false},
        {app, "build_object_file_name", "Common", BuildKind::CompileC, false},
        {app, "external_cpp_compile_command", "Common", BuildKind::CompileCpp, false},
        {app, "stage_command", "Common", BuildKind::Stage, true},
        {app, "combine_command", "Common", BuildKind::Combine, true},
        {app, "archive_post_build_command", "Common", BuildKind::Archive, true},
        {app, "archive_post_build_command_wd", "Common", BuildKind::Archive, false},
        {app, "archive_post_build_command_wd", "Common", BuildKind::Link, true},
    };
    for (const Row& row : rows) {
        engine.clearPropertyValue(row.node, engine.schema().find(q(row.key)), q(row.configuration));
        const std::int64_t before = engine.changeLog()[engine.changeLog().size() - 1].milliseconds();
        while (timeNow() <= before) continue;
        set(row.node, row.key, "x", row.configuration);
        EXPECT_EQ(isUnchanged(file, row.kind, before), !row.counts) << row.key << " " << row.configuration;
        EXPECT_TRUE(isUnchanged(file, row.kind, timeNow())) << row.key;
    }
    EXPECT_THAT(builder.lines, testing::Contains("note: Enable RTTI Support property has changed."));
}

TEST_F(RebuildDecisionTest, ChangesOutlastTheDescriptionOfTheirTool) {
    write("tools.xml", "<root><property name='o' tool='compiler'/></root>");
    set(app, "build_generic_options_file_name", path("tools.xml").toUtf8());
    engine.loadToolDescriptions(app, debug);
    const std::int64_t time = timeNow() - 1;
    engine.setPropertyValue(file, engine.schema().find(q("o")), debug, q("x"));
    ProjectElement* const other = newProject("other", "Library");
    engine.loadToolDescriptions(other, debug);
    ASSERT_EQ(engine.schema().find(q("o")), nullptr);
    engine.loadToolDescriptions(app, debug);
    EXPECT_FALSE(isUnchanged(file, BuildKind::CompileC, time));
    EXPECT_TRUE(isUnchanged(file, BuildKind::Assemble, time));
}

TEST_F(RebuildDecisionTest, OptionFilesCountWhateverTheTool) {
    set(app, "cpp_only_additional_options_from_file", "cpp.options");
    const std::int64_t time = timeNow() + 1;
    EXPECT_TRUE(isUnchanged(file, BuildKind::CompileC, time));
    writeAt("cpp.options", 60);
    EXPECT_FALSE(isUnchanged(file, BuildKind::CompileC, time));
    EXPECT_THAT(builder.lines, ElementsAre("reason: cpp.options has been modified."));
    EXPECT_TRUE(isUnchanged(file, BuildKind::Link, time));
}

TEST_F(RebuildDecisionTest, DependencyFilesStandBesideTheirObjects) {
    const auto name = [&](bool absolute) {
        return engine.dependencyFileName(file, debug, q("out/a.x.o"), absolute)
            .replace(directory.path(), q("@"))
            .toStdString();
    };
    EXPECT_EQ(name(false), "Output/Debug/Obj/app/a.d");
    EXPECT_EQ(name(true), "@/Output/Debug/Obj/app/a.d");
    set(app, "build_dependency_file_name", "deps/$(InputName).dep");
    EXPECT_EQ(name(false), "deps/a.dep");
    EXPECT_EQ(name(true), "@/deps/a.dep");
    write("deps/a.dep", "a.o: a.c a.h");
    EXPECT_THAT(texts(engine.readDependencyFile(file, debug, QString(), q("a.o"))), ElementsAre("a.h"));
    write("deps/a.dep", "a.o: a.c a.h \\\r\n  b.h\r\n");
    EXPECT_THAT(texts(engine.readDependencyFile(file, debug, QString(), q("a.o"))),
                ElementsAre("a.h", "b.h"));
    ASSERT_TRUE(QFile::remove(path("deps/a.dep")));
    ASSERT_EQ(::mkfifo(path("deps/a.dep").toStdString().c_str(), 0600), 0);
    EXPECT_THAT(engine.readDependencyFile(file, debug, QString(), q("a.o")), IsEmpty());
}

}  // namespace

}  // namespace build_test
