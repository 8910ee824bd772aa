#include "expressions/memorymap/memory_map_cache.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace expressions;

class MemoryMaps : public testing::Test {
protected:
    MemoryMaps() { project::macroEngine = &macros; }
    ~MemoryMaps() override { project::macroEngine = nullptr; }

    QString write(const char* name, const std::string& text, int secondsFromNow = 0) {
        QFile file(directory.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
        file.flush();
        file.setFileTime(QDateTime::currentDateTime().addSecs(secondsFromNow), QFile::FileModificationTime);
        return file.fileName();
    }
    /// "name=START+SIZE " for each element that has a name, in hexadecimal and tree order.
    static std::string numbers(xml::XMLNode* node) {
        std::string text;
        for (; node; node = node->nextSibling()) {
            const MemoryMapElement* const element = asMemoryMapElement(node);
            if (!element) continue;
            const std::string name = element->attribute("name").toStdString();
            if (!name.empty())
                text += name + "=" + QString::number(element->start, 16).toStdString() + "+" +
                        QString::number(element->size, 16).toStdString() + " ";
            text += numbers(element->firstChild());
        }
        return text;
    }
    static std::string names(const QList<MemoryMapElement*>& elements) {
        std::string text;
        for (const MemoryMapElement* element : elements) text += element->attribute("name").toStdString();
        return text;
    }

    project::MacroEngine macros;
    QTemporaryDir directory;
    MemoryMapCache cache;
};

TEST_F(MemoryMaps, EvaluateNumbers) {
    struct Row {
        const char* elements;
        const char* numbers;
    };
    const Row rows[] = {
        {R"(<MemorySegment name="F" start="0x08000000" size="0x10000"/>)", "F=8000000+10000 "},
        {R"(<MemorySegment name="F" start="0x08000000"><ProgramSection name="t" start="+0x100"/></MemorySegment>)",
         "F=8000000+0 t=8000100+0 "},
        {R"(<RegisterGroup name="P" start="0x40000000"><Register name="A" start="+4" size="1024*4">
            <BitField name="b" start="+3" size="0x2"/><Enum name="e" start="1"/></Register></RegisterGroup>)",
         "P=40000000+0 A=40000004+400 b=3+2 e=1+0 "},
        // The base is that of the nearest range, and it ends with its range.
        {R"(<RegisterGroup start="0x10"><RegisterGroup name="i" start="+0x10"><Register name="A" start="+1"/>
            </RegisterGroup><Register name="B" start="+2"/></RegisterGroup><Register name="C" start="+3"/>)",
         "i=20+0 A=21+0 B=12+0 C=3+0 "},
        {R"(<MemorySegment name="m" start="2*(1+3)*1" size="1024*4"/>)", "m=8+1000 "},
        {R"(<MemorySegment name="w" start="0xFFFFFFFF"><ProgramSection name="s" start="+2"/></MemorySegment>)",
         "w=ffffffff+0 s=1+0 "},
        // Bad numbers are no errors.
        {R"(<MemorySegment name="x" start="nonsense" size="(1"/><Register name="r" start="" size=""/>)",
         "x=0+0 r=0+0 "},
        // These have no numbers.
        {R"(<Processor name="p" start="1" size="1"/><Vector name="v" start="1"/><Other name="o" start="1"/>)",
         "p=0+0 v=0+0 o=0+0 "},
    };
    for (const Row& row : rows) {
        const QString path = write("map.xml", std::string("<root>") + row.elements + "</root>");
        MemoryMap map;
        ASSERT_TRUE(map.load(path)) << row.elements;
        EXPECT_EQ(numbers(map.root()), row.numbers);
    }
}

TEST_F(MemoryMaps, ListSegmentsWithoutLookingIntoThem) {
    MemoryMap map;
    ASSERT_TRUE(map.load(write("map.xml", R"(<root><MemorySegment name="A" access="ReadOnly">
        <MemorySegment name="inner"/></MemorySegment><Processor><MemorySegment name="B" access="None"/></Processor>
        <MemorySegment name="C" access="other"/></root>)")));
    EXPECT_EQ(names(map.memorySegments(false)), "ABC");
    EXPECT_EQ(names(map.memorySegments(true)), "CBA");
    EXPECT_EQ(names(map.elements(MemoryMapElement::Kind::Processor)), "");
    const QList<MemoryMapElement*> segments = map.memorySegments(false);
    EXPECT_EQ(accessOf(*segments[0]), MemoryAccess::ReadOnly);
    EXPECT_EQ(accessOf(*segments[1]), MemoryAccess::None);
    EXPECT_EQ(accessOf(*segments[2]), MemoryAccess::ReadWrite);
}

TEST_F(MemoryMaps, ImportBesideThemselves) {
    const QString path = write("map.xml", R"(<!DOCTYPE Board_Memory_Definition_File><root>
        <Import filename="regs.xml"/><Import filename="missing.xml"/><Import filename="map.xml"/>
        <Processor><Import filename="regs.xml"/></Processor></root>)");
    write("regs.xml", R"(<!DOCTYPE R><regs><Register name="A" start="4"/></regs>)");
    MemoryMap* const map = cache.memoryMap(path, QString(), true);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->doctype, u"Board_Memory_Definition_File");
    EXPECT_EQ(map->path, path);
    std::string tags;
    for (xml::XMLNode* node = map->rootElement()->firstChild(); node; node = node->nextSibling())
        tags += asMemoryMapElement(node)->tagName().toStdString() +
                (asMemoryMapElement(node)->importElement ? "(import) " : " ");
    // A file that imports itself is read once more and no further.
    EXPECT_EQ(tags, "regs(import) Import root(import) Processor ");
    EXPECT_EQ(numbers(map->root()), "A=4+0 ");
}

TEST_F(MemoryMaps, ImportNoMoreThanTheyInclude) {
    const QString path = write("regs.xml", R"(<r><Register name="A" start="4"/></r>)");
    std::string imports;
    for (int i = 0; i <= xml::XMLPP2::maxIncludes; ++i) imports += "<Import filename='regs.xml'/>";
    MemoryMap map;
    ASSERT_TRUE(map.load(write("map.xml", "<root>" + imports + "</root>")));
    EXPECT_EQ(map.elements(MemoryMapElement::Kind::Register).size(), xml::XMLPP2::maxIncludes);
    // Each load counts afresh.
    ASSERT_TRUE(map.load(write("small.xml", "<root><Import filename='regs.xml'/></root>")));
    EXPECT_EQ(map.elements(MemoryMapElement::Kind::Register).size(), 1);
}

TEST_F(MemoryMaps, AreReadAgainWhenSomethingChanged) {
    write("regs.xml", R"(<regs><Register name="A" start="4"/></regs>)", -50);
    const QString path = write(
        "map.xml", R"(<root><Import filename="regs.xml"/><Register name="B" start="$(N)*1"/></root>)", -50);
    const QString macroText = QStringLiteral("N=8");
    MemoryMap* const map = cache.memoryMap(path, macroText, true);
    ASSERT_TRUE(map);
    EXPECT_EQ(numbers(map->root()), "A=4+0 B=8+0 ");
    EXPECT_EQ(cache.memoryMap(path, macroText, true), map);
    EXPECT_EQ(numbers(cache.memoryMap(path, QStringLiteral("N=9"), true)->root()), "A=4+0 B=9+0 ");

    write("regs.xml", R"(<regs><Register name="A" start="5"/></regs>)");
    EXPECT_EQ(numbers(cache.memoryMap(path, QStringLiteral("N=9"), true)->root()), "A=5+0 B=9+0 ");
    QFile::remove(path);
    EXPECT_EQ(cache.memoryMap(path, QStringLiteral("N=9"), true), nullptr);
}

TEST_F(MemoryMaps, LeaveDirectivesWhenTold) {
    const QString path = write("map.xml", R"(<root><if N="1"><MemorySegment name="A"/></if></root>)");
    EXPECT_EQ(cache.memoryMap(path, QString(), false)->memorySegments(false).size(), 1);
    EXPECT_EQ(cache.memoryMap(path, QStringLiteral("N=2"), true)->memorySegments(false).size(), 0);
}

TEST_F(MemoryMaps, RefuseWhatIsNoMap) {
    write("empty.xml", "");
    write("bad.xml", "<root><a></b></root>");
    for (const char* name : {"missing.xml", "empty.xml", "bad.xml", "."})
        EXPECT_EQ(cache.memoryMap(directory.filePath(QString::fromLatin1(name)), QString(), true), nullptr)
            << name;
    EXPECT_EQ(cache.memoryMap(QStringLiteral("/dev/zero"), QString(), true), nullptr);
}

TEST_F(MemoryMaps, NestAsDeepAsTheyLike) {
    std::string text;
    for (int i = 0; i < 200000; ++i) text += "<RegisterGroup start='+1'>";
    text += "<Register name='A' start='+1'/>";
    for (int i = 0; i < 200000; ++i) text += "</RegisterGroup>";
    MemoryMap* const map = cache.memoryMap(write("deep.xml", text), QString(), true);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->elements(MemoryMapElement::Kind::Register).first()->start, 200001U);
}

}  // namespace
