#include "xml/writer.h"

#include "xml/document.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace xml;

std::string saved(XMLDocument& document, int indent = 2, int wrapColumn = 75) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(document.save(buffer, indent, wrapColumn));
    return buffer.data().toStdString();
}

std::unique_ptr<XMLElement> element(QByteArray tag, const std::vector<XMLAttribute>& attributes = {}) {
    auto result = std::make_unique<XMLElement>(std::move(tag));
    for (const XMLAttribute& attribute : attributes) result->setAttribute(attribute.name, attribute.value);
    return result;
}

std::string saved(std::unique_ptr<XMLNode> root, int indent = 2, int wrapColumn = 75) {
    XMLDocument document;
    document.setRoot(std::move(root));
    return saved(document, indent, wrapColumn);
}

TEST(Writer, HeaderForms) {
    struct Case {
        QByteArray version, encoding, doctype;
        std::string text;
    };
    const std::vector<Case> cases = {
        {{}, {}, {}, "<r/>\n"},
        {"1.0", "UTF-8", {}, "<?xml  version=\"1.0\" encoding=\"UTF-8\" ?>\n<r/>\n"},
        {"1.0", {}, "D", "<?xml  version=\"1.0\" ?>\n<!DOCTYPE D>\n<r/>\n"},
        {{}, "x", {}, "<?xml  encoding=\"x\" ?>\n<r/>\n"},
        {{}, {}, "Some_File", "<!DOCTYPE Some_File>\n<r/>\n"},
    };
    for (const Case& c : cases) {
        XMLDocument document;
        document.version = c.version;
        document.encoding = c.encoding;
        document.doctype = c.doctype;
        document.setRoot(element("r"));
        EXPECT_EQ(saved(document), c.text);
    }
}

TEST(Writer, EscapesEverythingButPrintableAscii) {
    const QByteArray value("a\"&<>'\n\t\x01\x7f\xc3\xa9~ ");
    EXPECT_EQ(saved(element("r", {{"v", value}})),
              "<r v=\"a&quot;&amp;&lt;&gt;'&#xa;&#x9;&#x1;&#x7f;&#xc3;&#xa9;~ \" />\n");
}

TEST(Writer, FoldsBehindTheWrapColumnOnly) {
    // The count of <r a="..." b="..."> is 1 + 1 + (4 + 1 + length of a) + (4 + 1 + length of b).
    const QByteArray fits(75 - 2 - 5 - 5 - 1, 'x');
    EXPECT_EQ(saved(element("r", {{"a", fits}, {"b", "1"}})),
              "<r a=\"" + fits.toStdString() + "\" b=\"1\" />\n");
    const QByteArray over = fits + "x";
    EXPECT_EQ(saved(element("r", {{"a", over}, {"b", "1"}})),
              "<r\n  a=\"" + over.toStdString() + "\"\n  b=\"1\" />\n");
    EXPECT_EQ(saved(element("r", {{"a", over + over}})), "<r a=\"" + (over + over).toStdString() + "\" />\n");
    EXPECT_EQ(saved(element("r", {{"a", over}, {"b", "1"}}), 2, 0),
              "<r a=\"" + over.toStdString() + "\" b=\"1\" />\n");
}

TEST(Writer, CountsEscapedBytesOnceWhenFolding) {
    const QByteArray quotes(75 - 2 - 5 - 5 - 1, '"');
    const std::string text = saved(element("r", {{"a", quotes}, {"b", "1"}}));
    EXPECT_EQ(text.substr(0, 12), "<r a=\"&quot;");
    EXPECT_EQ(text.substr(text.size() - 11), "\" b=\"1\" />\n");
}

TEST(Writer, NullValueStaysOnTheLineOfAFoldedElement) {
    const QByteArray large(80, 'x');
    EXPECT_EQ(saved(element("r", {{"a", large}, {"n", {}}, {"b", ""}})),
              "<r\n  a=\"" + large.toStdString() + "\" n=\"\"\n  b=\"\" />\n");
}

TEST(Writer, NestsTextCommentsAndSections) {
    const auto tree = [] {
        auto root = element("r");
        root->appendChild(element("text", {{"k", "v"}}).release());
        root->firstChild()->appendChild(new XMLData("1 < 2"));
        root->firstChild()->appendChild(element("unseen").release());
        root->appendChild(new XMLComment(" a & b "));
        root->appendChild(element("deep").release());
        root->lastChild()->appendChild(new XMLCDATASection("<raw>"));
        return root;
    };
    EXPECT_EQ(saved(tree()),
              "<r>\n"
              "  <text k=\"v\">1 &lt; 2</text>\n"
              "  <!-- a & b -->  <deep>\n"
              "    <![CDATA[<raw>]]>  </deep>\n"
              "</r>\n");
    EXPECT_EQ(saved(tree(), 0),
              "<r><text k=\"v\">1 &lt; 2</text><!-- a & b --><deep><![CDATA[<raw>]]></deep></r>");
}

TEST(Writer, WritesMoreThanItsBufferInOrder) {
    auto root = element("r");
    std::string expected = "<r>\n";
    for (int i = 0; i < 20; ++i) {
        const QByteArray value(i * 10000, static_cast<char>('a' + i));
        root->appendChild(element("e", {{"v", value}}).release());
        expected += "  <e v=\"" + value.toStdString() + "\" />\n";
    }
    EXPECT_EQ(saved(std::move(root)), expected + "</r>\n");
}

}  // namespace
