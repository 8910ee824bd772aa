#include "xml/dom_preprocessor.h"

#include "support/hexception.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace {

using xml::XmlPP;

QString q(const char* text) {
    return QString::fromUtf8(text);
}

class Document : public XmlPP {
public:
    void warning(const QString& text) override { warnings += "\n" + text.toStdString(); }
    std::string warnings;
};

class DomPreprocessor : public testing::Test {
protected:
    DomPreprocessor() {
        project::macroEngine = &engine;
        engine.setGlobalMacro(q("G"), q("g"));
        engine.systemMacros.insert(q("S"), q("System Name"));
        write("inner.xml", "<inner v='$(G)'><if G='g'><a/></if></inner>");
        write("plain.txt", "a < b");
        write("latin.txt", "\xe4");
        write("bad.xml", "<a>\n</b>");
    }
    ~DomPreprocessor() override { project::macroEngine = nullptr; }

    void write(const char* name, const QByteArray& text) {
        QFile file(directory.filePath(q(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// What becomes of the text; behind it, what goes to the log and the warnings.
    std::string processed(const char* text, bool expand = false) {
        Document document;
        write("main.xml", text);
        document.load(directory.filePath(q("main.xml")));
        testing::internal::CaptureStdout();
        document.processConditionals(directory.filePath(q("main.xml")), expand);
        const std::string log = testing::internal::GetCapturedStdout();
        std::string result = document.document.toString(-1).toStdString();
        while (result.ends_with('\n')) result.pop_back();
        return result + (log.empty() ? "" : "\n" + log) + document.warnings;
    }

    QTemporaryDir directory;
    project::MacroEngine engine;
};

TEST_F(DomPreprocessor, RewritesByDirectives) {
    const std::pair<const char*, const char*> cases[] = {
        {"<r><if G='x,g'><a/><b/></if><c/></r>", "<r><a/><b/><c/></r>"},
        {"<r><ifnot G='g'><a/></ifnot><ifdef name='G'><b/></ifdef><ifndef name='N'><c/></ifndef></r>",
         "<r><b/><c/></r>"},
        {"<r>t<if G='g'><if G='g'><a/>u</if><b/></if>v</r>", "<r>t<a/>u<b/>v</r>"},
        {"<r><switch name='G'><case value='x'><a/></case><default><b/></default></switch></r>",
         "<r><b/></r>"},
        {"<r><if G='g'><define name='N' value='1'/></if><o><define_macro name='M' value='2'/></o>"
         "<ifdef name='N'><a/></ifdef><ifdef name='M'><b/></ifdef></r>",
         "<r><o/><a/><b/></r>"},
        {"<r><a v='$(G)' expand_attributes='v'/><a v='$(G)' expand_attributes='w'/></r>",
         "<r><a v=\"g\"/><a v=\"$(G)\"/></r>"},
        {"<r><expand_definition name='G'/>-<expand_definition name='S' lowercase='' underscore_spaces=''/>-"
         "<expand_definition name='N' default='D'/>-<expand_definition name='N'/></r>",
         "<r>g-system_name-D-</r>"},
        {"<r><foreach i='1,2'><a/></foreach></r>", "<r><foreach i=\"1,2\"><a/></foreach></r>"},
        {"<r><include filename='inner.xml'/></r>", "<r><inner v=\"$(G)\"><a/></inner></r>"},
        {"<r><if G='g'><include filename='$(N:inner).xml' expand_macros='' no_root=''/></if></r>",
         "<r><a/></r>"},
        {"<include filename='inner.xml' expand_macros='' macros='G=h'/>", "<inner v=\"h\"/>"},
        {"<r><include filename='plain.txt' type='text' tag='code' class='c' id=''/></r>",
         "<r><code class=\"c\">a &lt; b</code></r>"},
        {"<r><include filename='latin.txt' type='text' encoding='ISO-8859-1'/></r>",
         "<r><pre>\xc3\xa4</pre></r>"},
    };
    for (const auto& [text, result] : cases) EXPECT_EQ(processed(text), result) << text;
    EXPECT_EQ(processed("<r v='$(G)'><a w='$(G)$(N)'/></r>", true), "<r v=\"g\"><a w=\"g$(N)\"/></r>");
}

TEST_F(DomPreprocessor, TellsWhatIsWrong) {
    const std::string dir = directory.path().toStdString();
    const std::pair<const char*, std::string> cases[] = {
        {"<r><if/></r>", "<r><if/></r>\nXmlPP::processConditionals(): one condition required for <if[not]>"},
        {"<r><define name='N'/></r>",
         "<r/>\nwarning: XmlPP::processConditionals(): missing name and/or value in <define_macro>\n"},
        {"<r><include/></r>",
         "<r><include/></r>\nerror: XmlPP::processConditionals(): missing filename in <include>\n"},
        {"<r><include filename='none.xml'/></r>",
         "<r><include filename=\"none.xml\"/></r>\nerror: XmlPP::processConditionals could not open include "
         "file " +
             dir + "/none.xml\n"},
        {"<if G='g'/>", "<if G=\"g\"/>\nXmlPP::processConditionals(): the root <if> is not carried out"},
    };
    for (const auto& [text, result] : cases) EXPECT_EQ(processed(text), result) << text;
    const std::string bad = processed("<r><include filename='bad.xml'/></r>");
    EXPECT_NE(bad.find("error: XmlPP: error reading XML - "), std::string::npos) << bad;
    EXPECT_NE(bad.find(" on line 2 column "), std::string::npos) << bad;
    EXPECT_NE(bad.find(" of include file " + dir + "/bad.xml"), std::string::npos) << bad;
}

TEST_F(DomPreprocessor, WhatIsNoDocumentIsRefused) {
    Document document;
    EXPECT_THROW(document.load(directory.filePath(q("none.xml"))), support::HException);
    EXPECT_THROW(document.load(directory.path()), support::HException);
    try {
        document.load(directory.filePath(q("bad.xml")));
        ADD_FAILURE();
    } catch (const support::HException& error) {
        EXPECT_NE(error.message().find(" line: 2 column: "), std::string::npos) << error.message();
    }
    write("deep.xml", QByteArray("<a>").repeated(100000) + QByteArray("</a>").repeated(100000));
    EXPECT_THROW(document.load(directory.filePath(q("deep.xml"))), support::HException);
    write("self.xml", "<s><include filename='self.xml'/><include filename='self.xml'/></s>");
    EXPECT_NE(processed("<r><include filename='self.xml'/></r>").find("nested too deep"), std::string::npos);
}

}  // namespace
