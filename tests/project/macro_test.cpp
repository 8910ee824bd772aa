#include "project/base/macro_engine.h"
#include "project/engine_fixture.h"

#include <QRegularExpression>

namespace {

using namespace project_test;

TEST(MacroEngine, References) {
    MacroEngine macros;
    macros.globalMacros = {{q("G"), q("global")}, {q("Both"), q("global")}};
    macros.systemMacros = {{q("S"), q("system")}, {q("Both"), q("system")}, {q("AtelisDir"), q("/atelis")}};
    const MacroTable table = {
        {q("A"), q("a")}, {q("Nest"), q("$(A)")}, {q("Loop"), q("$(X$(Loop))")}, {q("G2"), q("$(G)")}};
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"cost: 5$", "cost: 5$"},
        {"a$b", "a$b"},
        {"$$(X)", "$(X)"},
        {"$(A)$(G)$(S)", "aglobalsystem"},
        {"$(Both)", "global"},
        {"$(X)", "$(X)"},
        {"$(X:)", ""},
        {"$(X::)", ""},
        {"$(X:b:c)", "b:c"},
        {"$(A(1):y)", "y"},
        {"a$(b", "a(b"},
        {"$(A $(A)", "(A a"},
        {"$(Nest)", "$(A)"},
        {"$(Nest)$(Y:$(A))", "aa"},
        {"$(Y:$(A))", "a"},
        {"$(Y::$(A))", "$(A)"},
        {"$(A:$(B))", "a"},
        {"$(Y:$(A))$(Z::$(A))", "$(A)$(A)"},
        {"$(Z::$(A))$(Y:$(A))", "aa"},
        {"$(AtelisIncDir:$(AtelisDir)/include)", "/atelis/include"},
        {"$(A$(B))", "$(A$(B))"},
    };
    for (const auto& [text, expanded] : cases)
        EXPECT_EQ(macros.expand(table, q(text), true, true).toStdString(), expanded) << text;
    EXPECT_EQ(macros.expandSystem(q("$(G)$(S)")), q("$(G)system"));
    EXPECT_EQ(macros.expandGlobal(q("$(G)$(S)")), q("globalsystem"));
    EXPECT_LT(macros.expand(table, q("$(Loop)$(Y:$(A))"), true, true).size(), 1000)
        << "ends, however it goes";
}

TEST(MacroEngine, HostileTextsCostTheirLength) {
    MacroEngine macros;
    const QString open = q("$(").repeated(500000);
    EXPECT_EQ(macros.expandGlobal(open).size(), 500000);
    EXPECT_EQ(macros.expandGlobal(open + q(")").repeated(500000)).size(), 1500000);
    const QString twice = q("$(B)$(B)$(Y:$(Y))");
    MacroTable doubling = {{q("B"), twice}};
    EXPECT_LE(macros.expand(doubling, twice, false, false).size(), 2 * MacroEngine::maxLength);
}

TEST(MacroEngine, TheClock) {
    MacroEngine macros;
    EXPECT_EQ(macros.expandGlobal(q("$(Date)")), q("$(Date)"));
    macros.addClockNames();
    const auto matches = [&](const char* text, const char* pattern) {
        return QRegularExpression(q(pattern)).match(macros.expandGlobal(q(text))).hasMatch();
    };
    EXPECT_TRUE(matches("$(DateYear)-$(DateMonth)-$(DateDay)", "^\\d{4}-\\d\\d-\\d\\d$"));
    EXPECT_TRUE(matches("$(Time)", "^\\d\\d:\\d\\d:\\d\\d$"));
    EXPECT_TRUE(matches("$(UnixTime)", "^\\d{10,}$"));
}

TEST(MacroEngine, TextForms) {
    const MacroTable table = MacroEngine::parseMacros(q("X=1;Y=a\\;b;Z;E=p=q;X=2;;\\\\=s"));
    EXPECT_EQ(
        table,
        (MacroTable{
            {q("X"), q("2")}, {q("Y"), q("a;b")}, {q("Z"), q("")}, {q("E"), q("p=q")}, {q("\\"), q("s")}}));
    EXPECT_EQ(MacroEngine::parseMacros(MacroEngine::macroText(MacroEngine::macroList(table))), table);
    EXPECT_EQ(MacroEngine::mergeMacros({{q("A"), q("1")}, {q("B"), q("2")}}, {{q("B"), q("3")}}),
              (MacroTable{{q("A"), q("1")}, {q("B"), q("3")}}));
    MacroEngine macros;
    macros.setGlobalMacro(q("N"), q("v"));
    EXPECT_EQ(macros.macroValue(q("N")), q("v"));
    macros.setGlobalMacro(q("N"), q(""));
    EXPECT_TRUE(macros.macroValue(q("N")).isNull());
}

class NodeMacros : public EngineTest {
protected:
    NodeMacros() { macroEngine = &macros; }
    ~NodeMacros() override { macroEngine = nullptr; }
    std::string expanded(ProjectElement* node, const char* text) {
        return engine.expandMacros(node, q("Debug"), q(text)).toStdString();
    }
    MacroEngine macros;
};

TEST_F(NodeMacros, EveryNodeHasItsTable) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project =
        engine.newProject(solution, q("p"), directory.filePath(q("sub")), QString());
    ProjectElement* const folder =
        engine.findOrAddFolder(engine.findOrAddFolder(project, q("o"), {}), q("i"), {});
    ProjectElement* const file = engine.addFile(folder, q("src/a.b.c"));
    const std::string dir = directory.path().toStdString();
    EXPECT_EQ(expanded(file, "$(FolderName) $(FolderPath) $(ProjectNodeName) $(ProjectName)"),
              "i o/i a.b.c p");
    EXPECT_EQ(expanded(file, "$(ProjectDir)"), dir + "/sub");
    EXPECT_EQ(expanded(file, "$(InputDir) $(InputName) $(InputFileName) $(InputExt)"),
              dir + "/sub/src a.b a.b.c c");
    EXPECT_EQ(expanded(file, "$(InputPath)"), dir + "/sub/src/a.b.c");
    EXPECT_EQ(expanded(file, "$(RelInputPath) $(RelInputDir)"), "src/a.b.c src");
    EXPECT_EQ(expanded(file, "$(SolutionName) $(SolutionFileName) $(SolutionExt)"),
              "demo demo.qxProject qxProject");
    EXPECT_EQ(expanded(file, "$(SolutionDir) $(SolutionPath)"), dir + " " + dir + "/demo.qxProject");
    EXPECT_EQ(expanded(file, "$(Configuration) $(OBJ) $(EXE) $(LIB) $(PackageExt)"),
              "Debug .o .elf .a qxPackage");
    EXPECT_EQ(expanded(project, "$(IntDir) $(OutDir)"), "Output/Debug/Obj/p Output/Debug/Exe");
    EXPECT_EQ(expanded(project, "$(RelInputDir)"), ".");
    EXPECT_EQ(expanded(solution, "$(InputPath)"), "$(InputPath)");
    EXPECT_EQ(expanded(nullptr, "$(Configuration)"), "Debug");
}

TEST_F(NodeMacros, ProjectMacrosAndDirectoriesDependOnEachOtherInOrder) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    macros.setGlobalMacro(q("Base"), q("base"));
    set(engine.solution(), "Common", "macros", "M=$(Base);ToolChainDir=x");
    set(project, "Debug", "macros", "N=n;M=m");
    EXPECT_EQ(expanded(project, "$(M) $(N) $(ToolChainDir)"), "m n $(AtelisDir)")
        << "a built-in name stays its own";
    EXPECT_EQ(expanded(engine.solution(), "$(M)"), "base");
    set(project, "Common", "build_root_output_directory", "$(IntDir)/$(OutDir)");
    EXPECT_EQ(expanded(project, "$(RootOutDir)"), "Output/Debug/Obj/p/$(OutDir)");
    set(project, "Common", "build_root_output_directory", "Output");
    EXPECT_EQ(expanded(project, "$(RootRelativeOutDir)"), "../..");
    set(project, "Common", "build_intermediate_directory", "");
    EXPECT_EQ(expanded(project, "$(IntDir)"), ".");
}

TEST_F(NodeMacros, FileNamesWithMacrosResolveForEachConfiguration) {
    ProjectElement* const file = engine.addFile((newSolution(), newProject("p")), q("$(Dir:none)/a.c"));
    set(engine.solution(), "Debug", "macros", "Dir=debug");
    file->resolvePaths(q("Debug"));
    EXPECT_EQ(file->resolvedFileName, q("debug/a.c"));
    file->resolvePaths(q("Release"));
    EXPECT_EQ(file->resolvedFileName, q("none/a.c"));
}

TEST_F(NodeMacros, PropertiesAndLists) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    set(project, "Common", "linker_keep_symbols", "$(ProjectName);$(Extra)");
    EXPECT_EQ(engine.expandProperty(project, property("linker_keep_symbols"), q("Common")), q("p;$(Extra)"));
    EXPECT_EQ(engine.expandPropertyWith(project, property("linker_keep_symbols"), q("Common"),
                                        {{q("Extra"), q("e")}, {q("ProjectName"), q("o")}}),
              q("o;e"));
    EXPECT_EQ(
        engine.propertyValueList(q("-"), project, property("linker_keep_symbols"), q("Common"), true, false),
        QStringList({q("-p"), q("-$(Extra)")}));
}

}  // namespace
