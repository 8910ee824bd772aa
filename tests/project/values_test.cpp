#include "project/engine_fixture.h"
#include "project/environment_property_value.h"
#include "support/log.h"
#include "xml/document.h"

namespace {

using namespace project_test;
using properties::PropertyValueGroupClass;

using Values = EngineTest;

TEST_F(Values, ASingleValueIsFoundLevelByLevel) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const file = engine.addFile(project, q("a.c"));
    engine.createConfiguration(solution, q("Debug"));
    engine.setInheritedConfigurations(solution, q("Debug"), {q("A"), q("B")});
    const char* const key = "build_toolchain_directory";

    EXPECT_EQ(get(file, "Debug", key), "$(AtelisDir)");
    set(solution, "Common", key, "solution common");
    set(project, "Common", key, "project common");
    EXPECT_EQ(get(file, "Debug", key), "project common");
    set(project, "B", key, "project B");
    set(project, "A", key, "project A");
    EXPECT_EQ(get(file, "Debug", key), "project A") << "inherited in list order, before Common";
    EXPECT_EQ(get(file, "Common", key), "project common") << "Common inherits nothing";
    EXPECT_EQ(get(file, "Unknown", key), "project common");
    set(project, "Debug", key, "project debug");
    set(file, "Common", key, "file common");
    EXPECT_EQ(get(file, "Debug", key), "file common") << "the nearer level wins";
    set(file, "Debug", key, "");
    EXPECT_EQ(get(file, "Debug", key), "") << "an empty value hides";
    engine.clearPropertyValue(file, property(key), q("Debug"));
    EXPECT_EQ(get(file, "Debug", key), "file common");
}

TEST_F(Values, AListGathersAllLevels) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const file = engine.addFile(project, q("a.c"));
    engine.setInheritedConfigurations(solution, q("Debug"), {q("Base")});
    const char* const key = "c_preprocessor_definitions";
    EXPECT_EQ(get(file, "Debug", "c_user_include_directories"), ".");
    set(file, "Debug", key, "f");
    EXPECT_EQ(get(file, "Debug", key), "f");
    set(solution, "Common", key, "s");
    set(project, "Common", key, "p");
    set(project, "Base", key, "b");
    set(project, "Debug", key, "d");
    EXPECT_EQ(get(file, "Debug", key), "s;p;b;d;f");
    EXPECT_EQ(get(file, "Common", key), "s;p");

    PropertyTrace trace;
    engine.propertyValue(file, property(key), q("Debug"), &trace);
    std::string shown;
    for (const PropertyOrigin& origin : trace)
        shown += (origin.value + q("@") + origin.configuration + q("@") + origin.node->elementName() + q(" "))
                     .toStdString();
    EXPECT_EQ(shown, "f@Debug@a.c d@Debug@p b@Base@p p@Common@p s@Common@demo ");
    set(project, "Base", key, "");
    EXPECT_EQ(get(project, "Debug", key), "s;p;;d") << "an empty value leaves its separator";
}

TEST_F(Values, TheTraceOfADefaultHasNoPlace) {
    PropertyTrace trace;
    engine.propertyValue(newSolution(), property("c_ignore_includes"), q("Debug"), &trace);
    ASSERT_EQ(trace.size(), 1);
    EXPECT_EQ(trace[0].value, q("No"));
    EXPECT_TRUE(trace[0].configuration.isEmpty());
    EXPECT_EQ(trace[0].node, nullptr);
}

TEST_F(Values, ALinkedSolutionUsesTheListOfItsLinker) {
    ProjectElement* const root = newSolution("R");
    ProjectElement* const link = newLink(root, "L");
    ProjectElement* const project = engine.newProject(link, q("p"), QString(), QString());
    set(project, "Base", "c_ignore_includes", "Yes");
    EXPECT_EQ(get(project, "Debug", "c_ignore_includes"), "No");
    engine.setInheritedConfigurations(root, q("Debug"), {q("Base")});
    EXPECT_EQ(get(project, "Debug", "c_ignore_includes"), "Yes");
    engine.setInheritedConfigurations(project, q("Debug"), {q("Other")});
    EXPECT_EQ(get(project, "Debug", "c_ignore_includes"), "No") << "its own list comes first";
}

TEST_F(Values, EntriesOfLists) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    struct Case {
        const char* value;
        bool escaped;
        QStringList entries;
    };
    const Case cases[] = {
        {"", false, {}},
        {";a;;b;", false, {q("-a"), q("-b")}},
        {"a\\;b;c", true, {q("-a;b"), q("-c")}},
        {"a\\;b;c", false, {q("-a\\"), q("-b"), q("-c")}},
        {";;x\\", true, {q("-x\\")}},
        {"\\\\;y", true, {q("-\\"), q("-y")}},
    };
    for (const Case& c : cases) {
        set(project, "Common", "linker_keep_symbols", c.value);
        EXPECT_EQ(engine.propertyValueList(q("-"), project, property("linker_keep_symbols"), q("Common"),
                                           true, c.escaped),
                  c.entries)
            << c.value;
    }
}

TEST_F(Values, SettingRecordsTheChangeAndMarksTheConfigurationOnly) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    ProjectElement* const file = engine.addFile(project, q("a.c"));
    file->modified = project->modified = false;
    int told = 0;
    QObject::connect(
        &engine, &ProjectSystem::propertyChanged,
        [&](ProjectElement* node, const QString& configuration, const PropertyClass* propertyClass) {
            EXPECT_EQ(node, file);
            EXPECT_EQ(configuration, q("Debug"));
            EXPECT_EQ(propertyClass, property("c_ignore_includes"));
            ++told;
        });
    set(file, "Debug", "c_ignore_includes", "Yes");
    set(file, "Debug", "c_ignore_includes", "Yes");
    EXPECT_FALSE(file->modified);
    EXPECT_TRUE(file->configurations.value(u"Debug")->modified);
    EXPECT_TRUE(engine.isModified(project, false));
    ASSERT_EQ(engine.changeLog().size(), 2U);
    EXPECT_TRUE(engine.changeLog()[0].oldText().isNull());
    EXPECT_EQ(engine.changeLog()[1].oldText(), q("Yes"));
    EXPECT_FALSE(engine.changeLog()[1].nodeWasModified());
    EXPECT_TRUE(engine.changeLog()[1].configurationWasModified());
    EXPECT_LE(engine.changeLog()[1].time(), QDateTime::currentDateTimeUtc());
    engine.clearPropertyValue(file, property("c_ignore_includes"), q("Debug"));
    engine.clearPropertyValue(file, property("c_ignore_includes"), q("Debug"));
    EXPECT_EQ(engine.changeLog().size(), 4U);
    EXPECT_EQ(told, 4);
}

TEST_F(Values, AnEmptiedConfigurationGoesExceptFromASolution) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const file = engine.addFile(newProject("p"), q("a.c"));
    for (ProjectElement* node : {solution, file}) {
        set(node, "Debug", "c_ignore_includes", "Yes");
        set(node, "Debug", "build_quietly", "No");
        engine.clearPropertyValue(node, property("c_ignore_includes"), q("Debug"));
        EXPECT_TRUE(node->configurations.contains(u"Debug"));
        engine.clearPropertyValue(node, property("build_quietly"), q("Debug"));
        EXPECT_EQ(node->configurations.contains(u"Debug"), node == solution);
    }
    EXPECT_EQ(file->firstChild(), nullptr);
}

TEST_F(Values, DependenciesAreListedOnce) {
    ProjectElement* const project = (newSolution(), newProject("p"));
    const auto dependencies = [&] { return local(project, "Common", "project_dependencies"); };
    for (const char* name : {"a", "b", "a", "c;d", "d"})
        engine.addProjectDependency(project, q("Common"), q(name));
    EXPECT_EQ(dependencies(), "a;b;c;d");
    engine.addProjectDependencies(project, q("Common"), {q("x"), q("b"), q("x")});
    EXPECT_EQ(dependencies(), "a;b;c;d;x");
    engine.appendPropertyValue(project, q("Common"), property("project_dependencies"), q("a"));
    EXPECT_EQ(dependencies(), "a;b;c;d;x;a");
}

TEST_F(Values, ConfigurationNames) {
    ProjectElement* const solution = newSolution("R");
    ProjectElement* const link = newLink(solution, "L");
    EXPECT_EQ(engine.configurationNames(nullptr, PublicConfigurations), QStringList(q("Common")));
    EXPECT_FALSE(engine.addConfiguration(solution, q(" Debug "), false));
    EXPECT_FALSE(engine.addConfiguration(solution, q("Base"), true));
    EXPECT_FALSE(engine.addConfiguration(link, q("Release"), false));
    set(solution, "Other", "Platform", "elsewhere");
    engine.createConfiguration(solution, q("Common"));
    EXPECT_EQ(engine.configurationNames(solution, PublicConfigurations), QStringList(q("Debug")));
    EXPECT_EQ(engine.configurationNames(link, PublicConfigurations), QStringList({q("Debug"), q("Release")}));
    EXPECT_EQ(engine.configurationNames(nullptr, PrivateConfigurations), QStringList(q("Base")));
    EXPECT_EQ(engine.configurationNames(solution, WithCommon | PrivateConfigurations | PublicConfigurations),
              QStringList({q("Base"), q("Common"), q("Debug")}));

    struct Case {
        const char *name, *title, *text;
    };
    const Case refused[] = {
        {"a/b", "Invalid Configuration", "The character '/' is not allowed in configuration names"},
        {"a?", "Invalid Configuration", "The character '?' is not allowed in configuration names"},
        {"Common", "Configuration exists", "The configuration 'Common' already exists in solution R"},
        {"Debug", "Configuration exists", "The configuration 'Debug' already exists in solution R"},
    };
    for (const Case& c : refused) {
        const auto refusal = engine.addConfiguration(solution, q(c.name), false);
        ASSERT_TRUE(refusal.has_value()) << c.name;
        EXPECT_EQ(refusal->title, q(c.title));
        EXPECT_EQ(refusal->text, q(c.text));
    }
}

TEST_F(Values, RenamingAConfigurationRunsDownTheTree) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project = newProject("p");
    ProjectElement* const file = engine.addFile(project, q("a.c"));
    ProjectElement* const blocked = engine.addFile(project, q("b.c"));
    engine.createConfiguration(solution, q("Debug"));
    engine.setInheritedConfigurations(solution, q("Other"), {q("Debug"), q("X"), q("Debug")});
    set(file, "Debug", "c_ignore_includes", "Yes");
    set(blocked, "Debug", "c_ignore_includes", "Yes");
    set(blocked, "New", "c_ignore_includes", "No");
    EXPECT_TRUE(engine.renameConfiguration(solution, q("Debug"), q("New")));
    EXPECT_TRUE(solution->configurations.contains(u"New"));
    EXPECT_EQ(engine.inheritedConfigurations(solution, q("Other")),
              QStringList({q("New"), q("X"), q("New")}));
    EXPECT_EQ(file->configurations.value(u"New")->elementName(), q("New"));
    EXPECT_TRUE(blocked->configurations.contains(u"Debug")) << "where the name is taken nothing changes";
    EXPECT_FALSE(engine.renameConfiguration(solution, q("New"), q("Common")));
    EXPECT_FALSE(engine.renameConfiguration(solution, q("New"), q("Other")));
    EXPECT_TRUE(engine.renameConfiguration(solution, q("New"), q("New")));
}

TEST_F(Values, InheritanceIsStoredAndToldOnlyWhenItChanges) {
    ProjectElement* const solution = newSolution();
    int told = 0;
    QObject::connect(&engine, &ProjectSystem::configurationsChanged, [&] { ++told; });
    engine.setInheritedConfigurations(newProject("p"), q("Debug"), {q("A"), q("B")});
    engine.setInheritedConfigurations(solution, q("Debug"), {q("A"), q("B")});
    EXPECT_EQ(told, 1);
    EXPECT_EQ(solution->configurations.value(u"Debug")->attributes.value(u"inherited_configurations"),
              q("A;B"));
    engine.setInheritedConfigurations(solution, q("Debug"), {});
    EXPECT_EQ(told, 2);
    EXPECT_TRUE(solution->configurations.value(u"Debug")->attributes.contains(u"inherited_configurations"));
}

TEST_F(Values, AViewsValueReadsAndWritesItsPlace) {
    ProjectElement* const solution = newSolution();
    ProjectElement* const project = newProject("p");
    set(solution, "Common", "c_preprocessor_definitions", "outer");
    set(project, "Common", "c_preprocessor_definitions", "inner");
    ProjectPropertyValue list(property("c_preprocessor_definitions"), q("Common"), project);
    EXPECT_EQ(list.value(), q("inner")) << "a list shows what its place adds";
    EXPECT_EQ(list.clone()->value(), q("inner"));
    ProjectPropertyValue single(property("build_quietly"), q("Debug"), project);
    EXPECT_EQ(single.value(), q("Yes"));
    EXPECT_TRUE(single.isInherited());
    single.setValue(q("No"));
    EXPECT_FALSE(single.isInherited());
    ProjectPropertyValue everywhere(property("project_directory"), q("Debug"), project);
    everywhere.setValue(q("sub"));
    EXPECT_EQ(local(project, "Common", "project_directory"), "sub") << "no configurations, so Common";
    EXPECT_TRUE(ProjectPropertyValue(property("Name"), q("Common"), project).isReadOnly());
    EXPECT_FALSE(single.helpText().isEmpty());
}

TEST_F(Values, SimpleAndDynamicFolderValues) {
    ProjectElement* const folder =
        engine.findOrAddFolder((newSolution(), newProject("p")), q("f"), QString());
    engine.setElementAttribute(folder, q("path"), q("src"));
    SimplePropertyValue fact(property("file_name"), q("1 KB"));
    EXPECT_TRUE(fact.isReadOnly());
    EXPECT_TRUE(fact.isOwnedByList());
    EXPECT_EQ(fact.clone()->value(), q("1 KB"));
    DynamicFolderPropertyValue path(property("path"), folder);
    EXPECT_FALSE(path.isReadOnly());
    EXPECT_EQ(path.value(), q("src"));
    path.setValue(q("lib"));
    EXPECT_EQ(folder->attributes.value(u"path"), q("src")) << "an edit goes nowhere by itself";
}

TEST_F(Values, AListHoldsOneValueAClass) {
    PropertyValueList list;
    auto* const first = new SimplePropertyValue(property("file_name"), q("a"));
    SimplePropertyValue second(property("file_name"), q("b"));
    EXPECT_TRUE(list.appendUnique(first));
    EXPECT_FALSE(list.appendUnique(&second));
    list.appendUnique(new SimplePropertyValue(property("file_codec"), q("c")));
    list.appendUnique(new SimplePropertyValue(property("build_quietly"), q("c")));
    list.sortByTitle();
    EXPECT_EQ(list[0]->propertyClass()->name, q("build_quietly"));
    EXPECT_EQ(list[1]->propertyClass()->name, q("file_codec"));

    testing::internal::CaptureStdout();
    EXPECT_FALSE(list.appendUnique(nullptr));
    support::logMask() = support::LogInternalErrors;
    EXPECT_FALSE(list.appendUnique(nullptr));
    support::logMask() = 0;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "error: Bad property value in PropertyValueList::appendUnique\n");
}

TEST_F(Values, AGroupSetsWhatItHolds) {
    xml::XMLDocument document;
    document.parseText(
        "<group name='device' short='Device' long='The device.' default='none'>"
        "<groupEntry name='none'/>"
        "<groupEntry name='big'>"
        "<property name='linker_keep_symbols' value='k'/>"
        "<property name='build_quietly' configuration='Debug' value='No'/>"
        "<property name='nosuch' value='x'/>"
        "<file name='start' file_name='start.s' folder='System'/>"
        "<file name='lost' file_name='lost.s' folder='Elsewhere'/>"
        "<note value='a&amp;b'/>"
        "</groupEntry></group>");
    PropertyValueGroupClass groupClass(*xml::asElement(document.root()), false);
    ProjectElement* const project = (newSolution(), newProject("p"));
    ProjectElement* const folder = engine.findOrAddFolder(project, q("System"), QString());
    PropertyValueGroupValue group(&groupClass, q("Common"), project);

    group.setValue(q("big"));
    EXPECT_EQ(group.value(), q("big"));
    EXPECT_EQ(local(project, "Common", "linker_keep_symbols"), "k");
    EXPECT_EQ(local(project, "Debug", "build_quietly"), "No");
    ProjectElement* const file = engine.findFile(folder, q("start.s"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->elementName(), q("start"));
    engine.setElementAttribute(file, keys::fileName, q("old.s"));
    group.setValue(q("big"));
    EXPECT_EQ(file->attributes.value(keys::fileName), q("start.s"));
    EXPECT_EQ(group.helpText(),
              q("The device.<ul><li><b>property</b> linker_keep_symbols=k</li>"
                "<li><b>property</b> build_quietly=No (Debug)</li><li><b>property</b> nosuch=x</li>"
                "<li><b>file</b> start</li><li><b>file</b> lost</li><li><b>note</b> a&amp;b</li></ul>"));
    group.setValue(q("unknown"));
    EXPECT_EQ(group.value(), q("none")) << "the default group";
    EXPECT_EQ(group.helpText(), q("The device."));
    EXPECT_EQ(local(project, "Common", "linker_keep_symbols"), "k");
}

TEST_F(Values, AGroupStoresOnlyWhatIsReadAgain) {
    xml::XMLDocument document;
    document.parseText(
        "<group name='g' default='one'><groupEntry name='one'>"
        "<property name='project_directory' configuration='Debug' value='sub'/>"
        "<property name='inherited_configurations' value='Debug'/><property name='Platform' value='x'/>"
        "<file name='f' file_name='f.s' folder='found'/></groupEntry></group>");
    PropertyValueGroupClass groupClass(*xml::asElement(document.root()), false);
    ProjectElement* const project = (newSolution(), newProject("p"));
    ProjectElement* const found = engine.addFolder(project, q("found"), QString());
    engine.setElementAttribute(found, q("path"), q("none"));
    PropertyValueGroupValue group(&groupClass, q("Debug"), project);
    group.setValue(q("one"));
    EXPECT_EQ(local(project, "Common", "project_directory"), "sub");
    EXPECT_EQ(project->configurations.value(q("Debug"))->attributes.size(), 2) << "its name and the choice";
    EXPECT_EQ(found->firstChildElement(), nullptr);
    group.clear();
    EXPECT_TRUE(engine.localPropertyValue(project, property("project_directory"), q("Common")).isNull());
}

TEST_F(Values, EnvironmentSettingsStoreWhatDiffersFromTheDefault) {
    const PropertyClass setting(q("tab_size"), properties::Kind::Integer, 1, 16, q("Editor"), q("Tabs"),
                                q("Size"), q("Size of a tab."), 4, 0);
    MemorySettingsStore first, second;
    const auto before = EnvironmentPropertyValue::stores();
    EnvironmentPropertyValue::stores() = {&first, &second};
    {
        EnvironmentPropertyValue value(&setting, 1);
        int told = 0;
        QObject::connect(&value, &EnvironmentPropertyValue::changed, [&] { ++told; });
        EXPECT_EQ(EnvironmentPropertyValue::valuesOfGroup(q("Tabs")).size(), 1);
        EXPECT_EQ(value.value(), q("4"));
        value.setValue(q("4"));
        value.setValue(q("8"));
        EXPECT_EQ(second.read(q("tab_size"), q("none")), q("8"));
        value.setValue(q("4"));
        EXPECT_EQ(second.read(q("tab_size"), q("none")), q("none"));
        EXPECT_EQ(told, 2);
    }
    EXPECT_TRUE(EnvironmentPropertyValue::valuesOfGroup(q("Tabs")).isEmpty());
    EnvironmentPropertyValue::stores() = before;
}

}  // namespace
