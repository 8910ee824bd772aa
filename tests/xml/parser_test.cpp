#include "xml/document.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace xml;

/// The tree on one line: <tag name=[value] ...>children</>, texts and comments in brackets of their own.
std::string shown(const XMLNode* node) {
    if (!node) return "null";
    const XMLElement* const element = asElement(node);
    if (!element) {
        const std::string text = static_cast<const XMLCharacterData*>(node)->data().toStdString();
        switch (node->type()) {
            case XMLNode::Type::Comment:
                return "{!" + text + "}";
            case XMLNode::Type::CDATASection:
                return "{[" + text + "}";
            default:
                return "{" + text + "}";
        }
    }
    std::string result = "<" + element->tagName().toStdString();
    for (const XMLAttribute& attribute : element->attributes())
        result += " " + attribute.name.toStdString() + "=[" + attribute.value.toStdString() + "]";
    result += ">";
    for (const XMLNode* child = node->firstChild(); child; child = child->nextSibling())
        result += shown(child);
    return result + "</>";
}

struct Case {
    const char* text;
    const char* tree;
    const char* error = "";
    std::uint32_t line = 0;
};

void check(const std::vector<Case>& cases, bool keepText) {
    for (const Case& c : cases) {
        XMLDocument document(keepText);
        EXPECT_EQ(document.parseText(c.text), *c.error == '\0') << c.text;
        EXPECT_EQ(shown(document.root()), c.tree) << c.text;
        EXPECT_EQ(document.errorText().toStdString(), c.error) << c.text;
        if (*c.error) {
            EXPECT_EQ(document.errorLine(), c.line) << c.text;
        }
    }
}

TEST(Parser, ElementsAndAttributes) {
    check(
        {
            {"", "null"},
            {"  text", "null"},
            {"<a/>", "<a></>"},
            {" \n<a ></a>", "<a></>"},
            {"<a b='x\"y'/>", "<a b=[x\"y]></>"},
            {"<a b=\"\"/>", "<a b=[]></>"},
            {"<a b/>", "<a></>"},
            {"<a b=c d=\"e\"/>", "<a d=[e]></>"},
            {"<a b = \"1\"  c='2' b='3'/>", "<a b=[3] c=[2]></>"},
            {"<a b=\"<x>\"/>", "<a b=[<x>]></>"},
            {"<a b=\"&#xa;&#10;&#xE9;&#x3C;\"/>", "<a b=[\n\n\xe9<]></>"},
            {"<a b=\"&amp;&apos;&gt;&lt;&quot;\"/>", "<a b=[&'><\"]></>"},
            {"<a b=\"&nbsp; & &# &#x; &#12 &amp\"/>", "<a b=[&nbsp; & &# ]></>"},
            {"<a><b/><c><d/></c></a>", "<a><b></><c><d></></></>"},
            {"<a>x</a>", "<a></>"},
            {"<ab></a>", "<ab></>"},
            {"<a><b></></a>", "<a><b></></>"},
            {"<a></ >", "<a></>"},
            {"<a/><b/>", "<b></>"},
            {"<a><b>", "null"},
            {"<a/><b>", "<a></>"},
            {"<a b=\"x", "null"},
            {"</a><b/>", "<b></>"},
            {"<>x</>", "<></>"},
        },
        false);
}

TEST(Parser, ANulEndsTheText) {
    XMLDocument document;
    EXPECT_TRUE(document.parseText(QByteArray("<a/>\0<b/>", 9)));
    EXPECT_EQ(shown(document.root()), "<a></>");
    EXPECT_TRUE(document.parseText("<a b='x&#0;y'/>"));
    EXPECT_EQ(shown(document.root()), "<a b=[x]></>");
}

TEST(Parser, ErrorsStopWithTheirLine) {
    check(
        {
            {"<a\n .b/>", "null", "bad tagName", 1},
            {"<a.b/>", "null", "bad tagName", 0},
            {"<a/>\n\n<b 1='x'/>", "<a></>", "bad tagName", 2},
            {"<a>\n</b>", "null", "tagName mismatch", 1},
            {"<a></ab>", "null", "tagName mismatch", 0},
        },
        false);
}

TEST(Parser, HeaderAndMarkupDeclarations) {
    struct HeaderCase {
        const char *text, *tree, *doctype, *version, *encoding;
    };
    const HeaderCase cases[] = {
        {"<?xml version=\"1.0\" encoding='UTF-8' x='y'?>\n<!DOCTYPE Some_File>\n<a/>", "<a></>", "Some_File",
         "1.0", "UTF-8"},
        {"<?xml version=1.0?><a/>", "null", "", "", ""},
        {"<?php x?><a/>", "<a></>", "", "", ""},
        {"<?xml !! version='2'?><a/>", "<a></>", "", "2", ""},
        {"<?xml", "null", "", "", ""},
        {"<!DOCTYPE D SYSTEM \"x\"><a/>", "<a></>", "", "", ""},
        {"<!ENTITY x><a/>", "<a></>", "", "", ""},
        {"<!--->--><a/>", "<a></>", "", "", ""},
        {"<!-- <b/> --><a/>", "<a></>", "", "", ""},
        {"<!-- never ends <a/>", "null", "", "", ""},
        {"<!-x><a/>", "<a></>", "", "", ""},
    };
    for (const HeaderCase& c : cases) {
        XMLDocument document;
        EXPECT_TRUE(document.parseText(c.text)) << c.text;
        EXPECT_EQ(shown(document.root()), c.tree) << c.text;
        EXPECT_EQ(document.doctype.toStdString(), c.doctype) << c.text;
        EXPECT_EQ(document.version.toStdString(), c.version) << c.text;
        EXPECT_EQ(document.encoding.toStdString(), c.encoding) << c.text;
    }
}

TEST(Parser, TextIsKeptOnDemandAndSectionsAlways) {
    const char* const text = "<a> x\r\n<!--c-->&lt;<b/><![CDATA[<&amp;]]></a>";
    check({{text, "<a><b></>{[<&amp;}</>"}}, false);
    XMLDocument kept(true);
    kept.parseText(text);
    EXPECT_EQ(shown(kept.root()), "<a>{ x\n}{!c}{<}<b></>{}{[<&amp;}{}</>");
    check(
        {{"<a><![CDATA[<&amp;]]>z</a>", "<a>{[<&amp;}</>"}, {"<a><![CDATA[never", "null"}, {"<!>x", "null"}},
        false);
}

TEST(Parser, LinesOfNodes) {
    XMLDocument document;
    document.parseText("\n\n<a\n x='1\n2'>\n<b/>  <c\n/></a>");
    ASSERT_NE(document.root(), nullptr);
    EXPECT_EQ(document.root()->line(), 2U);
    EXPECT_EQ(document.root()->firstChild()->line(), 5U);
    EXPECT_EQ(document.root()->lastChild()->line(), 5U);
}

TEST(Parser, FilesAndByteOrderMarks) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("x.xml"));
    QXMLDocument document;
    EXPECT_FALSE(document.parse(path));
    EXPECT_EQ(document.errorText(), "couldn't read " + path.toUtf8());
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("\xef\xbb\xbf<?xml version='1.0'?><a/>");
    file.close();
    EXPECT_TRUE(document.parse(path));
    EXPECT_EQ(shown(document.root()), "<a></>");
    EXPECT_EQ(document.version, "1.0");
    EXPECT_FALSE(document.parse(directory.path())) << "a directory is no file";
    EXPECT_EQ(shown(document.root()), "<a></>") << "the root stays";
}

TEST(Parser, WhatTheWriterWritesReadsBackToTheSameBytes) {
    const auto save = [](XMLDocument& document) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        document.save(buffer, 2, 75);
        return buffer.data();
    };
    QByteArray everyByte;
    for (int byte = 1; byte < 256; ++byte) everyByte += static_cast<char>(byte);
    XMLDocument document;
    document.doctype = "D";
    document.setRoot(std::make_unique<XMLElement>("a"));
    asElement(document.root())->setAttribute("all", everyByte);
    asElement(document.root())->setAttribute("none", "");
    document.root()->appendChild(new XMLElement("b"));
    const QByteArray first = save(document);
    XMLDocument again;
    ASSERT_TRUE(again.parseText(first));
    EXPECT_EQ(asElement(again.root())->attribute("all"), everyByte);
    EXPECT_EQ(save(again), first);
}

TEST(Parser, AMillionLevelsAndAHundredThousandAttributes) {
    const int levels = 1000000;
    QByteArray text = QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
    XMLDocument document;
    EXPECT_TRUE(document.parseText(text));
    EXPECT_NE(document.root(), nullptr);
    EXPECT_TRUE(document.parseText(QByteArray("<a>").repeated(levels)));
    EXPECT_EQ(document.root(), nullptr);
    text = "<a";
    for (int i = 0; i < 100000; ++i) text += " k" + QByteArray::number(i) + "='1'";
    EXPECT_TRUE(document.parseText(text + "/>"));
    EXPECT_EQ(asElement(document.root())->attributes().size(), 100000U);
    EXPECT_TRUE(document.parseText("<a b='" + QByteArray("&#").repeated(levels) + "'/>"));
}

}  // namespace
