#include "properties/tool_description.h"

#include "project/solution_fixture.h"

#include <QDir>

namespace {

using namespace project_test;
using properties::GenericPropertyClass;
using properties::Tool;

class ToolDescriptions : public SolutionTest {
protected:
    ToolDescriptions() {
        newSolution("s");
        project = newProject("p");
    }
    /// Describes tools, and makes the project use them.
    void describe(const std::string& elements, const char* name = "tools.xml") {
        set(project, "Common", "build_generic_options_file_name",
            write(name, "<root>" + elements + "</root>").toUtf8().constData());
        engine.loadToolDescriptions(project, q("Common"));
    }
    std::string options(Tool tool) {
        std::string text;
        for (const GenericPropertyClass* option : engine.toolDescription().options(tool))
            text += option->name.toStdString() + " ";
        return text;
    }
    bool affects(BuildKind kind, const char* key) {
        return engine.schema().affecting(kind).contains(engine.schema().find(q(key)));
    }

    ProjectElement* project;
};

TEST_F(ToolDescriptions, JoinTheToolsThatTheyName) {
    struct Row {
        const char* tool;
        const char* page;
        const char* lists;  ///< by tool: assembler, compiler, C compiler, C++ compiler, linker
        const char* kinds;  ///< CompileC, CompileCpp, Assemble, Link
    };
    const Row rows[] = {
        {"assembler", "Assembler", "x----", "--x-"},
        {"compiler", "Code", "-x---", "xx--"},
        {"c_compiler", "Code", "--x--", "x---"},
        {"cpp_compiler", "Code", "---x-", "-x--"},
        {"linker", "Code", "----x", "---x"},
        {"compiler;linker", "Code", "-x--x", "xx-x"},
        {"linker;assembler", "Code", "x---x", "--xx"},
        {"nothing", "", "-----", "----"},
        {"assembler;;other", "Assembler", "x----", "--x-"},
    };
    int number = 0;
    for (const Row& row : rows) {
        describe(std::string("<property name='o' tool='") + row.tool + "' group='My Options'/>",
                 ("t" + std::to_string(++number) + ".xml").c_str());
        const PropertyClass* const option = engine.schema().find(q("o"));
        ASSERT_TRUE(option) << row.tool;
        EXPECT_EQ(option->page.toStdString(), row.page) << row.tool;
        EXPECT_EQ(option->group, u"My");
        std::string lists;
        for (const Tool tool :
             {Tool::Assembler, Tool::Compiler, Tool::CCompiler, Tool::CppCompiler, Tool::Linker})
            lists += options(tool).empty() ? '-' : 'x';
        EXPECT_EQ(lists, row.lists) << row.tool;
        std::string kinds;
        for (const BuildKind kind :
             {BuildKind::CompileC, BuildKind::CompileCpp, BuildKind::Assemble, BuildKind::Link})
            kinds += affects(kind, "o") ? 'x' : '-';
        EXPECT_EQ(kinds, row.kinds) << row.tool;
    }
}

TEST_F(ToolDescriptions, GiveWayToOthers) {
    const std::size_t affecting = engine.schema().affecting(BuildKind::CompileC).size();
    const PropertyClass* const row = engine.schema().find(q("build_suppress_warnings"));
    describe(
        "<property name='o' tool='compiler'/><property name='lost' tool='x'/><group name='g' order='0x10' "
        "default='a'>"
        "<groupEntry name='a'/></group><property name='build_quietly' default='No'/>"
        "<property name='build_quietly' default='Maybe'/><property name='no such row' default='x'/>"
        "<property name='build_treat_warnings_as_errors'/><property name='build_suppress_warnings' "
        "tool='compiler'/>"
        "<other/>");
    EXPECT_EQ(get(project, "Common", "build_quietly"), "Maybe");
    EXPECT_EQ(engine.schema().find(q("g"))->order, 16);
    EXPECT_EQ(engine.toolDescription().groups().size(), 1);
    EXPECT_NE(engine.schema().find(q("build_suppress_warnings")), row);
    set(project, "Common", "o", "value");
    const std::size_t changes = engine.changeLog().size();

    describe("<property name='other' tool='linker'/>", "others.xml");
    EXPECT_EQ(get(project, "Common", "build_quietly"), "Yes");
    for (const char* key : {"o", "lost", "g"}) EXPECT_EQ(engine.schema().find(q(key)), nullptr) << key;
    EXPECT_EQ(engine.schema().find(q("build_suppress_warnings")), row);
    EXPECT_EQ(engine.schema().affecting(BuildKind::CompileC).size(), affecting);
    // The change of a class that is gone is remembered by its key.
    EXPECT_EQ(engine.changeLog().size(), changes + 1);
    EXPECT_EQ(engine.changeLog()[changes - 1].propertyClass()->name, u"o");
    EXPECT_EQ(options(Tool::Linker), "other ");

    engine.closeSolution();
    EXPECT_EQ(engine.schema().find(q("other")), nullptr);
}

TEST_F(ToolDescriptions, AreReadOnce) {
    describe("<property name='a' tool='compiler'/>");
    ProjectElement* const other = newProject("q");
    set(other, "Common", "build_generic_options_file_name", "$(SolutionDir)/tools.xml");
    write("tools.xml", "<root><property name='b' tool='compiler'/></root>");
    engine.loadToolDescriptions(engine.addFile(other, q("x.c")), q("Common"));
    engine.loadToolDescriptions(engine.solution(), q("Common"));
    engine.loadToolDescriptions(nullptr, q("Common"));
    EXPECT_EQ(options(Tool::Compiler), "a ");

    set(project, "Common", "build_generic_options_file_name", "missing.xml");
    EXPECT_TRUE(engine.isExecutableProject(project, q("Common")));
    EXPECT_EQ(options(Tool::Compiler), "");
    write("missing.xml", "<root><property name='c' tool='compiler'/></root>");
    engine.loadToolDescriptions(project, q("Common"));
    EXPECT_EQ(options(Tool::Compiler), "");
}

TEST_F(ToolDescriptions, StopAtWhatIsNoElement) {
    describe(
        "<property name='a' tool='compiler'/><!-- dropped --><property name='b' "
        "tool='compiler'/><![CDATA[x]]>"
        "<property name='c' tool='compiler'/>");
    EXPECT_EQ(options(Tool::Compiler), "a b ");
}

TEST_F(ToolDescriptions, TakeOptionsOutOfLists) {
    struct Row {
        const char* options;  ///< the children of the description of "o"
        const char* before;
        const char* value;
        const char* after;
        const char* backup;
    };
    const Row rows[] = {
        {"<e value='Level 2' option='-O2'/>", "-O2;-g", "Level 2", "-g", "-O2;-g"},
        {"<e value='Level 2' option='-O2'/>", "-O2", "Level 2", "", "-O2"},
        {"<e value='Level 2' option='-O2'/>", ";-g;;-O2;-x", "Level 2", "-g;-x", ";-g;;-O2;-x"},
        {"<e value='Level 2' option='-O2'/>", "-O22;-o2", "", "-O22;-o2", ""},
        // One only, in the order of the list.
        {"<e value='1' option='-a'/><e value='2' option='-b'/>", "-b;-a", "2", "-a", "-b;-a"},
        {"<e value='1' option='-a'/>", "-a;-a", "1", "-a", "-a;-a"},
        // A switch and its argument.
        {"<e value='yes' option='-x;y'/>", "-g;-x;y;-h", "yes", "-g;-h", "-g;-x;y;-h"},
        {"<e value='yes' option='-x;y'/>", "-x;-g;y", "", "-x;-g;y", ""},
        {"<e value='two' option='-x;y'/><e value='one' option='y'/>", "-x;y", "one", "-x", "-x;y"},
        // A value that is empty does not move.
        {"<e value='' option='-O2'/>", "-O2", "", "-O2", ""},
        {"", "-O2", "", "-O2", ""},
    };
    int number = 0;
    for (const Row& row : rows) {
        project = newProject(("p" + std::to_string(++number)).c_str());
        set(project, "Common", "c_additional_options", row.before);
        describe(std::string("<property name='o' type='Enumeration' tool='compiler'>") + row.options +
                     "</property>",
                 ("t" + std::to_string(number) + ".xml").c_str());
        EXPECT_EQ(local(project, "Common", "o"), row.value) << row.before;
        EXPECT_EQ(local(project, "Common", "c_additional_options"), row.after) << row.before;
        EXPECT_EQ(local(project, "Common", "c_additional_options_backup"), row.backup) << row.before;
    }
}

TEST_F(ToolDescriptions, TakeOptionsOutOfTheListOfTheTool) {
    set(project, "Debug", "asm_additional_options", "-o");
    set(project, "Debug", "linker_additional_options", "-o");
    set(project, "Common", "linker_additional_options", "-o");
    set(project, "Debug", "build_generic_options_file_name",
        write("t.xml", "<r><property name='o' tool='linker'><e value='v' option='-o'/></property></r>")
            .toUtf8());
    engine.loadToolDescriptions(project, q("Debug"));
    EXPECT_EQ(local(project, "Debug", "asm_additional_options"), "-o");
    EXPECT_EQ(local(project, "Debug", "linker_additional_options"), "");
    EXPECT_EQ(local(project, "Common", "linker_additional_options"), "-o");
    EXPECT_EQ(local(project, "Debug", "link_additional_options_backup"), "-o");
}

TEST_F(ToolDescriptions, OfOddNamesAreNeitherFoundNorStored) {
    for (const char* name : {"", "a b", "1st", "Name", "Platform", "inherited_configurations", "hidden"}) {
        project = newProject((std::string("p") + name).c_str());
        set(project, "Common", "c_additional_options", "-o");
        describe(std::string("<property name='") + name +
                     "' type='Enumeration' tool='compiler'><e value='v' option='-o'/></property>",
                 (std::string("t") + name + ".xml").c_str());
        EXPECT_EQ(engine.toolDescription().options(Tool::Compiler).size(), 1);
        EXPECT_FALSE(engine.toolDescription().owns(engine.schema().find(q(name)))) << name;
        EXPECT_EQ(local(project, "Common", "c_additional_options"), "-o") << name;
        EXPECT_NE(project->configurations.value(q("Common"))->attributes.value(q(name)), u"v") << name;
    }
}

TEST_F(ToolDescriptions, StayWhileOptionsMove) {
    ProjectElement* const other = newProject("q");
    set(other, "Common", "build_generic_options_file_name", "none.xml");
    set(project, "Common", "c_additional_options", "-o;-p");
    const auto receiver = QObject::connect(&engine, &ProjectSystem::propertyChanged,
                                           [&] { EXPECT_FALSE(engine.hasOutput(other, q("Common"))); });
    describe(
        "<property name='o' type='Enumeration' tool='compiler'><e value='v' option='-o'/></property>"
        "<property name='p' type='Enumeration' tool='compiler'><e value='w' option='-p'/></property>");
    QObject::disconnect(receiver);
    EXPECT_EQ(local(project, "Common", "o") + local(project, "Common", "p"), "vw");
    EXPECT_EQ(options(Tool::Compiler), "o p ");
}

TEST_F(ToolDescriptions, LeaveListsAloneThatNobodyTyped) {
    std::string tokens = "-o";
    for (int i = 0; i < 2500; ++i) tokens += ";-q";
    set(project, "Common", "c_additional_options", tokens.c_str());
    describe("<property name='o' type='Enumeration' tool='compiler'><e value='v' option='-o'/></property>");
    EXPECT_EQ(local(project, "Common", "o"), "");
}

TEST_F(ToolDescriptions, ExpandGlobalMacros) {
    macros.globalMacros.insert(q("LEVEL"), q("-O7"));
    describe(
        "<ifdef name='LEVEL'><property name='no' tool='compiler'/></ifdef>"
        "<property name='o' tool='compiler'><e value='x' option='$(LEVEL)'/></property>");
    EXPECT_EQ(options(Tool::Compiler), "o ");
    EXPECT_EQ(engine.toolDescription().options(Tool::Compiler).first()->options().first().second, u"-O7");
}

class PropertyGroups : public ToolDescriptions {
protected:
    static constexpr const char* devices = R"(<root>
        <group name="device" short="Device" default="A">
            <groupEntry name="A"><property name="build_quietly" value="No" configuration=""/>
                <cinclude value="inc/$(device)/."/><cdefine name="PART_A"/><macro name="Ram" value="1k"/></groupEntry>
            <groupEntry name="B"><cinclude value="b"/><macro name="Ram" value="2k"/>
                <macro name="Base" value="yes" configuration="Base"/><macro name="Other" value="no" configuration="Other"/>
                <macro name="Quiet" value="yes" property="build_quietly" property_value="Yes"/>
                <macro name="Loud" value="yes" property="build_quietly" property_value="No"/></groupEntry>
        </group><other/><group name="board"/></root>)";

    void use(const QString& path) {
        set(project, "Common", "property_groups_file_path", path.toUtf8().constData());
    }
    std::string expand(const char* text, const char* configuration = "Common") {
        return engine.expandMacros(project, q(configuration), q(text)).toStdString();
    }
};

TEST_F(PropertyGroups, BringMacros) {
    write("groups.xml", devices);
    use(q("groups.xml"));
    EXPECT_EQ(expand("$(device) $(Ram) $(board)"), "A 1k ");
    PropertyValueGroupValue(engine.propertyGroupFile(project, q("Common"))->find(q("device")), q("Common"),
                            project)
        .setValue(q("B"));
    engine.setInheritedConfigurations(engine.solution(), q("Debug"), {q("Base")});
    EXPECT_EQ(expand("$(device) $(Ram) $(Base:none) $(Other:none) $(Quiet:none) $(Loud:none)"),
              "B 2k none none yes none");
    EXPECT_EQ(expand("$(Base:none) $(Other:none)", "Debug"), "yes none");
}

TEST_F(PropertyGroups, BringMacrosForChoicesOfEachOther) {
    write("groups.xml",
          "<root><group name='device' default='A'><groupEntry name='A'>"
          "<macro name='Big' value='yes' property='board' property_value='Two'/></groupEntry></group>"
          "<group name='board' default='Two'><groupEntry name='Two'/></group></root>");
    use(q("groups.xml"));
    EXPECT_EQ(expand("$(Big:none)"), "yes");
}

TEST_F(PropertyGroups, AreOneFileFromAnyDirectory) {
    write("groups.xml", devices);
    use(q("x/../groups.xml"));
    const auto* const file = engine.propertyGroupFile(project, q("Common"));
    use(q("groups.xml"));
    EXPECT_EQ(engine.propertyGroupFile(project, q("Common")), file);
}

TEST_F(PropertyGroups, BringIncludeDirectoriesBetweenUserAndSystem) {
    write("groups.xml", devices);
    use(q("groups.xml"));
    set(project, "Common", "c_user_include_directories", "user");
    set(project, "Common", "c_system_include_directories", "system");
    ProjectElement* const file = engine.addFile(project, q("x.c"));
    for (const char* place : {"system", "inc/A", "user"}) {
        QDir(directory.path()).mkpath(q(place));
        write((place + std::string("/h.h")).c_str(), "");
        EXPECT_EQ(
            engine.locateFile(QString(), q("h.h"), file, q("Common")),
            directory.path() + u'/' + q(place) + (q(place).startsWith(u"inc") ? q("/./h.h") : q("/h.h")));
    }
    EXPECT_EQ(engine.propertyGroupElements(file, q("Common"), "cdefine").first()->attribute("name"),
              "PART_A");
}

TEST_F(PropertyGroups, AreReadAgainWhenTheirFileChanged) {
    properties::PropertyValueGroupFiles files;
    EXPECT_EQ(files.find(q("None")), files.find(QString()));
    EXPECT_TRUE(files.find(QString())->groups().isEmpty());
    EXPECT_EQ(files.find(directory.filePath(q("groups.xml"))), nullptr);
    const QString path = write("groups.xml", devices);
    const auto* const first = files.find(path);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->groups().size(), 2);
    EXPECT_EQ(files.find(path), first);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime::currentDateTime().addSecs(-100), QFile::FileModificationTime);
    EXPECT_NE(files.find(path), first);
    EXPECT_EQ(first->find(q("device"))->name, u"device");
}

TEST_F(PropertyGroups, TakeInTheLibrariesAtHand) {
    macros.systemMacros.insert(q("PackagesDir"), directory.path());
    macros.systemMacros.insert(q("AtelisDir"), directory.path());
    for (const char* library : {"libraries/b", "libraries/A", "targets/t", "samples/none"})
        QDir(directory.path()).mkpath(q(library));
    for (const char* library : {"libraries/b", "libraries/A", "targets/t"})
        write((library + std::string("/propertyGroups.xml")).c_str(),
              "<r><group name='" + std::string(library) + "'/></r>");
    write("groups.xml", devices);
    use(q("groups.xml"));
    const auto names = [&] {
        std::string text;
        for (const auto* group : engine.propertyGroupFile(project, q("Common"))->groups())
            text += group->name.toStdString() + (group->isLibraryGroup() ? "* " : " ");
        return text;
    };
    EXPECT_EQ(names(), "device board libraries/A* libraries/b* targets/t* ");
    // A library that is a project's own file is no longer one at hand.
    use(q("libraries/b/propertyGroups.xml"));
    EXPECT_EQ(names(), "libraries/b libraries/A* targets/t* ");
}

}  // namespace
