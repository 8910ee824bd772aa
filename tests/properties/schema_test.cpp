#include "properties/schema.h"

#include "properties/lists.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace {

using namespace properties;

QString q(const char* text) {
    return QString::fromUtf8(text);
}

class SchemaTest : public testing::Test {
protected:
    SchemaTest() { schema.addToolRows({q("hex"), q("srec")}, q("$(AtelisDir)/generic.xml")); }

    PropertyClass* find(const char* key) const { return schema.find(q(key)); }

    Schema schema{fileTypes(), projectTypes()};
};

TEST_F(SchemaTest, KeysAreUniqueButForTheTwins) {
    std::map<std::string, int> counts;
    for (const auto& property : schema.classes()) ++counts[property->name.toStdString()];
    for (const auto& [key, count] : counts)
        EXPECT_EQ(count, key == "filter" || key == "build_output_file_name" ? 2 : 1) << key;
}

TEST_F(SchemaTest, EveryRowIsDocumentedAndItsDefaultIsLegal) {
    const std::set<std::string> besideTheValues = {"file_flag", "project_flag", "solution_flag",
                                                   "linker_output_format"};
    for (const auto& property : schema.classes()) {
        const std::string key = property->name.toStdString();
        EXPECT_FALSE(property->shortName.isEmpty()) << key;
        EXPECT_FALSE(property->longDescription().isEmpty()) << key;
        EXPECT_FALSE(property->longDescription().contains(u"%1")) << key;
        EXPECT_FALSE(property->page.isEmpty()) << key;
        EXPECT_FALSE(property->group.isEmpty()) << key;
        EXPECT_EQ(property->enumerationGroups.isEmpty(), key != "file_codec") << key;
        if (property->kind == Kind::Enumeration || property->kind == Kind::Boolean) {
            EXPECT_EQ(property->values().contains(property->defaultValue), !besideTheValues.contains(key))
                << key;
        }
        if (property->kind == Kind::IntegerRange) {
            EXPECT_GE(property->defaultValue.toUInt(), property->minimum) << key;
            EXPECT_LE(property->defaultValue.toUInt(), property->maximum) << key;
        }
    }
}

/// All members of a structure of pointers, which has nothing else.
template <typename Members>
auto membersOf(const Members& members) {
    return std::bit_cast<std::array<PropertyClass*, sizeof(Members) / sizeof(PropertyClass*)>>(members);
}

TEST_F(SchemaTest, EachRowHasOneMemberOfItsOwn) {
    std::set<const PropertyClass*> members;
    for (const PropertyClass* member : membersOf(schema.general)) members.insert(member);
    for (const PropertyClass* member : membersOf(schema.tools)) members.insert(member);
    EXPECT_FALSE(members.contains(nullptr));
    EXPECT_EQ(members.size(), schema.classes().size());
    EXPECT_EQ(members.size(), membersOf(schema.general).size() + membersOf(schema.tools).size());
    for (const auto& property : schema.classes()) EXPECT_TRUE(members.contains(property.get()));
}

TEST_F(SchemaTest, OfTwoRowsWithOneKeyTheLaterIsFound) {
    EXPECT_EQ(find("filter"), schema.general.dynamic_folder_filter);
    EXPECT_EQ(find("build_output_file_name"), schema.general.library_output_file_name);
    EXPECT_EQ(schema.general.filter->kind, Kind::StringList);
    EXPECT_EQ(schema.general.dynamic_folder_filter->kind, Kind::String);
    EXPECT_EQ(schema.general.build_output_file_name->shortName, q("Executable File Name"));
    EXPECT_EQ(schema.general.library_output_file_name->defaultValue, q("$(OutDir)/$(ProjectName)$(LIB)"));
}

TEST_F(SchemaTest, SomeRowsAreReachedByTheirMemberOnly) {
    for (const char* key : {"date_created", "date_modified", "full_path", "relative_path", "name",
                            "full_project_directory", "public_configurations", "private_configurations",
                            "debug_leave_target_running", "$(OutDir)", "OutDir", "", "FILE_TYPE"})
        EXPECT_EQ(find(key), nullptr) << key;
    EXPECT_EQ(schema.tools.debug_leave_target_running->defaultValue, q("No"));
    EXPECT_EQ(find("Name"), schema.general.Name);
    EXPECT_EQ(find("Platform")->defaultValue, q("ARM"));
}

TEST_F(SchemaTest, IndexedRowsCarryTheirIndex) {
    const auto& tools = schema.tools;
    EXPECT_EQ(find("debug_additional_load_file"), tools.debug_additional_load_file[0]);
    EXPECT_EQ(find("debug_additional_load_file0"), nullptr);
    EXPECT_EQ(find("debug_additional_load_file3"), tools.debug_additional_load_file[3]);
    EXPECT_EQ(find("debug_additional_load_file4"), nullptr);
    EXPECT_EQ(tools.debug_additional_load_file_type[2]->name, q("debug_additional_load_file_type2"));
    EXPECT_EQ(tools.debug_additional_load_file_type[2]->shortName, q("Additional Load File Type[2]"));
    EXPECT_EQ(tools.debug_additional_load_file_type[2]->order, -71);
    EXPECT_EQ(tools.external_debug_symbols_load_address[0]->shortName, q("Debug Symbols Load Address[0]"));
}

TEST_F(SchemaTest, TakesListsAndDefaultsFromTheHost) {
    EXPECT_EQ(schema.tools.build_generic_options_file_name->defaultValue, q("$(AtelisDir)/generic.xml"));
    const QStringList loadFileTypes = {q("Detect"), q("hex"), q("srec")};
    EXPECT_EQ(schema.tools.external_load_file_type->values(), loadFileTypes);
    EXPECT_EQ(schema.tools.external_load_file_type->longDescription(),
              q("The file type of the main load file. The options are <b>Detect, hex, srec</b>."));
    EXPECT_EQ(schema.tools.debug_additional_load_file_type[3]->longDescription(),
              q("The file type of the additional load file. The options are <b>Detect, hex, srec</b>."));
    const Schema small({q("Text")}, {q("A"), q("B")});
    EXPECT_EQ(small.general.file_type->values(), QStringList({q("Default"), q("Text")}));
    EXPECT_EQ(small.general.project_type->longDescription(),
              q("Specifies the type of project to build. The options are <b>A, B</b>."));
    EXPECT_EQ(small.tools.c_additional_options, nullptr);
    EXPECT_TRUE(small.affecting(BuildKind::Link).empty());
}

TEST_F(SchemaTest, FileDialogsAndViewsHaveTheirHints) {
    std::map<std::string, std::string> filters;
    std::set<std::string> marked;
    for (const auto& property : schema.classes()) {
        const std::string key = property->name.toStdString();
        if (!property->specialValue.isEmpty()) filters[key] = property->specialValue.toStdString();
        if (property->viewFlag) marked.insert(key);
    }
    EXPECT_EQ(filters, (std::map<std::string, std::string>{{"debug_register_definition_file", "XML (*.xml)"},
                                                           {"link_linker_script_file", "LD (*.ld)"},
                                                           {"linker_memory_map_file", "XML (*.xml)"},
                                                           {"linker_section_placement_file", "XML (*.xml)"},
                                                           {"property_groups_file_path", "XML (*.xml)"}}));
    EXPECT_EQ(marked, (std::set<std::string>{"link_use_linker_script_file", "linker_output_format"}));
}

TEST_F(SchemaTest, ChangesMakeTheirStepsOutOfDate) {
    const std::pair<BuildKind, std::size_t> sizes[] = {
        {BuildKind::NoBuild, 0},     {BuildKind::Excluded, 0},  {BuildKind::CompileC, 32},
        {BuildKind::CompileCpp, 34}, {BuildKind::Assemble, 27}, {BuildKind::ExternalBuild, 0},
        {BuildKind::Link, 42},       {BuildKind::Archive, 3},   {BuildKind::Stage, 4},
        {BuildKind::Combine, 4},
    };
    for (const auto& [kind, size] : sizes)
        EXPECT_EQ(schema.affecting(kind).size(), size) << static_cast<int>(kind);
    const auto& tools = schema.tools;
    EXPECT_TRUE(schema.affecting(BuildKind::Link).contains(tools.archive_post_build_command_wd));
    EXPECT_FALSE(schema.affecting(BuildKind::Archive).contains(tools.archive_post_build_command_wd));
    for (std::uint32_t kind = 0; kind < buildKindCount; ++kind)
        EXPECT_FALSE(
            schema.affecting(static_cast<BuildKind>(kind)).contains(tools.external_cpp_compile_command));
}

TEST_F(SchemaTest, RegisteringReplacesAndRemovingForgets) {
    PropertyClass mine(q("file_name"), Kind::String, {}, {}, {}, {}, {}, 0);
    schema.add(&mine);
    EXPECT_EQ(find("file_name"), &mine);
    EXPECT_EQ(schema.general.file_name->shortName, q("File Name"));
    schema.affecting(BuildKind::Link).insert(&mine);
    PropertyClass other(q("file_name"), Kind::String, {}, {}, {}, {}, {}, 0);
    schema.remove(&other);
    EXPECT_EQ(find("file_name"), &mine) << "another class of the key is not registered";
    schema.remove(&mine);
    EXPECT_EQ(find("file_name"), nullptr);
    EXPECT_FALSE(schema.affecting(BuildKind::Link).contains(&mine));
}

TEST_F(SchemaTest, MacrosOfBuildStepsFollowTheGeneralOnes) {
    EXPECT_EQ(Schema(fileTypes(), projectTypes()).macroClasses().size(), 27);
    EXPECT_EQ(schema.macroClasses().size(), 51);
    EXPECT_EQ(schema.macroClasses().first()->name, q("$(Configuration)"));
    EXPECT_EQ(schema.macroClasses()[27]->macroName(), q("CombiningOutputFilePath"));
    for (const MacroPropertyClass* macro : schema.macroClasses())
        EXPECT_EQ(macro->group, q("(Build Macro Values)"));
}

}  // namespace
