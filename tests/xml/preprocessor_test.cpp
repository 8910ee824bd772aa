#include "xml/preprocessor.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace xml;
using project::MacroTable;

QString q(const char* text) {
    return QString::fromUtf8(text);
}

class Document : public XMLPP2 {
public:
    void warning(const QString& text) override { warnings += text.toStdString() + "\n"; }
    std::string warnings;
};

class Preprocessor : public testing::Test {
protected:
    Preprocessor() { project::macroEngine = &macros; }
    ~Preprocessor() override { project::macroEngine = nullptr; }

    void write(const char* name, const QByteArray& text) {
        QFile file(directory.filePath(q(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// What is left of the text, without indentation and line ends; warnings stand behind it.
    std::string processed(const char* text, const MacroTable& table = {}, bool expand = false) {
        Document document;
        EXPECT_TRUE(document.parseText(text)) << text;
        document.processConditionals(directory.filePath(q("main.xml")), table, expand);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        document.save(buffer, 0, 0);
        std::string result = buffer.data().toStdString();
        if (!document.warnings.empty()) result += "\n" + document.warnings;
        return result;
    }

    QTemporaryDir directory;
    project::MacroEngine macros;
};

constexpr const char* prefix = "XmlPP::processConditionals(): ";

TEST_F(Preprocessor, Conditions) {
    const std::pair<const char*, const char*> cases[] = {
        {"<r><if A='x,y'><a/></if></r>", "<r><a/></r>"},
        {"<r><if A='x'><a/></if></r>", "<r/>"},
        {"<r><if A=''><a/></if></r>", "<r/>"},
        {"<r><ifnot A='x'><a/></ifnot><ifnot A='y'><b/></ifnot></r>", "<r><a/></r>"},
        {"<r><if N='1'><a/></if><ifdef name='N'><b/></ifdef></r>", "<r><b/></r>"},
        {"<r><ifdef name='A'><a/></ifdef><ifndef name='A'><b/></ifndef></r>", "<r><a/></r>"},
        {"<r><ifdef name='N'><a/></ifdef><ifndef name='N'><b/></ifndef></r>", "<r><b/></r>"},
        {"<r><a/><if A='y'><b/><if A='y'><c/></if><d/></if><e/></r>", "<r><a/><b/><c/><d/><e/></r>"},
        {"<r><ifex expression='2&gt;1'><a/></ifex></r>", "<r><a/></r>"},
        {"<r><ifex expression='1'><a/></ifex><ifex expression='1 &amp;&amp; 1'><a/></ifex></r>", "<r/>"},
        {"<r><ifex expression='$(N:3)==3'><a/></ifex><ifex expression='(('><a/></ifex></r>", "<r><a/></r>"},
        {"<r><ifex><a/></ifex></r>", "<r><ifex><a/></ifex></r>"},
        {"<r><switch name='A'><case value='x'><a/></case><case value='z,y'><b/></case><default><c/></default>"
         "</switch></r>",
         "<r><b/></r>"},
        {"<r><switch name='N'><case "
         "value='x'><a/></case><default><c/></default><default><d/></default></switch></r>",
         "<r><d/></r>"},
        {"<r><switch name='N'><case value='x'><a/></case></switch><e/></r>", "<r><e/></r>"},
        {"<r><o><if A='y'><a/></if></o></r>", "<r><o><a/></o></r>"},
        {"<r><![CDATA[t]]><if A='y'><a/></if></r>", "<r><![CDATA[t]]><a/></r>"},
    };
    for (const auto& [text, result] : cases) EXPECT_EQ(processed(text, {{q("A"), q("y")}}), result) << text;
}

TEST_F(Preprocessor, DefinitionsReachLaterSiblings) {
    const std::pair<const char*, const char*> cases[] = {
        {"<r><define name='N' value='1'/><if N='1'><a/></if></r>", "<r><a/></r>"},
        {"<r><o><define name='N' value='1'/></o><if N='1'><a/></if></r>", "<r><o/></r>"},
        {"<r><ifndef name='N'><define name='N' value='1'/></ifndef><if N='1'><a/></if></r>", "<r/>"},
        {"<r><define name='N' value='1'/><o><if N='1'><a/></if></o></r>", "<r><o><a/></o></r>"},
        {"<r><define name='N' expression='1+2' expand_macros='Yes'/><a v='$(N)'/></r>",
         "<r><a v=\"3\" /></r>"},
        {"<r><define name='N' hex_expression='10+$(M:5)' expand_macros='Yes'/><a v='$(N)'/></r>",
         "<r><a v=\"0xF\" /></r>"},
        {"<r><define name='N' expression='-1' expand_macros='Yes'/><a v='$(N)'/></r>",
         "<r><a v=\"4294967295\" /></r>"},
        {"<r><define name='N' expression='1==1'/><ifdef name='N'><a/></ifdef></r>", "<r/>"},
        {"<r><define name='N' value='1' expand_macros='Yes'/><a v='$(N)'/><define name='N' value='2' "
         "expand_macros='No'/><b v='$(N)'/></r>",
         "<r><a v=\"1\" /><b v=\"$(N)\" /></r>"},
    };
    for (const auto& [text, result] : cases) EXPECT_EQ(processed(text), result) << text;
}

TEST_F(Preprocessor, AttributesAreExpandedOnDemand) {
    const MacroTable table = {{q("A"), q("a")}};
    EXPECT_EQ(processed("<r v='$(A)$(B:)'><e v='$(A)' w='$(B)'/></r>", table, true),
              "<r v=\"a\"><e v=\"a\" w=\"$(B)\" /></r>");
    EXPECT_EQ(processed("<r v='$(A)'/>", table, false), "<r v=\"$(A)\" />");
}

TEST_F(Preprocessor, Loops) {
    const std::pair<const char*, const char*> cases[] = {
        {"<r><for index='i' start='0' end='3' incr='1'><a n='$(i)$(i_alpha)'/></for><z/></r>",
         "<r><a n=\"0A\" /><a n=\"1B\" /><a n=\"2C\" /><z/></r>"},
        {"<r><for index='i' start='10' end='21' incr='10' add='0x100' mul='4'>"
         "<a n='$(i_hex) $(i_ap) $(i_ap_hex)'><b m='$(i)'/></a></for></r>",
         "<r><a n=\"0xA 296 0x128\"><b m=\"10\" /></a><a n=\"0x14 336 0x150\"><b m=\"20\" /></a></r>"},
        {"<r><for index='i' start='1' end='2' incr='1' sub='2'><a n='$(i_ap)'/></for></r>",
         "<r><a n=\"4294967295\" /></r>"},
        {"<r><for index='i' start='3' end='3' incr='1'><a/></for></r>", "<r/>"},
        {"<r><for index='i' start='0' end='2' incr='1'><if X='$(i)'><a n='$(i)'/></if></for></r>",
         "<r><a n=\"1\" /></r>"},
        {"<r><for index='i' start='0' end='2' incr='1'><for index='j' start='0' end='2' incr='1'>"
         "<a n='$(i)$(j)'/></for></for></r>",
         "<r><a n=\"00\" /><a n=\"01\" /><a n=\"10\" /><a n=\"11\" /></r>"},
        {"<r><foreach a='1,2' b='x,y'><e v='$(a)$(b)'/></foreach></r>",
         "<r><e v=\"1x\" /><e v=\"1y\" /><e v=\"2x\" /><e v=\"2y\" /></r>"},
        {"<r><foreach split_by=':' a='1:2,3::'><e v='$(a)'/></foreach></r>",
         "<r><e v=\"1\" /><e v=\"2,3\" /><e v=\"\" /><e v=\"\" /></r>"},
        {"<r><foreach exclude_entries='b' exclude_wildcard='c?' a='a,b,c1,c,dc2'><e v='$(a)'/></foreach></r>",
         "<r><e v=\"a\" /><e v=\"c\" /></r>"},
        {"<r><foreach a='1' exclude_entries='x' b='x'><e/></foreach></r>", "<r/>"},
        {"<r><foreach a='$(X),2' expand_macros='' b='$(X),3'><e v='$(a)$(b)'/></foreach></r>",
         "<r><e v=\"$(X)1\" /><e v=\"$(X)3\" /><e v=\"21\" /><e v=\"23\" /></r>"},
    };
    for (const auto& [text, result] : cases) EXPECT_EQ(processed(text, {{q("X"), q("1")}}), result) << text;
}

TEST_F(Preprocessor, StoredSubtreesArePut) {
    EXPECT_EQ(processed("<r><xmldef name='d'><a v='$(M)'/></xmldef><xmlput name='d'/><o/>"
                        "<xmlput name='d' expand_macros='' macros='M=1\\;2'/></r>"),
              "<r><a v=\"$(M)\" /><o/><a v=\"1;2\" /></r>");
    EXPECT_EQ(processed("<r><xmldef><a/></xmldef><xmlput/></r>"), "<r><xmldef><a/></xmldef><xmlput/></r>");
}

TEST_F(Preprocessor, Includes) {
    write("one.xml", "<one v='$(M)' w='1'><if A='1'><a/></if></one>");
    write("two.xml", "<envelope><b/><include filename='one.xml'/></envelope>");
    write("empty.xml", "");
    write("bad.xml", "<a>\n</b>");
    write("late.xml", "<a/>\n<b></c>");
    const std::string dir = directory.path().toStdString();
    struct Case {
        const char* text;
        std::string result;
    };
    const Case cases[] = {
        {"<r><include filename='one.xml'/><z/></r>", "<r><one v=\"$(M)\" w=\"1\"><a/></one><z/></r>"},
        {"<r><include filename='one.xml' no_root=''/></r>", "<r><a/></r>"},
        {"<r><include filename='two.xml'/></r>", "<r><b/><one v=\"$(M)\" w=\"1\"><a/></one></r>"},
        {"<r><include filename='one.xml' expand_macros='' macros='M=2;A=0'/></r>",
         "<r><one v=\"2\" w=\"1\" /></r>"},
        {"<r><include filename='one.xml' macros='M=2'/></r>", "<r><one v=\"$(M)\" w=\"1\"><a/></one></r>"},
        {"<r><include filename='one.xml' w='9' inherit_attributes='w;x'/></r>",
         "<r><one v=\"$(M)\" w=\"9\" x=\"\"><a/></one></r>"},
        {"<include filename='one.xml'/>", "<one v=\"$(M)\" w=\"1\"><a/></one>"},
        {"<r><include filename='$(D)/one.xml' no_root=''/></r>", "<r><a/></r>"},
        {"<r><include><a/></include></r>",
         std::string("<r><include><a/></include></r>\n") + prefix + "missing filename in <include>\n"},
        {"<r><include filename='nosuch.xml'/></r>",
         "<r><include filename=\"nosuch.xml\" /></r>\n" + std::string(prefix) + "error \"couldn't read " +
             dir + "/nosuch.xml\" in include file " + dir + "/nosuch.xml line:0\n"},
        {"<r><include filename='late.xml'/></r>",
         "<r><include filename=\"late.xml\" /></r>\n" + std::string(prefix) +
             "error \"tagName mismatch\" in include file " + dir + "/late.xml line:1\n"},
        {"<r><include filename='bad.xml'/></r>", "<r><include filename=\"bad.xml\" /></r>\n" +
                                                     std::string(prefix) + "error: include file '" + dir +
                                                     "/bad.xml' is empty\n"},
        {"<r><include filename='empty.xml'/></r>", "<r><include filename=\"empty.xml\" /></r>\n" +
                                                       std::string(prefix) + "error: include file '" + dir +
                                                       "/empty.xml' is empty\n"},
    };
    macros.setGlobalMacro(q("D"), directory.path());
    for (const Case& c : cases) EXPECT_EQ(processed(c.text, {{q("A"), q("1")}}), c.result) << c.text;
}

TEST_F(Preprocessor, WrongDirectivesWarnAndTheWalkGoesOn) {
    const std::pair<const char*, const char*> cases[] = {
        {"<r><if/><a/></r>", "<r><if/><a/></r>\none condition required for <if[not]>\n"},
        {"<r><ifnot a='' b=''/></r>",
         "<r><ifnot a=\"\" b=\"\" /></r>\none condition required for <if[not]>\n"},
        {"<r><define value='1'/></r>", "<r/>\nmissing name in <define>\n"},
        {"<r><define name='N'/></r>", "<r/>\nmissing value or expression in <define>\n"},
        {"<r><for index='i' start='0' end='1'><a/></for></r>",
         "<r/>\n<for index=\"i\" start=\"0\" end=\"32\" incr=\"1\">\n"},
        {"<r><for index='i' start='0' end='1' incr='0'><a/></for></r>",
         "<r/>\n<for> with an increment of 0\n"},
        {"<r><xmlput name='d'/></r>", "<r><xmlput name=\"d\" /></r>\nxmlput cannot fine xmldef named d\n"},
        {"<r><foreach exclude_entries='z' a='1'><e/></foreach></r>",
         "<r><e/></r>\nexclude_entries cannot find entry named z\n"},
        {"<if A='1'><a/></if>", "<if A=\"1\"><a/></if>\nthe root <if> is not carried out\n"},
    };
    for (const auto& [text, result] : cases) {
        std::string expected = result;
        if (const std::size_t line = expected.find('\n'); line != std::string::npos)
            expected.insert(line + 1, prefix);
        EXPECT_EQ(processed(text), expected) << text;
    }
}

TEST_F(Preprocessor, WhatAHostileDocumentAsksForIsBounded) {
    write("self.xml", "<s><include filename='self.xml'/><include filename='self.xml'/></s>");
    EXPECT_NE(processed("<r><include filename='self.xml'/></r>").find("is nested too deep"),
              std::string::npos);
    EXPECT_NE(
        processed("<r><for index='i' start='0' end='4000000000' incr='1'><a/></for></r>").find("copies"),
        std::string::npos);
    EXPECT_EQ(processed("<r><for index='i' start='0' end='4000000000' incr='1'><![CDATA[]]></for></r>"),
              "<r/>");
    EXPECT_NE(
        processed("<r><xmldef name='d'><xmlput name='d'/><xmlput name='d'/></xmldef><xmlput name='d'/></r>")
            .find("copies"),
        std::string::npos);
    std::string deep = "<r>", end;
    for (int i = 0; i < 50000; ++i) deep += "<ifndef name='N'><a/><o>", end += "</o></ifndef>";
    EXPECT_GT(processed((deep + end + "</r>").c_str()).size(), 50000U * 10);
}

}  // namespace
