#include "xml/document.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace xml;

std::string tags(const XMLNode& node) {
    std::string result;
    for (const XMLNode* child = node.firstChild(); child; child = child->nextSibling()) {
        result += asElement(child)->tagName().toStdString();
        if (!child->nextSibling()) {
            EXPECT_EQ(child, node.lastChild());
        }
    }
    return result;
}

XMLElement* named(const char* tag) {
    return new XMLElement(tag);
}

TEST(Tree, ChildListOperations) {
    XMLElement root("r");
    EXPECT_EQ(root.prependChild(named("b")), nullptr);
    XMLNode* const b = root.firstChild();
    root.appendChild(named("d"));
    EXPECT_EQ(root.prependChild(named("a")), b);
    EXPECT_EQ(tags(root), "abd");

    XMLNode* const chain = named("x");
    const std::unique_ptr<XMLElement> carrier(named("carrier"));
    carrier->appendChild(chain);
    carrier->appendChild(named("y"));
    carrier->removeChild(nullptr);
    XMLNode* const y = chain->nextSibling();
    carrier->removeChild(chain);
    carrier->removeChild(y);
    EXPECT_EQ(chain->nextSibling(), y) << "a removed node keeps its link";
    root.insertChildrenAfter(b, chain);
    EXPECT_EQ(tags(root), "abxyd");
    EXPECT_EQ(y->parent(), &root);

    XMLElement* const z = named("z");
    const std::unique_ptr<XMLNode> last(root.lastChild());
    root.replaceChild(last.get(), z);
    EXPECT_EQ(tags(root), "abxyz");
    root.removeChild(last.get());
    EXPECT_EQ(tags(root), "abxyz") << "no child, no change";

    const std::unique_ptr<XMLNode> first(root.firstChild());
    root.removeChild(first.get());
    EXPECT_EQ(tags(root), "bxyz");
    XMLElement* const end = named("e");
    root.insertChildrenAfter(root.lastChild(), end);
    EXPECT_EQ(tags(root), "bxyze");

    XMLElement empty("empty");
    empty.insertChildrenAfter(nullptr, named("only"));
    EXPECT_EQ(tags(empty), "only");
}

TEST(Tree, AttributesKeepTheirPlacesHoweverMany) {
    for (const int count : {3, 100}) {
        XMLElement element("e");
        for (int i = 0; i < count; ++i)
            element.setAttribute("k" + QByteArray::number(i), QByteArray::number(i));
        element.setAttribute("k1", "new");
        element.setAttribute("k2", QByteArray());
        element.removeAttribute("k0");
        element.removeAttribute("nosuch");
        ASSERT_EQ(element.attributes().size(), static_cast<std::size_t>(count - 1));
        EXPECT_EQ(element.attributes()[0].name, "k1");
        EXPECT_EQ(element.attribute("k1"), "new");
        EXPECT_TRUE(element.hasAttribute("k2"));
        EXPECT_TRUE(element.attribute("k2").isNull());
        EXPECT_FALSE(element.hasAttribute("k0"));
        EXPECT_TRUE(element.attribute("k0").isNull());
    }
}

struct CountingDocument : XMLDocument {
    int made = 0;
    XMLElement* createElement(QByteArray name) override {
        ++made;
        return XMLDocument::createElement(std::move(name));
    }
};

TEST(Tree, CloneIsDeepAndMadeByTheDocument) {
    XMLDocument source;
    source.setRoot(std::make_unique<XMLElement>("r"));
    auto* const child = named("c");
    child->setAttribute("a", "1");
    child->setAttribute("n", QByteArray());
    source.root()->appendChild(new XMLComment("k"));
    source.root()->appendChild(child);
    child->appendChild(new XMLCDATASection("s"));
    source.root()->appendChild(named("t"));
    source.root()->lastChild()->appendChild(new XMLData("d"));

    CountingDocument copy;
    copy.setRoot(std::unique_ptr<XMLNode>(copy.cloneNode(source.root())));
    EXPECT_EQ(copy.made, 3);
    QBuffer first, second;
    first.open(QIODevice::WriteOnly);
    second.open(QIODevice::WriteOnly);
    source.save(first, 2, 75);
    copy.save(second, 2, 75);
    EXPECT_EQ(first.data().toStdString(), second.data().toStdString());
}

TEST(Tree, AMillionLevelsAreCopiedSavedAndDestroyed) {
    XMLDocument document;
    document.setRoot(std::make_unique<XMLElement>("e"));
    XMLNode* deepest = document.root();
    for (int i = 0; i < 1000000; ++i) {
        deepest->appendChild(named("e"));
        deepest = deepest->firstChild();
    }
    const std::unique_ptr<XMLNode> copy(document.cloneNode(document.root()));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    document.save(buffer, 0, 75);
    EXPECT_EQ(buffer.size(), 1000000 * 7 + 4);
}

TEST(Tree, ErrorTextIsCutAtItsBuffer) {
    XMLDocument document;
    document.setError(QByteArray(5000, 'x'), 7);
    EXPECT_EQ(document.errorText().size(), 1023);
    EXPECT_EQ(document.errorLine(), 7U);
}

}  // namespace
