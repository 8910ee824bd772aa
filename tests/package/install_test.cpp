#include "package/archive_fixture.h"
#include "package/check_sum.h"
#include "package/package_directory.h"
#include "package/package_installer.h"
#include "project/engine_fixture.h"

#include <QDir>
#include <QDirIterator>

#include <unistd.h>

namespace {

using namespace package_test;

TEST(PackageVersion, ReadsAndWrites) {
    const struct {
        const char *text, *written;
        int major, minor, patch;
    } cases[] = {
        {"5.68", "5.68", 5, 68, -1},     {"5.3b", "5.03b", 5, 3, 2},
        {"5.03.2", "5.03b", 5, 3, 2},    {"5.3.0", "5.03", 5, 3, 0},
        {"5", "5", 5, -1, -1},           {"5.100z", "5.100z", 5, 100, 26},
        {"5.3.27", "5.03.27", 5, 3, 27}, {"", "", -1, -1, -1},
        {"five", "", -1, -1, -1},        {"5.b", "5", 5, -1, -1},
        {"5.x.3", "5", 5, -1, -1},       {"5.3a.7", "5.03a", 5, 3, 1},
        {"5.3A", "5", 5, -1, -1},        {"99999999999", "", -1, -1, -1},
        {"-1.2", "", -1, -1, -1},
    };
    for (const auto& [text, written, major, minor, patch] : cases) {
        const PackageVersion version = PackageVersion::parse(q(text));
        EXPECT_EQ(std::tie(version.major, version.minor, version.patch), std::tie(major, minor, patch))
            << text;
        EXPECT_EQ(version.toString().toStdString(), written);
    }
}

TEST(VersionRange, HoldsVersions) {
    const struct {
        const char *range, *version;
        bool contains;
        const char* text;
    } cases[] = {
        {"5.40-", "5.68", true, "5.40 or later"},
        {"5.70-", "5.68", false, "5.70 or later"},
        {"5", "5.68", true, "5 only"},
        {"5", "6.00", false, "5 only"},
        {"-5.68", "5.68", true, "5.68 or earlier"},
        {"-5.67", "5.68", false, "5.67 or earlier"},
        {"5.68", "5.68", true, "5.68 only"},
        {"5.68b", "5.68", true, "5.68b only"},
        {"5.68b", "5.68c", false, "5.68b only"},
        {"5.10-5.70", "5.68", true, "5.10 to 5.70"},
        {"5.10-5.60", "5.68", false, "5.10 to 5.60"},
        {"5.69-6", "5.68", false, "5.69 to 6"},
        {"5-5.40", "5.68", true, "5 only"},
        {"5.68a-5.68c", "5.68d", false, "5.68a to 5.68c"},
        {"-", "5.68", true, " or earlier"},
        {"junk", "5.68", true, " or earlier"},
    };
    for (const auto& [range, version, contains, text] : cases) {
        EXPECT_EQ(VersionRange::parse(q(range)).contains(PackageVersion::parse(q(version))), contains)
            << range;
        EXPECT_EQ(VersionRange::parse(q(range)).toString().toStdString(), text);
    }
}

TEST(CheckSum, IsThatOfBzip2) {
    const std::pair<std::string, std::uint32_t> cases[] = {
        {"", 0}, {"123456789", 0xFC891918}, {"a", 0x19939B6B}, {std::string(32, '\0'), 0xB5AA5098}};
    for (const auto& [text, sum] : cases) {
        EXPECT_EQ(checkSum(text), sum) << text;
        CheckSum inPieces;
        for (const char byte : text) inPieces.add({&byte, 1});
        EXPECT_EQ(inPieces.value(), sum);
    }
}

/// Answers as it is told, and keeps what it was asked and told, a line each.
class Host : public InstallationHost {
public:
    QString chooseDirectory(const QString& prompt, const QString& start) override {
        note(prompt + u'|' + start);
        return directory;
    }
    Overwrite askOverwrite(const QString& title, const QString& text, const QString&) override {
        note(title + u'|' + text);
        return overwrite;
    }
    bool confirm(const QString& title, const QString& heading, const QString& text) override {
        note(title + u'|' + heading + u'|' + text);
        return goOn;
    }
    void inform(const QString& title, const QString& text) override { note(title + u'|' + text); }
    bool goOnAfter(const QString& title, const QString& error) override {
        note(title + u'|' + error);
        return goOn;
    }
    void showStatus(const QString& text) override { note(text); }
    void saveGlobalMacros(const QString& changed) override { note(q("macro ") + changed); }

    std::string heard() { return std::exchange(log_, ""); }

    QString directory;
    Overwrite overwrite = Overwrite::Cancel;
    bool goOn = false;

private:
    void note(const QString& line) { log_ += line.toStdString() + "\n"; }

    std::string log_;
};

class InstallTest : public ArchiveTest {
protected:
    InstallTest() {
        project::macroEngine = &macros;
        macros.systemMacros.insert(q("Home"), directory.path());
    }
    ~InstallTest() override { project::macroEngine = nullptr; }

    struct Entry {
        std::string name, contents;
        std::int64_t time = 1000;
        mode_t mode = 0644;
    };
    QString archiveOf(const std::string& description, const std::vector<Entry>& entries,
                      const std::string& name = "p.qxPackage") {
        PackageArchive archive;
        archive.setVersion(2);
        int number = 0;
        for (const auto& [entryName, contents, time, mode] : entries) {
            const std::string source = "source/" + std::to_string(number++);
            QFile::remove(path(source));
            put(source, contents);
            mark(source, mode, time);
            archive.addDiskFile(path(source), q(entryName));
        }
        if (!description.empty())
            archive.addDiskFile(put("source/description", description), q("any/demo_package.xml"));
        archive.save(path(name));
        return path(name);
    }
    /// What the installation threw, or "yes" or "no".
    std::string install(const QString& archive, const std::string& name = "given",
                        bool uninstallFirst = false, const QString& place = {}) {
        QString known = q(name);
        bool answer = false;
        PackageInstaller installer(manager(), host);
        installer.setDirectory(place);
        const std::string fault =
            faultOf([&] { answer = installer.installPackage(archive, known, true, uninstallFirst); });
        return !fault.empty() ? fault : answer ? "yes" : "no";
    }
    std::string uninstall(const char* name) {
        return PackageInstaller(manager(), host).uninstallPackage(q(name)) ? "yes" : "no";
    }
    /// Read afresh, so that every test goes by what is on disk.
    PackageManager& manager() {
        manager_ = std::make_unique<PackageDirectory>(path("packages"));
        return *manager_;
    }
    /// All files below a directory, "name=contents" a word.
    std::string tree(const std::string& name) {
        QStringList words;
        QDirIterator walk(path(name), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString place = walk.next();
            const QString inside = QDir(path(name)).relativeFilePath(place);
            if (walk.fileInfo().isFile())
                words.append(inside.endsWith(q(".xml"))
                                 ? inside
                                 : inside + u'=' + q(get(name + "/" + inside.toStdString())));
            else if (QDir(place).isEmpty())
                words.append(inside + u'/');
        }
        words.sort();
        return words.join(u' ').toStdString();
    }

    /// The one package that is known, in a line.
    std::string recordText() {
        std::string text;
        for (const PackageRecord& package : manager().packages()) {
            text += package.name.toStdString() + ' ' + package.installedVersion->toString().toStdString() +
                    ' ' + package.installationDirectory.toStdString() + ' ';
            for (auto file = package.files.begin(); file != package.files.end(); ++file)
                text +=
                    file.key().toStdString() + '=' + QString::number(file.value(), 16).toStdString() + ' ';
        }
        return text;
    }

    project_test::Engine engine;
    project::MacroEngine macros;
    Host host;

private:
    std::unique_ptr<PackageDirectory> manager_;
};

const char* const home = R"(<package name="demo" version="1.2" installation_directory="$(Home)/sdk"/>)";

TEST_F(InstallTest, InstallsUpgradesAndUninstalls) {
    put("sdk/mine", "mine");
    const QString first = archiveOf(home, {{"z.txt", "zed"},
                                           {"include/a.h", "aaa", 1000, 0444},
                                           {"none/..//old/gone", "o"},
                                           {"moved\\m", "m"}});
    EXPECT_EQ(install(first), "yes");
    EXPECT_EQ(host.heard(), "Installed package 'demo'\n");
    EXPECT_EQ(tree("sdk"), "include/a.h=aaa mine=mine moved/m=m old/gone=o z.txt=zed");
    EXPECT_EQ(tree("packages"), "packages/demo_package.xml");
    EXPECT_EQ(status("sdk/include/a.h").st_mode & 0222, 0U);
    EXPECT_EQ(status("sdk/z.txt").st_mtime, 1000);
    const std::string record = get("packages/packages/demo_package.xml");
    EXPECT_NE(record.find("  <installed_file "), std::string::npos) << record;
    EXPECT_EQ(recordText(),
              "demo 1.02 $(Home)/sdk include/a.h=1fe5dfce moved\\m=2c9f000f none/..//old/gone=251d3b61 "
              "packages/demo_package.xml=0 z.txt=5c22cccd ");

    const QString second =
        archiveOf(R"(<package name="demo" version="1.3" installation_directory="$(Home)/sdk"/>)",
                  {{"z.txt", "newer", 2000}, {"include/a.h", "ignored", 1000, 0444}, {"moved/m", "m"}});
    EXPECT_EQ(install(second), "yes");
    EXPECT_EQ(tree("sdk"), "include/a.h=aaa mine=mine moved/m=m z.txt=newer");
    EXPECT_EQ(recordText().substr(0, 10), "demo 1.03 ");
    uninstall("demo");
    EXPECT_EQ(tree("sdk"), "mine=mine");
    EXPECT_FALSE(QFile::exists(path("packages"))) << "its directories are left empty, and go";
    uninstall("demo");

    EXPECT_EQ(install(first), "yes");
    EXPECT_EQ(install(second, "given", true), "yes");
    EXPECT_EQ(tree("sdk"), "include/a.h=ignored mine=mine moved/m=m z.txt=newer");
    const QString climbing = archiveOf(home, {{"../out", "o"}});
    EXPECT_EQ(install(climbing, "given", true), "cannot extract file ../out");
    EXPECT_EQ(recordText().substr(0, 10), "demo 1.03 ") << "it is refused before the former one goes";

    QFile::remove(path("sdk/z.txt"));
    put("sdk/z.txt/mine", "mine");
    EXPECT_EQ(uninstall("demo"), "no");
    EXPECT_EQ(host.heard(),
              "Installed package 'demo'\nInstalled package 'demo'\nInstalled package 'demo'\n"
              "Package uninstallation error|Cannot remove " +
                  path("sdk/z.txt").toStdString() + ".\n");
    EXPECT_EQ(tree("sdk"), "mine=mine z.txt/mine=mine");
}

TEST_F(InstallTest, LeavesWhatTheUserKept) {
    const QString first = archiveOf(home, {{"edited", "theirs"}, {"gone", "theirs"}, {"kept", "theirs"}});
    EXPECT_EQ(install(first), "yes");
    for (const char* name : {"sdk/edited", "sdk/kept"}) put(name, "mine");
    host.overwrite = InstallationHost::Overwrite::NoToAll;
    EXPECT_EQ(install(first), "yes");
    put("sdk/edited", "mine again");
    EXPECT_EQ(install(archiveOf(home, {{"new", "new"}})), "yes");
    EXPECT_EQ(tree("sdk"), "edited=mine again kept=mine new=new");
}

TEST_F(InstallTest, AsksAboutNewerFiles) {
    using Answer = InstallationHost::Overwrite;
    const std::string question = "Install Package|<p>The file <i>" + path("sdk/").toStdString() +
                                 "%</i> exists and is dated later than package file.</p><p>Do you want to "
                                 "overwrite this file?</p>\n";
    const auto asked = [&](const char* name) {
        return std::string(question).replace(question.find('%'), 1, name);
    };
    const std::string done = "Installed package 'demo'\n";
    const struct {
        Answer answer;
        std::string answered, heard, after;
    } cases[] = {
        {Answer::Yes, "yes", asked("a") + asked("b") + done, "a=new b=new c=new d=same"},
        {Answer::YesToAll, "yes", asked("a") + done, "a=new b=new c=new d=same"},
        {Answer::No, "yes", asked("a") + asked("b") + done, "a=mine b=mine c=new d=same"},
        {Answer::NoToAll, "yes", asked("a") + done, "a=mine b=mine c=new d=same"},
        {Answer::Cancel, "no",
         asked("a") + "Package installation cancelled|The package installation was cancelled.\n",
         "a=mine b=mine c=old d=same"},
    };
    for (const auto& [answer, answered, heard, after] : cases) {
        for (const char* name : {"a", "b"}) put(std::string("sdk/") + name, "mine");
        put("sdk/c", "old");
        mark("sdk/c", 0444, 500);
        put("sdk/d", "same");
        mark("sdk/d", 0644, 1000);
        host.overwrite = answer;
        const QString archive = archiveOf(home, {{"a", "new"}, {"b", "new"}, {"c", "new"}, {"d", "new"}});
        EXPECT_EQ(install(archive), answered);
        EXPECT_EQ(host.heard(), heard);
        EXPECT_EQ(tree("sdk"), after);
        if (answer == Answer::NoToAll) {
            EXPECT_EQ(recordText(),
                      "demo 1.02 $(Home)/sdk a=ad4bc865 b=ad4bc865 c=7984b08 d=1f7422fb "
                      "packages/demo_package.xml=0 ");
        }
        EXPECT_EQ(QFile::exists(path("packages")), answer != Answer::Cancel);
        QDir(path("packages")).removeRecursively();
        QFile::remove(path("sdk/c"));
    }
}

TEST_F(InstallTest, ChecksVersionsAndTarget) {
    const std::string incompatible =
        "Package Manager|Installing incompatible package|<p>The package you are installing is incompatible "
        "with "
        "this release of Kestrelant%.</p><p>We recommend that you terminate the installation as it is "
        "unlikely that "
        "the package will function correctly.</p><p>Click <b>Cancel</b> to cancel the installation or "
        "<b>OK</b> to "
        "continue.</p>\n";
    const auto told = [&](const char* text) {
        return std::string(incompatible).replace(incompatible.find('%'), 1, text);
    };
    const struct {
        const char* versions;
        std::string heard;
    } cases[] = {
        {"", ""},
        {"8", ""},
        {"8:5.40-", ""},
        {"any:5.40-", ""},
        {":5.70-", ""},
        {"7", told("")},
        {"99999999999", told("")},
        {"8x:5.40-", ""},
        {"8:5.70-", told(" - version 5.70 or later is required")},
        {"7:-5.10", told("") + told(" - version 5.10 or earlier is required")},
        {"all:5.10-5.20", told(" - version 5.10 to 5.20 is required")},
    };
    for (const auto& [versions, heard] : cases) {
        const QString archive =
            archiveOf(R"(<package name="n" installation_directory="$(Home)/sdk" onw_versions=")" +
                          std::string(versions) + "\"/>",
                      {{"a", "a"}});
        host.goOn = true;
        EXPECT_EQ(install(archive), "yes");
        EXPECT_EQ(host.heard(), heard + "Installed package 'n'\n") << versions;
        uninstall("n");
        host.goOn = false;
        EXPECT_EQ(install(archive), heard.empty() ? "yes" : "no");
        EXPECT_EQ(QFile::exists(path("sdk/a")), heard.empty());
        uninstall("n");
        host.heard();
    }
}

TEST_F(InstallTest, ChoosesTheDirectory) {
    const QString prompting = archiveOf(
        R"(<package installation_directory="$(Home)/a" installation_directory_prompt="Where?"
                    installation_directory_global_macro_name="Demo"/>)",
        {{"f", "f"}});
    EXPECT_EQ(install(prompting), "no");
    EXPECT_EQ(host.heard(), "Where?|" + path("a").toStdString() +
                                "\nInstallation cancelled|Package installation cancelled.\n");
    host.directory = path("b");
    EXPECT_EQ(install(prompting), "yes");
    EXPECT_EQ(tree("b"), "f=f");
    EXPECT_EQ(macros.globalMacros.value(q("Demo")), path("b"));
    EXPECT_EQ(recordText(), "given  " + path("b").toStdString() + " f=7d4cb6e packages/demo_package.xml=0 ");
    PackageDescriptionFile record;
    record.parse(QByteArray::fromStdString(get("packages/packages/demo_package.xml")), QString());
    EXPECT_EQ(record.attribute("filetype"), q("qxPackage"));
    uninstall("given");
    EXPECT_FALSE(QFile::exists(path("b")));

    EXPECT_EQ(install(prompting, "given", false, path("c")), "yes");
    EXPECT_EQ(tree("c"), "f=f");
    const std::string inside = R"(<package name="in" installation_directory_global_macro_name="In")";
    EXPECT_EQ(install(archiveOf(inside + "/>", {{"d/f", "f"}})), "yes");
    EXPECT_EQ(get("packages/d/f"), "f");
    EXPECT_EQ(macros.globalMacros.value(q("In")), path("packages"));
    EXPECT_EQ(install(archiveOf(inside + R"( installation_directory="e"/>)", {{"f", "f"}})), "yes");
    EXPECT_EQ(get("packages/e/f"), "f") << "relative directories are below that of the packages";
    uninstall("in");
    EXPECT_EQ(tree("packages/e"), "");
    EXPECT_EQ(install(archiveOf(R"(<package installation_directory="$(None)/x"/>)", {{"f", "f"}})),
              "cannot expand installation directory " + path("packages/$(None)/x").toStdString());

    const QString bare = archiveOf("", {{"f", "f"}});
    EXPECT_EQ(install(bare), "package has no description " + bare.toStdString());
    EXPECT_EQ(install(bare, "given", false, path("bare")), "yes");
    EXPECT_EQ(tree("bare"), "f=f");
}

TEST_F(InstallTest, WritesNothingOutside) {
    EXPECT_EQ(install(archiveOf(home, {{"a", "a"}, {"../out", "o"}})), "cannot extract file ../out");
    QDir().mkpath(path("elsewhere"));
    QDir().mkpath(path("sdk"));
    ASSERT_EQ(::symlink("../elsewhere", path("sdk/link").toLocal8Bit().constData()), 0);
    EXPECT_EQ(install(archiveOf(home, {{"a", "a"}, {"link/f", "o"}})), "cannot extract file link/f");
    EXPECT_FALSE(QFile::exists(path("sdk/a")));
    EXPECT_EQ(tree("elsewhere"), "");

    // A record whose list leads elsewhere.
    put("elsewhere/keep", "k");
    put("packages/packages/x_package.xml",
        R"(<package name="x" version="1" installation_directory="$(Home)/sdk"><installed_file file_name="../elsewhere/keep"/>
           <installed_file file_name="link/keep"/></package>)");
    uninstall("x");
    EXPECT_EQ(tree("elsewhere"), "keep=k");

    EXPECT_TRUE(QFile::remove(path("packages/packages/x_package.xml")));
    const std::string fault = "cannot write package description file ";
    EXPECT_EQ(install(archiveOf(home, {{"a\1", "a"}})),
              fault + path("packages/packages/demo_package.xml").toStdString());
    put("packages/packages/nameless_package.xml", "<package/>");
    EXPECT_EQ(recordText(), "");
    EXPECT_EQ(
        PackageDirectory(path("packages")).problems(),
        std::vector{"package has no name " + path("packages/packages/nameless_package.xml").toStdString()});
}

TEST_F(InstallTest, GoesOnAfterAFileThatCannotBeWritten) {
    put("sdk/file", "a file where a directory should be");
    const QString archive = archiveOf(home, {{"file/x", "x"}, {"y", "y"}});
    const std::string error =
        "Package installation error|Cannot create " + path("sdk/file/x").toStdString() + " for writing.\n";
    EXPECT_EQ(install(archive), "no");
    EXPECT_EQ(host.heard(), error);
    host.goOn = true;
    EXPECT_EQ(install(archive), "yes");
    EXPECT_EQ(host.heard(), error + "Installed package 'demo'\n");
}

TEST_F(InstallTest, ReadsAndWritesDescriptions) {
    const std::string deep = [] {
        std::string text;
        for (int i = 0; i < 300'000; ++i) text += "<a>";
        return text;
    }();
    const std::string crowded = [] {
        std::string text = "<package";
        for (int i = 0; i < 257; ++i) text += " a" + std::to_string(i) + "\n= ''";
        return text + "/>";
    }();
    const struct {
        std::string text, fault;
    } cases[] = {
        {"<package/>", ""},
        {"<other><package/></other>", ""},
        {"<!DOCTYPE package><package/>", ""},
        {"<!DOCTYPE package [<!ENTITY a 'a'>]><package/>",
         "cannot load package description file: d/x_package.xml - declarations in the document type 36:1"},
        {"<?m \1?><package/>",
         "cannot load package description file: d/x_package.xml - control character 0:0"},
        {crowded, "cannot load package description file: d/x_package.xml - too many attributes 0:0"},
        {std::string(1'048'577, ' '),
         "cannot load package description file: d/x_package.xml - file too large 0:0"},
        {"<package",
         "cannot load package description file: d/x_package.xml - Premature end of document. 8:1"},
        {"<package>\n</pack>",
         "cannot load package description file: d/x_package.xml - Opening and ending tag mismatch. 7:2"},
        {"<package \xC3\xA4='1'/>",
         "cannot load package description file: d/x_package.xml - name is not ASCII 16:1"},
        {deep, "cannot load package description file: d/x_package.xml - elements nested too deeply 303:1"},
    };
    for (const auto& [text, fault] : cases) {
        PackageArchive archive;
        archive.addDiskFile(put("x", text), q("d/x_package.xml"));
        PackageDescriptionFile description;
        EXPECT_EQ(faultOf([&] { description.loadPackageDescription(archive); }), fault);
        EXPECT_EQ(description.isEmpty(), !fault.empty());
    }
    PackageArchive none;
    PackageDescriptionFile empty;
    empty.loadPackageDescription(none);
    EXPECT_TRUE(empty.isEmpty());

    PackageDescriptionFile description;
    description.parse(
        "<?xml version='1.0'?><!--c--><top><t>x <![CDATA[<\xC3\xA4]]></t>"
        "<package name='\xC3\xA4&amp;\xF0\x9F\x98\x80' md5='&#10;\"'/></top>",
        QString());
    description.setInstalledFiles({{q("b"), 0}, {q("a"), 0x0ABC}});
    description.setInstalledFiles({{q("b"), 0}, {q("B"), 0x0ABC}});
    const std::string place = path("made/for/it.xml").toStdString();
    description.savePackageDescription(q(place), false);
    EXPECT_EQ(get("made/for/it.xml"), R"(<?xml version="1.0"?>
<!--c-->
<top>
  <t>x &lt;&#228;</t>
  <package md5="&#10;&quot;" name="&#228;&amp;&#128512;">
    <installed_file crc32="0xabc" file_name="B"/>
    <installed_file crc32="0x0" file_name="b"/>
  </package>
</top>
)");
    EXPECT_EQ(faultOf([&] { description.savePackageDescription(q(place), false); }),
              "cannot overwrite package description file " + place);
    EXPECT_EQ(faultOf([&] { description.savePackageDescription(q(place + "/x"), true); }),
              "cannot write package description file " + place + "/x");
    mark("made/for/it.xml", 0444, 5);
    description.savePackageDescription(q(place), true);
}

}  // namespace
