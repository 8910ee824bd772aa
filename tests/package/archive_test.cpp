#include "package/archive_fixture.h"

#include <QDir>

#include <fcntl.h>

namespace {

using namespace package_test;

TEST_F(ArchiveTest, ReadsBothVersionsAndThePlainForm) {
    const std::uint32_t start1 = 8 + 2 * 1040;
    const std::string one =
        stream1(2, entry1("a.txt", start1, 3, 0, 7) + entry1("d/b", start1 + 3, 2, 1, 0xFFFFFFFF) + "abcde");
    const std::uint32_t start2 = 20 + 2 * 18 + 5 + 3;
    const std::string two = stream2(
        2, entry2("a.txt", start2, 3, 0107755, 7) + entry2("d/b", start2 + 3, 2, 0, 0xFFFFFFFF) + "abcde");
    const std::string rows1 = "a.txt 666 3 7 abc\nd/b 444 2 4294967295 de\n";
    const std::string rows2 = "a.txt 100755 3 7 abc\nd/b 0 2 4294967295 de\n";
    const struct {
        const char* what;
        std::string bytes, expected;
        int version;
    } cases[] = {
        {"version 1", file1(one), rows1, 1},
        {"plain", one, rows1, 1},
        {"version 2", file2(two), rows2, 2},
        {"bytes behind the stream", file1(one) + std::string(20000, 'x'), rows1, 1},
        {"no files, 1", file1(stream1(0, "")), "", 1},
        {"bzip2", fileBzip2(two) + std::string(20000, 'x'), rows2, 2},
        {"no files, 2", file2(stream2(0, "")), "", 2},
        {"a gap", stream1(1, entry1("a", 1050, 2) + "..ab"), "a 666 2 0 ab\n", 1},
        {"high half of the flag", stream1(1, entry1("a", 1048, 1, 0x10000) + "a"), "a 666 1 0 a\n", 1},
        {"UTF-8", stream1(1, entry1("\xC3\xA4", 1048, 0)), "\xC3\xA4 666 0 0 \n", 1},
        {"1023 bytes", stream1(1, entry1(std::string(1023, 'n'), 1048, 0)),
         std::string(1023, 'n') + " 666 0 0 \n", 1},
    };
    for (const auto& [what, bytes, expected, version] : cases) {
        const QString place = put("archive", bytes);
        PackageArchive archive(place);
        EXPECT_EQ(rows(archive), expected) << what;
        EXPECT_EQ(archive.version(), version) << what;
        EXPECT_TRUE(PackageArchive::isArchive(place)) << what;

        // The same, some way into a larger file.
        archive.load(put("larger", std::string(777, '#') + bytes), 777);
        EXPECT_EQ(rows(archive), expected) << what;
    }
}

TEST_F(ArchiveTest, RefusesWhatIsDamaged) {
    const char* const table = "bad table of contents";
    const char* const format = "unsupported package file format";
    const struct {
        const char* what;
        std::string bytes, fault;
    } cases[] = {
        {"nothing", "", format},
        {"short text", "text", format},
        {"text", "a text of some length", format},
        {"version 3", file2(stream2(0, ""), 3), format},
        {"version 1 in the form of 2", file2(stream2(0, ""), 1), format},
        {"compression 2", file2(stream2(0, ""), 0x2002), "unsupported compression algorithm"},
        {"zlib for bzip2", file2(stream2(0, ""), 0x1002), "error reading from compressed stream"},
        {"wrong inner magic", file1(u32(1) + u32(0)), format},
        {"only the header", file1("").substr(0, 12), "error reading stream"},
        {"no zlib stream", file1("").substr(0, 12) + "not compressed",
         "error reading from compressed stream"},
        {"short header", file2(u32(0)), "error reading stream"},
        {"count of 4 billion, plain", stream1(0xFFFFFFFF, entry1("a", 1048, 0)), table},
        {"count of 4 billion, 1", file1(stream1(0xFFFFFFFF, "")), table},
        {"count of 4 billion, 2", file2(stream2(0xFFFFFFFF, "")), table},
        {"count of 2", stream1(2, entry1("a", 2088, 0)), table},
        {"name without end", stream1(1, entry1(std::string(1024, 'n'), 1048, 0)), table},
        {"short name", file2(stream2(1, entry2("name", 42, 0).substr(0, 20))), "error reading stream"},
        {"contents in the table", stream1(1, entry1("a", 1047, 1) + "a"), table},
        {"contents backwards", stream1(2, entry1("a", 2089, 1) + entry1("b", 2088, 1) + "ab"), table},
        {"contents overlap", stream1(2, entry1("a", 2088, 2) + entry1("b", 2089, 1) + "ab"), table},
        {"size of 4 billion, plain", stream1(1, entry1("a", 1048, 0xFFFFFFFF) + "a"),
         "cannot read file a from archive"},
        {"size of 4 billion", file1(stream1(1, entry1("a", 1048, 0xFFFFFFFF) + "a")), "error reading stream"},
        {"contents in the names", file2(stream2(2, entry2("a", 57, 1) + entry2("b", 58, 0) + "a")), table},
        {"stream goes on", file1(stream1(1, entry1("a", 1048, 1) + "ab")), "cannot read file a from archive"},
        {"stream goes on without contents", file2(stream2(1, entry2("a", 39, 0) + "ab")), table},
        {"stream goes on without files", file1(stream1(0, "a")), table},
        {"stream goes on, bzip2", fileBzip2(stream2(1, entry2("a", 39, 1) + "ab")),
         "cannot read file a from archive"},
        {"stream goes on without files, bzip2", fileBzip2(stream2(0, "a")), table},
        {"stream ends early, bzip2", fileBzip2(stream2(1, entry2("a", 39, 2) + "a")),
         "error reading from compressed stream"},
        {"count of 4 billion, bzip2", fileBzip2(stream2(0xFFFFFFFF, "")), table},
        {"offset of 4 billion, plain", stream1(1, entry1("a", 0xFFFFFFFF, 1) + "a"),
         "cannot read file a from archive"},
    };
    for (const auto& [what, bytes, fault] : cases) EXPECT_EQ(faultOfReading(bytes), fault) << what;
    ASSERT_EQ(::mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(faultOf([&] { PackageArchive(path("pipe")); }), format);

    PackageArchive archive(put("good", stream1(1, entry1("a", 1048, 0))));
    EXPECT_EQ(faultOf([&] { archive.load(path("none")); }), path("none").toStdString() + " does not exist");
    EXPECT_TRUE(archive.files().empty());
    archive.load(path("good"));
    EXPECT_EQ(faultOf([&] { archive.load(put("bad", stream1(2, entry1("a", 2088, 0)))); }), table);
    EXPECT_TRUE(archive.files().empty());
    EXPECT_FALSE(archive.fileNamed(q("a")));
    for (const char* text : {"text", "a text of some length"})
        EXPECT_FALSE(PackageArchive::isArchive(put("text", text)));
}

TEST_F(ArchiveTest, ReadsWhatStandsBeforeTheDamage) {
    constexpr std::size_t ahead = 1 << 20;  // bytes that are read at once
    const std::size_t size = ahead - 20 - 2 * 19;
    std::string random(3 * ahead, '\0');
    std::uint32_t state = 1;
    for (char& byte : random) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    const auto end = static_cast<std::uint32_t>(ahead);
    std::string bytes = fileBzip2(
        stream2(2, entry2("a", 58, end - 58) + entry2("b", end, 3 * end) + std::string(size, 'a') + random));
    bytes[bytes.size() / 2] ^= 1;
    PackageArchive archive(put("damaged", bytes));
    EXPECT_EQ(archive.readFile(archive.files()[0].get()), QByteArray(static_cast<qsizetype>(size), 'a'));
    EXPECT_EQ(faultOf([&] { archive.readFile(archive.files()[1].get()); }),
              "error reading from compressed stream");
    EXPECT_EQ(archive.readFile(archive.files()[0].get()).size(), size) << "a step back begins anew";
}

/// The forms in which the tests save.
struct Form {
    const char* name;
    int version;
    Compression compression;
};
constexpr Form forms[] = {{"version 1", 1, Compression::Zlib},
                          {"version 2, zlib", 2, Compression::Zlib},
                          {"version 2, bzip2", 2, Compression::Bzip2}};

TEST_F(ArchiveTest, FailsOnTruncationAndBitFlips) {
    put("a.txt", "the contents of a file, the contents of a file");
    put("b.txt", "and of another");
    for (const Form& form : forms) {
        PackageArchive archive;
        archive.setVersion(form.version);
        archive.setCompression(form.compression);
        for (const char* name : {"a.txt", "b.txt"}) archive.addDiskFile(path(name), q(name));
        archive.save(path("saved"));
        const std::string whole = get("saved");
        PackageArchive sound(path("saved"));
        const std::string expected = rows(sound);
        for (std::size_t size = 0; size < whole.size(); ++size)
            EXPECT_NE(faultOfReading(whole.substr(0, size)), "") << form.name << ", " << size << " bytes";
        const std::size_t header = form.version == 1 ? 12 : 8;
        for (std::size_t bit = 8 * header; bit < 8 * whole.size(); ++bit) {
            std::string flipped = whole;
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
            // Some bits only say how hard it was compressed, or pick another way to the same bytes.
            if (faultOfReading(flipped).empty()) {
                PackageArchive same(path("bytes"));
                EXPECT_EQ(rows(same), expected) << form.name << ", bit " << bit;
            }
        }
    }
}

TEST_F(ArchiveTest, WritesItsHeaders) {
    put("a.txt", "abc");
    mark("a.txt", 0444, 1000);
    put("b", std::string(500, 'b'));
    mark("b", 0755, 2000);
    PackageArchive archive;
    archive.save(path("empty"));
    EXPECT_EQ(get("empty").substr(0, 12), std::string("\x7A\xF4\x31\xB2\1\0\0\0\0\0\0\x0D", 12));
    EXPECT_EQ(inflated(get("empty").substr(12)), stream1(0, ""));

    archive.addDiskFile(path("a.txt"), q("a.txt"));
    archive.addDiskFile(path("b"), q("d/b"));
    archive.save(path("one"));
    // 2 * 1040 * 2 + 503 = 4663; with a hundredth of it and 13 it is 4722.
    EXPECT_EQ(get("one").substr(0, 12), std::string("\x7A\xF4\x31\xB2\1\0\0\0\0\0\x12\x72", 12));
    EXPECT_EQ(inflated(get("one").substr(12)),
              stream1(2, entry1("a.txt", 2088, 3, 1, 1000) + entry1("d/b", 2091, 500, 0, 2000) + "abc" +
                             std::string(500, 'b')));

    archive.setVersion(2);
    archive.save(path("two"));
    EXPECT_EQ(get("two").substr(0, 8), std::string("\xB1\xC6\xF5\x71\2\0\0\0", 8));
    EXPECT_EQ(inflated(get("two").substr(8)),
              stream2(2, entry2("a.txt", 64, 3, 0100444, 1000) + entry2("d/b", 67, 500, 0100755, 2000) +
                             "abc" + std::string(500, 'b')));

    archive.setCompression(Compression::Bzip2);
    archive.save(path("bzip2"), 12);
    EXPECT_EQ(get("bzip2").substr(0, 12), std::string("\xB1\xC6\xF5\x71\2\x10\0\0BZh9", 12));
    EXPECT_EQ(faultOf([&] { archive.save(path("bzip2"), 0); }), "cannot initialise deflate");
    archive.setVersion(1);
    archive.save(path("one again"), 7);
    EXPECT_EQ(get("one again"), get("one")) << "version 1 has zlib alone, and level -1 is 7";
}

TEST_F(ArchiveTest, SavesWhatItOpenedBesideWhatIsOnDisk) {
    put("large", std::string(3'000'000, 'x') + "end");
    mark("large", 0644, 5);
    put("new", "new");
    mark("new", 0600, 6);
    for (const Form& form : forms) {
        PackageArchive first;
        first.addDiskFile(path("large"), q("large"));
        first.addDiskFile(path("new"), q("small"));
        first.setVersion(form.version);
        first.setCompression(form.compression);
        first.save(path("first"));

        PackageArchive second(path("first"));
        EXPECT_EQ(second.version(), form.version);
        second.addDiskFile(path("new"), q("large"));
        second.addDiskFile(path("large"), q("more"));
        second.save(path("second"));
        PackageArchive third(path("second"));
        const std::string small = form.version == 1 ? "666 3 6 new\n" : "100600 3 6 new\n";
        const std::string mode = form.version == 1 ? "666 " : "100644 ";
        std::string expected = "large " + small;
        expected += "small " + small;
        expected += "more " + mode;
        expected += "3000003 5 " + get("large") + "\n";
        EXPECT_EQ(rows(third), expected) << form.name;
        EXPECT_EQ(third.readFile(third.fileNamed(q("small"))), "new") << "a step back";
        EXPECT_EQ(third.readFile(third.fileNamed(q("more"))).right(3), "end");
    }
    EXPECT_EQ(PackageArchive().readFile(nullptr), QByteArray());
}

TEST_F(ArchiveTest, RefusesWhatItCannotWrite) {
    put("a", "a");
    const struct {
        int version;
        std::size_t size;
        const char* fault;
    } cases[] = {
        {1, 1023, ""}, {1, 1024, "filename too long"}, {2, 65535, ""}, {2, 65536, "filename too long"}};
    for (const auto& [version, size, fault] : cases) {
        PackageArchive archive;
        archive.setVersion(version);
        archive.addDiskFile(path("a"), q(std::string(size, 'n')));
        EXPECT_EQ(faultOf([&] { archive.save(path("out")); }), fault) << size;
        if (*fault == '\0') {
            EXPECT_EQ(PackageArchive(path("out")).files()[0]->name().size(), size);
        }
    }
    PackageArchive archive;
    EXPECT_EQ(faultOf([&] { archive.save(path("none/out")); }), "cannot open output file");
    EXPECT_EQ(faultOf([&] { archive.save(q("/dev/full")); }), "error writing to compressed stream");
    for (const QString& place : {path("none"), directory.path(), q("/dev/null")})
        EXPECT_EQ(faultOf([&] { archive.addDiskFile(place, q("x")); }), "cannot read " + place.toStdString());
    EXPECT_TRUE(archive.files().empty());
    archive.addDiskFile(path("a"), q("a"));
    EXPECT_EQ(faultOf([&] { archive.save(path("a")); }), "cannot open output file");
    EXPECT_EQ(get("a"), "a");
    archive.save(path("out"));
    PackageArchive opened(path("out"));
    EXPECT_EQ(faultOf([&] { opened.save(path("./out")); }), "cannot open output file");
    EXPECT_EQ(rows(opened), "a 666 1 " + std::to_string(status("a").st_mtime) + " a\n");
    put("a", "longer than it was");
    EXPECT_EQ(faultOf([&] { archive.save(path("out")); }), "cannot write file");
    QFile::remove(path("a"));
    EXPECT_EQ(faultOf([&] { archive.save(path("out")); }), "cannot read file a");
}

/// Puts a line of its own in front of the archive, and one entry in memory into it.
class FramedArchive : public PackageArchive {
public:
    void beforeWrite(std::FILE* file) override { std::fputs("frame\n", file); }
    void beforeRead(std::FILE* file) override {
        std::array<char, 6> line;
        EXPECT_EQ(std::fread(line.data(), 1, line.size(), file), line.size());
    }
    void addText(const char* name, const char* text) {
        append({.source = PackageArchiveFile::Source::Memory,
                .name = q(name),
                .size = static_cast<std::uint32_t>(std::strlen(text)),
                .mode = 0100644,
                .modified = QDateTime::fromSecsSinceEpoch(9, Qt::UTC),
                .data = text});
    }
};

TEST_F(ArchiveTest, LetsASubclassFrameIt) {
    FramedArchive archive;
    archive.addText("t", "text");
    archive.save(path("framed"));
    EXPECT_EQ(get("framed").substr(0, 10), "frame\n\x7A\xF4\x31\xB2");
    archive.load(path("framed"));
    EXPECT_EQ(rows(archive), "t 666 4 9 text\n");
    archive.load(put("offset", "before" + get("framed")), 6);
    EXPECT_EQ(rows(archive), "t 666 4 9 text\n");
    archive.load(put("plain", "frame\n" + stream1(1, entry1("p", 1048, 1) + "p")));
    EXPECT_EQ(rows(archive), "p 666 1 0 p\n");
}

TEST_F(ArchiveTest, FindsTheDescription) {
    const struct {
        std::vector<std::string> names;
        std::string found;
    } cases[] = {
        {{"a", "b.xml"}, ""},
        {{"a_package.xml.bak", "A_PACKAGE.XML"}, ""},
        {{"a", "d/b_package.xml", "c_package.xml"}, "d/b_package.xml"},
        {{"_package.xml"}, "_package.xml"},
    };
    put("file", "");
    for (const auto& [names, found] : cases) {
        PackageArchive archive;
        for (const std::string& name : names) archive.addDiskFile(path("file"), q(name));
        const PackageArchiveFile* file = archive.findPackageDescription();
        EXPECT_EQ(file ? file->name().toStdString() : "", found);
    }
}

}  // namespace
