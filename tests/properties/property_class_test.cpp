#include "properties/generic_property_class.h"
#include "properties/lists.h"
#include "properties/macro_property_class.h"
#include "properties/message_source.h"
#include "properties/property_value_group_class.h"

#include <QMap>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace properties;

QString q(const char* text) {
    return QString::fromUtf8(text);
}

using Attributes = std::initializer_list<std::pair<const char*, const char*>>;

std::unique_ptr<xml::XMLElement> element(const char* tag, Attributes attributes) {
    auto made = std::make_unique<xml::XMLElement>(tag);
    for (const auto& [name, value] : attributes) made->setAttribute(name, value);
    return made;
}

std::string joined(const QStringList& list) {
    return list.join(u'|').toStdString();
}

TEST(PropertyClass, NormalisesGroupAndPage) {
    const struct {
        const char *group, *page, *shownGroup, *shownPage;
    } rows[] = {
        {"Linker Options", "Linker", "Linker", "Code"},
        {"Debugger Options", "Debugging", "Debugger", "Debug"},
        {"Printer Settings", "General", "Printer", "Code"},
        {"Code Generation Options", "C/C++", "Code Generation", "Code"},
        {"(Information)", "Properties", "(Information)", "Properties"},
        {"Options", "Assembler", "Options", "Assembler"},
        {"Settings", "linker", "Settings", "linker"},
        {"linker options", "general", "linker options", "general"},
        {"A Options of B Options", "", "A", ""},
        {"A Settings of B Options", "", "A Settings of B", ""},
        {"A Optionsless", "Debugging ", "A", "Debugging "},
        {" Options", "", "", ""},
    };
    for (const auto& row : rows) {
        const PropertyClass property(q("k"), Kind::String, q(row.page), q(row.group), {}, {}, {}, 0);
        EXPECT_EQ(property.group, q(row.shownGroup)) << row.group;
        EXPECT_EQ(property.page, q(row.shownPage)) << row.page;
    }
    PropertyClass moved(q("k"), Kind::String, q("Assembler"), {}, {}, {}, {}, 0);
    moved.group = q("New Options");
    moved.setPage(q("Linker"));
    EXPECT_EQ(moved.page, q("Code"));
    EXPECT_EQ(moved.group, q("New"));
}

TEST(PropertyClass, KindsAndTheirWords) {
    const char* const words[] = {"Boolean", "Integer",        "IntegerHex",   "IntegerRange",
                                 "String",  "FileName",       "ProjFileName", "StringList",
                                 "DirPath", "DirPathList",    "Enumeration",  "Color",
                                 "Font",    "FixedPitchFont", "Custom",       "JavaScript"};
    std::uint32_t number = 0;
    for (const char* word : words) {
        EXPECT_EQ(kindNamed(q(word)), static_cast<Kind>(number)) << word;
        EXPECT_EQ(kindName(static_cast<Kind>(number)), q(word));
        ++number;
    }
    for (const char* unknown : {"Command", "ComPort", "SaveFileName", "string", "nonsense", ""})
        EXPECT_EQ(kindNamed(q(unknown)), Kind::Boolean) << unknown;
    EXPECT_EQ(static_cast<int>(Kind::Command), 16);
    EXPECT_EQ(static_cast<int>(Kind::ComPort), 17);
    EXPECT_EQ(static_cast<int>(Kind::SaveFileName), 18);
}

TEST(PropertyClass, BooleansAreYesOrNo) {
    const PropertyClass set(q("k"), {}, {}, {}, {}, true, -5);
    EXPECT_EQ(set.defaultValue, q("Yes"));
    EXPECT_EQ(joined(set.enumerationValues), "Yes|No");
    EXPECT_EQ(set.order, -5);
    EXPECT_EQ(PropertyClass(q("k"), {}, {}, {}, {}, false, 0).defaultValue, q("No"));
    const PropertyClass plain(q("k"), Kind::Boolean, {}, {}, {}, {}, QString(), 0);
    EXPECT_EQ(plain.defaultValue, q("No"));
    EXPECT_TRUE(plain.enumerationValues.isEmpty());
    EXPECT_EQ(joined(plain.values()), "Yes|No");
    EXPECT_TRUE(PropertyClass(q("k"), Kind::String, {}, {}, {}, {}, QString(), 0).defaultValue.isNull());
    EXPECT_FALSE(PropertyClass(q("k"), Kind::Boolean, {}, {}, {}, {}, q(""), 0).defaultValue.isNull());
}

TEST(PropertyClass, AFreshClassHasOneValueForEachConfigurationAndCanBeWritten) {
    const PropertyClass property(q("k"), Kind::String, {}, {}, {}, {}, {}, 0);
    EXPECT_FALSE(property.readOnly);
    EXPECT_TRUE(property.perConfiguration);
    EXPECT_FALSE(property.viewFlag);
    EXPECT_FALSE(property.hostPredicate());
}

TEST(PropertyClass, IntegerDefaults) {
    const struct {
        Kind kind;
        std::uint32_t value, maximum;
        const char* text;
    } rows[] = {
        {Kind::Integer, 42, 100, "42"},
        {Kind::IntegerRange, 0, 0xFFFFFFFF, "0"},
        {Kind::IntegerHex, 0, 0, "0x0"},
        {Kind::IntegerHex, 1, 0xF, "0x1"},
        {Kind::IntegerHex, 1, 0x10, "0x01"},
        {Kind::IntegerHex, 1, 0xFF, "0x01"},
        {Kind::IntegerHex, 1, 0x100, "0x001"},
        {Kind::IntegerHex, 1, 0x1000, "0x0001"},
        {Kind::IntegerHex, 1, 0x10000, "0x00001"},
        {Kind::IntegerHex, 1, 0x100000, "0x000001"},
        {Kind::IntegerHex, 1, 0x1000000, "0x0000001"},
        {Kind::IntegerHex, 1, 0xFFFFFFF, "0x0000001"},
        {Kind::IntegerHex, 1, 0x10000000, "0x00000001"},
        {Kind::IntegerHex, 0xDEADBEEF, 0xFFFFFFFF, "0xdeadbeef"},
        {Kind::IntegerHex, 0x123, 0xF, "0x123"},
    };
    for (const auto& row : rows) {
        const PropertyClass property(q("k"), row.kind, 0, row.maximum, {}, {}, {}, {}, row.value, 0);
        EXPECT_EQ(property.defaultValue.toStdString(), row.text);
        EXPECT_EQ(property.maximum, row.maximum);
    }
}

TEST(PropertyClass, SetEnumerationLooksAtTheFirstEntry) {
    const struct {
        QStringList list;
        const char *values, *headings;
    } rows[] = {
        {{q("a~~A"), q("b~~B")}, "a|b", "A|B"},
        {{q("a"), q("b~~B")}, "a|b~~B", ""},
        {{q("a~~A"), q("b"), q("c~~")}, "a|b|c", "A||"},
        {{q("a")}, "a", ""},
        {{}, "", ""},
    };
    PropertyClass property(q("k"), Kind::Enumeration, {q("old~~Old")}, {}, {}, {}, {}, {}, 0);
    for (const auto& row : rows) {
        property.setEnumeration(row.list);
        EXPECT_EQ(joined(property.enumerationValues), row.values);
        EXPECT_EQ(joined(property.enumerationGroups), row.headings);
        EXPECT_EQ(property.values(), property.enumerationValues);
    }
}

TEST(PropertyClass, IsReadFromAnElement) {
    const auto full = element("property", {{"name", "opt"},
                                           {"type", "Enumeration"},
                                           {"group", "G Settings"},
                                           {"short", "S"},
                                           {"long", "L\xC3\xBC"},
                                           {"default", "b"},
                                           {"minimum", "1"},
                                           {"maximum", "4294967295"},
                                           {"enumeration", "a;;b;"},
                                           {"specialvalue", "x"},
                                           {"order", "7"},
                                           {"page", "ignored"}});
    const PropertyClass property(*full);
    EXPECT_EQ(property.name, q("opt"));
    EXPECT_EQ(property.kind, Kind::Enumeration);
    EXPECT_EQ(property.group, q("G"));
    EXPECT_EQ(property.shortName, q("S"));
    EXPECT_EQ(property.longDescription(), q("L\xC3\xBC"));
    EXPECT_EQ(property.defaultValue, q("b"));
    EXPECT_EQ(property.minimum, 1U);
    EXPECT_EQ(property.maximum, 0xFFFFFFFFU);
    EXPECT_EQ(joined(property.values()), "a|b");
    EXPECT_EQ(property.specialValue, q("x"));
    EXPECT_EQ(property.order, 7);
    EXPECT_EQ(property.page, q(""));
}

TEST(PropertyClass, BadNumbersAndMissingAttributesOfAnElement) {
    const auto poor =
        element("property",
                {{"name", ""}, {"type", "What"}, {"minimum", "0x10"}, {"maximum", "many"}, {"order", "-3"}});
    const PropertyClass property(*poor);
    EXPECT_EQ(property.kind, Kind::Boolean);
    EXPECT_EQ(property.minimum, 0U);
    EXPECT_EQ(property.maximum, 0U);
    EXPECT_EQ(property.order, 0);
    EXPECT_TRUE(property.defaultValue.isEmpty());
    EXPECT_TRUE(property.enumerationValues.isEmpty());
    EXPECT_EQ(joined(property.values()), "Yes|No");
}

class Catalogue : public MessageSource {
public:
    explicit Catalogue(QMap<QString, QString> texts) : texts_(std::move(texts)) { messageSource = this; }
    ~Catalogue() override { messageSource = nullptr; }
    QString text(const QString& key) const override { return texts_.value(key); }

private:
    QMap<QString, QString> texts_;
};

TEST(PropertyClass, TakesItsTextsFromTheCatalogue) {
    const Catalogue catalogue({{q("tab.page"), q("Debugging")},
                               {q("tab.group"), q("Editor Options")},
                               {q("tab.short"), q("Tab")},
                               {q("tab.long"), q("Tab size.")},
                               {q("tab.default"), q("4")},
                               {q("tab.enumerates"), q("2~~Few;8~~Many")},
                               {q("tab.suffix"), q("columns")},
                               {q("tab.minimum"), q("1")},
                               {q("tab.maximum"), q("16")}});
    testing::internal::CaptureStdout();
    const PropertyClass property(q("tab"), Kind::IntegerRange, -2);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(property.page, q("Debug"));
    EXPECT_EQ(property.group, q("Editor"));
    EXPECT_EQ(property.shortName, q("Tab"));
    EXPECT_EQ(property.longDescription(), q("Tab size."));
    EXPECT_EQ(property.defaultValue, q("4"));
    EXPECT_EQ(joined(property.enumerationValues), "2|8");
    EXPECT_EQ(joined(property.enumerationGroups), "Few|Many");
    EXPECT_EQ(property.suffix, q("columns"));
    EXPECT_EQ(property.minimum, 1U);
    EXPECT_EQ(property.maximum, 16U);
    EXPECT_EQ(property.order, -2);
}

TEST(PropertyClass, ReportsAPageThatTheCatalogueLacks) {
    const auto log = [] {
        testing::internal::CaptureStdout();
        const PropertyClass property(q("tab"), Kind::String, 3);
        EXPECT_EQ(property.name, q("tab"));
        EXPECT_EQ(property.kind, Kind::String);
        EXPECT_EQ(property.order, 3);
        EXPECT_TRUE(property.page.isEmpty());
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(log(), "") << "no catalogue, no report";
    const Catalogue empty({});
    EXPECT_EQ(log(), "warning: PropertyClass::PropertyClass GUIBuilder message tab.page not found\n");
}

TEST(GenericPropertyClass, MapsValuesToOptions) {
    const struct {
        Attributes attributes;
        Attributes children;  ///< values and options
        const char* options;
    } rows[] = {
        {{{"type", "Enumeration"}, {"enumeration", "Level 1 (O1);None;a)b(c;f(x)(y)"}},
         {},
         "Level 1 (O1)=-O1 None= a)b(c= f(x)(y)=-x"},
        {{{"enumeration", ""}}, {}, "Yes= No="},
        {{{"type", "Enumeration"}, {"enumeration", "a (x)~~H;b"}}, {}, "a (x)=-x b="},
        {{{"type", "StringList"}, {"values", "a;; b  c ;"}, {"option", "-x"}, {"option2", "-y"}},
         {},
         "a=-x;a b c=-x;b c"},
        {{{"type", "StringList"}, {"values", "a;b"}, {"option2", "-y"}}, {}, "a=-ya b=-yb"},
        {{{"values", "a"}}, {}, "a=a"},
        {{{"option", "-x"}}, {}, ""},
        {{{"enumeration", "e (E)"}, {"values", "v"}, {"option", "-x"}},
         {{"Yes", "-on"}, {"No", ""}},
         "e (E)=-E v=-x;v Yes=-on No="},
    };
    for (const auto& row : rows) {
        const auto described = element("property", row.attributes);
        for (const auto& [value, option] : row.children) {
            described->appendChild(new xml::XMLComment("between"));
            described->appendChild(element("option", {{"value", value}}).release());
            described->appendChild(element("any", {{"value", value}, {"option", option}}).release());
        }
        const GenericPropertyClass property(*described);
        QStringList options;
        QStringList values;
        for (const auto& [value, option] : property.options()) {
            options.append(value + u'=' + option);
            values.append(value);
        }
        EXPECT_EQ(options.join(u' ').toStdString(), row.options);
        EXPECT_EQ(property.values(), values);
    }
    const auto described = element("property", {{"variant", "v2"}});
    EXPECT_EQ(GenericPropertyClass(*described).variant(), q("v2"));
}

TEST(MacroPropertyClass, IsShownInItsBrackets) {
    const MacroPropertyClass macro(q("OutDir"), false, q("Where."));
    EXPECT_EQ(macro.macroName(), q("OutDir"));
    EXPECT_EQ(macro.name, q("$(OutDir)"));
    EXPECT_EQ(macro.shortName, q("$(OutDir)"));
    EXPECT_EQ(macro.group, q("(Build Macro Values)"));
    EXPECT_EQ(macro.page, q("Properties"));
    EXPECT_EQ(macro.kind, Kind::String);
    EXPECT_EQ(macro.longDescription(), q("Where."));
    EXPECT_TRUE(macro.defaultValue.isNull());
    EXPECT_EQ(MacroPropertyClass(q("X"), true, {}).group, q("System Macro Values"));
}

TEST(PropertyValueGroupClass, OffersTheEntriesOfItsElement) {
    const auto group = element("group", {{"name", "device"},
                                         {"short", "Device"},
                                         {"long", "Pick."},
                                         {"group", "Target Options"},
                                         {"default", "b"},
                                         {"order", "0x10"}});
    group->appendChild(element("groupEntry", {{"name", "a"}, {"family", "F"}}).release());
    group->appendChild(element("other", {{"name", "x"}}).release());
    group->appendChild(element("groupEntry", {{"name", "b"}}).release());
    const PropertyValueGroupClass property(*group, true);
    EXPECT_EQ(property.name, q("device"));
    EXPECT_EQ(property.kind, Kind::Enumeration);
    EXPECT_EQ(property.page, q("Code"));
    EXPECT_EQ(property.group, q("Target"));
    EXPECT_EQ(property.defaultValue, q("b"));
    EXPECT_EQ(joined(property.values()), "a|b");
    EXPECT_EQ(joined(property.enumerationGroups), "F|");
    EXPECT_EQ(property.order, 16);
    EXPECT_EQ(property.element(), group.get());
    EXPECT_TRUE(property.isLibraryGroup());
    for (const auto& [text, order] : {std::pair("010", 8), {"-3", -3}, {"12", 12}, {"x", 0}}) {
        const auto ordered = element("group", {{"page", "Debugging"}, {"order", text}});
        EXPECT_EQ(PropertyValueGroupClass(*ordered, false).order, order) << text;
        EXPECT_EQ(PropertyValueGroupClass(*ordered, false).page, q("Debug"));
    }
}

TEST(Lists, ColoursHaveNumbersAndCodecsHaveHeadings) {
    EXPECT_EQ(colours().size(), 25);
    EXPECT_EQ(colourNumber(q("Red")), 1);
    EXPECT_EQ(colourNumber(q("Dark Maroon")), 25);
    EXPECT_EQ(colourNumber(q("None")), 0);
    EXPECT_EQ(codecsWithHeadings().first(), q("Default~~Common"));
    EXPECT_EQ(codecs().size(), codecsWithHeadings().size() - 1);
    EXPECT_EQ(codecs().first(), q("UTF-8"));
    EXPECT_EQ(codecs().last(), q("HP-Roman8"));
}

}  // namespace
