#include "build/tool_commands.h"

#include "build/build_fixture.h"
#include "build/tool_options.h"

namespace build_test {

namespace {

struct Setting {
    const char* key;
    const char* value;
};

struct Row {
    BuildKind kind;
    std::vector<Setting> settings;
    const char* arguments;  ///< joined by "|"
};

class ToolCommandsTest : public BuildTest {
protected:
    /// The command for a file of the kind, or for the project, in a project with the settings.
    std::string command(BuildKind kind, const std::vector<Setting>& settings) {
        ProjectElement* const app = newProject("app", "Executable");
        const bool isFile =
            kind == BuildKind::CompileC || kind == BuildKind::CompileCpp || kind == BuildKind::Assemble;
        ProjectElement* const file = addFile(app, "a.c");
        for (const Setting& setting : settings) set(app, setting.key, setting.value);
        builder = std::make_unique<RecordingBuilder>(directory.path());
        engine.runTool(isFile ? file : app, debug, kind, q("out/x"), path("out/x"),
                       isFile ? QStringList{q("a.c")} : QStringList{q("a.o"), q("$(ProjectName).a")},
                       builder.get(), generateDependencies);
        if (builder->commands.empty()) return "none";
        return builder->commands[0].join(u'|').replace(directory.path(), q("@")).toStdString();
    }
    void expectRows(const std::vector<Row>& rows) {
        for (const Row& row : rows)
            EXPECT_EQ(command(row.kind, row.settings), row.arguments)
                << (row.settings.empty() ? "" : row.settings[0].key);
    }

    std::unique_ptr<RecordingBuilder> builder;
    bool generateDependencies = false;
};

constexpr BuildKind c = BuildKind::CompileC;
constexpr BuildKind cpp = BuildKind::CompileCpp;
constexpr BuildKind assemble = BuildKind::Assemble;
constexpr BuildKind link = BuildKind::Link;
constexpr BuildKind archive = BuildKind::Archive;

// The parts of a command that no option changes.
#define CC "/opt/atelis/bin/cc|"
#define IND "-inputfiles|Output/Debug/Obj/app/x.ind|"
#define END "-o|out/x"

// clang-format off
TEST_F(ToolCommandsTest, CompilesAndAssembles) {
    expectRows({
        {c, {}, CC "-c|-xc|a.c|-g|-I.|" END},
        {cpp, {}, CC "-c|-xc++|a.c|-g|-I.|" END},
        {assemble, {}, CC "-c|-xasm|a.c|-g|-I.|" END},
        {c, {{"build_quietly", "No"}}, CC "-v|-c|-xc|a.c|-g|-I.|" END},
        {c, {{"build_treat_warnings_as_errors", "Yes"}, {"build_suppress_warnings", "Yes"}}, CC "-we|-w|-c|-xc|a.c|-g|-I.|" END},
        {c, {{"build_debug_information", "No"}}, CC "-c|-xc|a.c|-I.|" END},
        {c, {{"cpp_enable_exceptions", "Yes"}, {"cpp_enable_rtti", "Yes"}}, CC "-c|-xc|a.c|-g|-I.|" END},
        {cpp, {{"cpp_enable_exceptions", "Yes"}, {"cpp_enable_rtti", "Yes"}}, CC "-c|-xc++|a.c|-exceptions|-rtti|-g|-I.|" END},
        {c, {{"c_user_include_directories", "a b;/x/./y;$(ProjectName)"}}, CC "-c|-xc|a.c|-g|-Ia b|-I/x/y|-Iapp|" END},
        {c, {{"c_preprocessor_definitions", "A=1\\;2;B=$(ProjectName)"}}, CC "-c|-xc|a.c|-g|-I.|-DA=1;2|-DB=app|" END},
        {c, {{"c_preprocessor_undefinitions", "A=1\\;2"}}, CC "-c|-xc|a.c|-g|-I.|-UA=1\\|-U2|" END},
        {c, {{"default_code_section", ".t"}, {"default_data_section", ".d"}, {"default_zeroed_section", ".z"}, {"default_const_section", ".k"}}, CC "-c|-xc|a.c|-g|-I.|-Rc,.t|-Rd,.d|-Rz,.z|-Rk,.k|" END},
        {c, {{"default_vector_section", ".v"}, {"default_isr_section", ".i"}, {"default_code_section", ".text"}}, CC "-c|-xc|a.c|-g|-I.|" END},
        {c, {{"c_additional_options", "-a\\;b;-c"}, {"c_only_additional_options", "-d"}, {"cpp_only_additional_options", "-e"}, {"asm_additional_options", "-f"}}, CC "-c|-xc|a.c|-g|-I.|-Wc,-a;b|-Wc,-c|-Wc,-d|" END},
        {cpp, {{"c_additional_options", "-a"}, {"c_only_additional_options", "-d"}, {"cpp_only_additional_options", "-e"}, {"asm_additional_options", "-f"}}, CC "-c|-xc++|a.c|-g|-I.|-Wc,-a|-Wc,-e|" END},
        {assemble, {{"c_additional_options", "-a"}, {"asm_additional_options", "-f"}}, CC "-c|-xasm|a.c|-g|-I.|-Wa,-f|" END},
    });
}

TEST_F(ToolCommandsTest, AddsOptionsFromFilesBehindThoseOfTheirPair) {
    write("common", "-c1\n-c2\n");
    write("own", "-o1\n");
    expectRows({
        {c, {{"c_additional_options", "-a"}, {"c_additional_options_from_file", "common"}, {"c_only_additional_options", "-b"}, {"c_only_additional_options_from_file", "own"}}, CC "-c|-xc|a.c|-g|-I.|-Wc,-a|-Wc,-c1|-Wc,-c2|-Wc,-b|-Wc,-o1|" END},
        {cpp, {{"cpp_only_additional_options_from_file", "own"}}, CC "-c|-xc++|a.c|-g|-I.|-Wc,-o1|" END},
        {assemble, {{"asm_additional_options_from_file", "own"}}, CC "-c|-xasm|a.c|-g|-I.|-Wa,-o1|" END},
        {c, {{"c_only_additional_options_from_file", "none"}}, "none"},
    });
    EXPECT_THAT(builder->lines, ElementsAre("[Locating Additional Options File]", "error: Additional options file ‘@/none’ does not exist.", "]"));
    EXPECT_EQ(command(link, {{"linker_additional_options_from_file", "none"}}), "none");
    ASSERT_EQ(::mkfifo(path("pipe").toStdString().c_str(), 0600), 0);
    EXPECT_EQ(command(link, {{"linker_additional_options_from_file", "pipe"}}), "none");
    write("crlf", "-a\r\n-b\r\n");
    expectRows({{c, {{"c_additional_options_from_file", "crlf"}}, CC "-c|-xc|a.c|-g|-I.|-Wc,-a|-Wc,-b|" END}});
}

TEST_F(ToolCommandsTest, Links) {
    expectRows({
        {link, {}, CC IND "-printf=i|-scanf=i|-M|" END},
        {link, {{"linker_map_file", "No"}, {"link_include_standard_libraries", "No"}}, CC IND "-printf=i|-scanf=i|-l-|" END},
        {link, {{"cpp_enable_exceptions", "Yes"}, {"cpp_enable_rtti", "Yes"}}, CC IND "-exceptions|-rtti|-printf=i|-scanf=i|-M|" END},
        {link, {{"linker_output_format", "hex"}}, CC IND "-printf=i|-scanf=i|-Fhex|-M|" END},
        {link, {{"linker_output_format", "None"}}, CC IND "-printf=i|-scanf=i|-M|" END},
        {link, {{"link_symbol_definitions", "a=1;b=$(X)"}, {"linker_keep_symbols", "k;l"}}, CC IND "-printf=i|-scanf=i|-M|-da=1|-db=$(X)|-Kk|-Kl|" END},
        {link, {{"linker_additional_options", "-x\\;y;$(ProjectName)"}}, CC IND "-printf=i|-scanf=i|-M|-Wl,-x;y|-Wl,app|" END},
        {link, {{"linker_patch_build_command", "p \\x"}}, CC IND "-printf=i|-scanf=i|-M|-patch|p \\\\x|" END},
        {archive, {}, CC IND "-ar|" END},
    });
    EXPECT_EQ(read("Output/Debug/Obj/app/x.ind"), "a.o\napp.a\n");
    EXPECT_THAT(builder->lines, ElementsAre("[Archiving ‘x’]", "@: " CC IND "-ar|" END " -> @/out/x", "]"));
}

TEST_F(ToolCommandsTest, LaysOutByScriptOrByMapAndPlacement) {
    write("x.ld");
    write("map.xml");
    write("place.xml");
    const std::vector<Setting> maps{{"linker_memory_map_file", "map.xml"}, {"linker_memory_map_macros", "M=1"}, {"linker_section_placements_segments", "F R 0 1"}, {"linker_section_placement_file", "place.xml"}, {"linker_section_placement_macros", "P=$(X)"}};
    EXPECT_EQ(command(link, maps), CC IND "-memorymap|map.xml|-memorymapmacros|M=1|-placement|place.xml|-placementmacros|P=$(X)|-printf=i|-scanf=i|-M|" END);
    std::vector<Setting> script = maps;
    script.insert(script.end(), {{"link_use_linker_script_file", "Yes"}, {"link_linker_script_file", "x.ld"}});
    EXPECT_EQ(command(link, script), CC IND "-T@/x.ld|-printf=i|-scanf=i|-M|" END);
    script.back().value = "none.ld";
    EXPECT_THAT(command(link, script), testing::HasSubstr("|-memorymap|map.xml|"));
    EXPECT_EQ(command(link, {{"linker_memory_map_file", "none"}, {"linker_section_placements_segments", "$(ProjectName) R 0 1"}}), CC IND "-placementsegments|app R 0 1|-printf=i|-scanf=i|-M|" END);
    EXPECT_THAT(builder->lines, testing::Contains("warning: Memory map file ‘none’ does not exist."));
}
// clang-format on

TEST_F(ToolCommandsTest, NamesTheDependencyFile) {
    generateDependencies = true;
    EXPECT_EQ(command(c, {}), CC "-c|-xc|a.c|-g|-I.|-depend|Output/Debug/Obj/app/x.d|" END);
}

TEST_F(ToolCommandsTest, GivesUpWithoutAnIndirectFile) {
    write("Output/Debug/Obj", "a file where a directory is needed");
    EXPECT_EQ(command(link, {}), "none");
    EXPECT_THAT(builder->lines, ElementsAre("[Creating Linker Indirect File]",
                                            "error: Cannot open file: @/Output/Debug/Obj/app/x.ind", "]"));
    EXPECT_EQ(command(archive, {}), "none");
    EXPECT_EQ(builder->lines[0], "[Creating Archive Indirect File]");
}

TEST_F(ToolCommandsTest, PrintfAndScanfCodes) {
    struct Code {
        const char* level;
        const char* floats;
        const char* precision;
        const char* wide;
        const char* printf;
    };
    const Code printfRows[] = {
        {"int", "No", "No", "No", "i"},
        {"long", "No", "No", "No", "l"},
        {"long long", "No", "No", "No", "ll"},
        {"int", "No", "Yes", "Yes", "ipw"},
        {"int", "Double", "Yes", "No", "d"},
        {"long", "Yes", "No", "Yes", "dw"},
        {"long long", "Yes", "No", "No", "dll"},
        {"long", "Float", "No", "No", "f"},
        {"long long", "Float", "No", "Yes", "fllw"},
    };
    ProjectElement* const app = newProject("app", "Executable");
    for (const Code& row : printfRows) {
        set(app, "linker_printf_fmt_level", row.level);
        set(app, "linker_printf_fp_enabled", row.floats);
        set(app, "linker_printf_width_precision_supported", row.precision);
        set(app, "linker_printf_wchar_enabled", row.wide);
        EXPECT_EQ(printfCode({engine, app, debug}).toStdString(), row.printf);
    }
    const char* const scanfRows[][4] = {
        {"int", "No", "No", "i"},  {"long", "No", "Yes", "lc"},         {"long long", "No", "No", "ll"},
        {"int", "Yes", "No", "d"}, {"long long", "Yes", "Yes", "dllc"},
    };
    for (const auto& row : scanfRows) {
        set(app, "linker_scanf_fmt_level", row[0]);
        set(app, "linker_scanf_fp_enabled", row[1]);
        set(app, "linker_scanf_character_group_matching_enabled", row[2]);
        EXPECT_EQ(scanfCode({engine, app, debug}).toStdString(), row[3]);
    }
}

TEST_F(ToolCommandsTest, DescribedOptionsBecomeArguments) {
    xml::XMLElement plain("property");
    plain.setAttribute("name", "plain");
    plain.setAttribute("type", "StringList");
    plain.setAttribute("specialvalue", "O");
    xml::XMLElement choice("property");
    choice.setAttribute("name", "choice");
    choice.setAttribute("type", "Enumeration");
    choice.setAttribute("values", "a;b");
    choice.setAttribute("option", "--x");
    xml::XMLElement other("property");
    other.setAttribute("name", "plain");
    other.setAttribute("specialvalue", "V");
    other.setAttribute("variant", "v");
    const properties::GenericPropertyClass classes[] = {properties::GenericPropertyClass(plain),
                                                        properties::GenericPropertyClass(choice),
                                                        properties::GenericPropertyClass(other)};
    ProjectElement* const app = newProject("app", "Executable");
    engine.setPropertyValue(app, &classes[0], debug, q("1;$(ProjectName)"));
    engine.setPropertyValue(app, &classes[1], debug, q("b"));
    QStringList arguments;
    addToolDescriptionOptions({&classes[0], &classes[1], &classes[2]}, {engine, app, debug}, arguments,
                              QString());
    EXPECT_EQ(arguments.join(u'|').toStdString(), "-O1|-Oapp|--x|b");
}

}  // namespace

}  // namespace build_test
