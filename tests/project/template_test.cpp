#include "project/project_templates.h"
#include "project/solution_fixture.h"
#include "project/template_expander.h"

#include <QDir>

namespace {

using namespace project_test;

class Templates : public SolutionTest {
protected:
    /// Loads a solution with one project of the template "t" and answers the file that it is saved as,
    /// without what every file has.
    std::string expanded(const std::string& body, const char* attributes = "", const char* inside = "",
                         const std::string& others = "") {
        write("templates.xml",
              "<x>" + others + "<project template_name='t' type='Library'>" + body + "</project></x>");
        writeSolution("s.qxProject",
                      std::string(R"( templates_file="$(SolutionDir)/templates.xml"><project Name="p" )"
                                  "template_name=\"t\" ") +
                          attributes + ">" + inside + "</project></solution>");
        load("s.qxProject");
        EXPECT_FALSE(engine.isModified(engine.solution(), true));
        EXPECT_TRUE(engine.changeLog().isEmpty());
        return listing();
    }
    /// Each node with its attributes, but for the keys that every one of its kind has.
    std::string listing() {
        std::string text;
        walkElements(
            *engine.solution(),
            [&](ProjectElement& node) {
                if (node.isSolution()) return;
                const QString name = node.attributes.value(keys::name);
                text += (name.isNull() ? node.attributes.value(keys::fileName) : name).toStdString();
                for (const auto& [key, value] : node.attributes)
                    if (key != keys::name && key != keys::fileName)
                        text += "," + key.toStdString() + "=" + value.toStdString();
                text += "(";
            },
            [&](ProjectElement& node) { text += node.isSolution() ? "" : ")"; });
        const std::string common = "Common,project_type=Library()";
        const std::size_t place = text.find(common);
        return place == std::string::npos ? text : text.erase(place, common.size());
    }
    std::string errorOf(TemplateNotFoundErrorHandler* handler) {
        try {
            engine.loadSolution(directory.filePath(q("s.qxProject")), nullptr, handler, nullptr, true);
        } catch (const SolutionLoadError& error) {
            EXPECT_EQ(engine.solution(), nullptr);
            return error.fileName().toStdString() + "|" + error.message().toStdString();
        }
        return "none";
    }
};

TEST_F(Templates, FillInAProject) {
    struct Row {
        const char* body;
        const char* attributes;
        const char* inside;
        const char* listing;
    };
    const Row rows[] = {
        {"<file name='a.c'/><file name='a.c'/><other><file name='b.c'/></other>", "", "", "p(a.c())"},
        {"<file name='$(ProjectName).c'/><file name='$(ProjectName).h' expand='No'/>", "", "",
         "p(p.c()$(ProjectName).h())"},
        {"<folder name='f' filter='c'><file name='a.c'><folder name='in'/></file></folder>", "",
         "<folder Name='f'/>", "p(f(Common,filter=c()a.c(in())))"},
        {"<folder name='f' filter='c'/>", "",
         "<folder Name='f'><configuration Name='Common' filter='x'/></folder>", "p(f(Common,filter=x()))"},
        {"<folder name='d' path='dir' recurse='No' filter='*.c'/><folder name='n' path='x' choose=''/>", "",
         "", "p(d,exclude=,filter=*.c,path=dir,recurse=Yes(dir/z.c()))"},
        // A source is added on request only.
        {"<file name='n' source='s.c'><folder name='x'/></file>", "", "", "p()"},
        {"<file name='n' source='s.c'><folder name='x'/></file>", "with_source=\"YES\"", "",
         "p,with_source=YES(n(x()))"},
        {"<file name='a.c'/>", "", "<folder Name='f' template_name='t'/>",
         "p(f(a.c())Common,project_type=Library()a.c())"},
        // What is stored wins.
        {"<property name='k' value='v'/>", "", "", "p(Common,k=v,project_type=Library())"},
        {"<property name='k' value='v'/>", "", "<configuration Name='Common' k=''/>",
         "p(Common,k=,project_type=Library())"},
        {"<property name='k' value='' value_win32='w'/><property name='l'/>", "", "",
         "p(Common,k=w,project_type=Library())"},
        {"<property name='k' value='$(ProjectName)' expand='YES' configuration='c'/><property name='l' "
         "value='$(ProjectName)' configuration='c'/>",
         "", "", "p(c,k=p,l=$(ProjectName)())"},
        {"<property name='k' value='v' configuration='$(Configuration) Debug'/><property name='l' value='v' "
         "configuration='One'/>",
         "template_configurations=\";A;B\"", "", "p(A Debug,k=v()B Debug,k=v()One,l=v())"},
        {"<property name='k' value='v' configuration='$(Configuration)'/>", "configurations=\"A;B\"", "",
         "p,configurations=A;B(A,k=v()B,k=v())"},
        {"<property name='k' value='v' configuration='$(Configuration)'/>", "", "",
         "p($(Configuration),k=v())"},
        {"<solutionproperty name='k' value='v' configuration='c'/>", "", "", "p()c,k=v()"},
        {"<file name='f'><property name='k' value='v' configuration='c'/></file>", "", "", "p(f(c,k=v()))"},
        // What could not be read back is not stored.
        {"<property name='Name' value='v'/><property name='a b' value='v'/><configuration name=''/>", "", "",
         "p()"},
        // Configurations of the solution.
        {"<configuration name='A'/>", "", "", "p()"},
        {"<configuration name='$(Configuration)'/>", "template_configurations=\"A;B\"", "", "p()A()B()"},
        {"<configuration name='X $(Configuration)' inherited_configurations='Base;$(Configuration)'/>",
         "template_configurations=\"A;B\"", "",
         "p()X A,inherited_configurations=Base;A()X B,inherited_configurations=Base;B()"},
    };
    QDir(directory.path()).mkdir(q("dir"));
    write("dir/z.c", "");
    for (const Row& row : rows)
        EXPECT_EQ(expanded(row.body, row.attributes, row.inside), row.listing) << row.body;
    EXPECT_EQ(saved(false).find("template_name"), std::string::npos);
}

TEST_F(Templates, ApplyConfigurationTemplates) {
    const std::string templates = R"(<configurations>
        <c name="Debug"><p name="inherited_configurations" value="Base;Debug;None"/><p name="k" value="1"/><p name="" value="1"/>
            <p name="empty"/></c>
        <anything name="Base"><p name="k" value="2"/><p name="inherited_configurations" value="Debug"/></anything>
        </configurations><project template_name="u" type="x"><configuration name="Debug"/><configuration name="Base"/></project>)";
    EXPECT_EQ(
        expanded("<configuration name='Debug'/>", "", "", templates),
        "p()Debug,inherited_configurations=Base;Debug;None,k=1()Base,inherited_configurations=Debug,k=2()");
    // The first project fills the solution's configuration; another has of its own only what differs.
    writeSolution("s.qxProject", R"( templates_file="$(SolutionDir)/templates.xml">
        <configuration Name="Debug" k="1"/><configuration Name="Base" k="3"/>
        <project Name="p" template_name="u"/><project Name="q" template_name="u"/></solution>)");
    load("s.qxProject");
    EXPECT_EQ(listing(),
              "Debug,inherited_configurations=Base;Debug;None,k=1()Base,inherited_configurations=Debug,k=3()"
              "p(Common,project_type=x()Base,k=2())q(Common,project_type=x()Base,k=2())");
}

TEST_F(Templates, MoveProjectsWhereTheirFilesAre) {
    write("groups.xml", R"(<root><group name="g"><groupEntry name="one">
        <property name="Name" value="x"/><property name="project_directory" value="sub"/>
        </groupEntry></group></root>)");
    const std::string file = "<file name='$(ProjectName).c'/>";
    const std::string groups =
        "<property name='property_groups_file_path' value='groups.xml'/><propertygroup name='g' "
        "value='one'/>";
    for (const std::string& mover :
         {groups, std::string("<property name='project_directory' value='sub'/>")}) {
        expanded(file + mover + file);
        ProjectElement* const added = engine.findElement(engine.solution(), q("p.c"));
        ASSERT_TRUE(added);
        added->resolvePaths(commonConfiguration);
        EXPECT_EQ(added->path.normalised(), directory.path() + q("/sub/p.c")) << mover;
        EXPECT_EQ(shape(), "s(p(Common()p.c()))");
    }
}

TEST_F(Templates, LinkSolutionsThatHaveTemplatesThemselves) {
    macros.globalMacros.insert(q("HERE"), directory.path());
    writeSolution("inner.qxProject", R"(><project Name="i" template_name="u"/></solution>)");
    EXPECT_EQ(expanded("<import name='$(HERE)/inner.qxProject'/>", "", "",
                       "<project template_name='u' type='x'><file name='a'/></project>"),
              "p()i(Common,project_type=x()a())");
}

TEST_F(Templates, ComeFromTheLastFileThatHasThem) {
    write("a1.xml",
          "<project template_name='x' type='one'><deep><project template_name='y' "
          "type='two'/></deep></project>");
    write("a2.xml", "<x><project template_name='x' type='three'/></x>");
    write("bad.xml", "<x></y>");
    const QString base = directory.path();
    LoadWork work;
    const ProjectTemplates templates(base + q("/missing.xml;;") + base + q("/a?.xml;") + base + q("/bad.xml"),
                                     work);
    EXPECT_EQ(templates.projectTemplates().names(), (QStringList{q("x"), q("y")}));
    EXPECT_EQ(templates.projectTemplates().find(q("x"))->attribute("type"), "three");
    EXPECT_EQ(templates.projectTemplates().find(q("z")), nullptr);
}

class Chooser : public TemplateNotFoundErrorHandler {
public:
    explicit Chooser(bool answer) : answer_(answer) {}
    bool chooseTemplate(const ProjectTemplates& templates, const QString& projectName,
                        QString& name) override {
        EXPECT_EQ(projectName, u"p");
        name = templates.projectTemplates().names().value(0);
        return answer_;
    }

private:
    bool answer_;
};

TEST_F(Templates, AreMissed) {
    expanded("");
    Chooser yes(true);
    Chooser no(false);
    const std::string head =
        R"( templates_file="$(SolutionDir)/templates.xml"><project Name="p" template_name=)";
    writeSolution("s.qxProject", head + "\"no such\"/></solution>");
    EXPECT_EQ(errorOf(&yes), "no such|project template not found");
    writeSolution("s.qxProject", head + "\"\"/></solution>");
    EXPECT_EQ(errorOf(nullptr), "no template for project |p");
    EXPECT_EQ(errorOf(&no), "no template for project |p");
    EXPECT_EQ(errorOf(&yes), "none");
    EXPECT_EQ(listing(), "p()");
}

TEST_F(Templates, EndWhateverTheyAskFor) {
    std::string deep;
    for (int i = 0; i < 50000; ++i) deep += "<folder name='f'>";
    for (int i = 0; i < 50000; ++i) deep += "</folder>";
    expanded(deep);
    const ProjectElement* last = engine.findElement(engine.solution(), q("p"));
    int depth = 0;
    while (last->firstChildElement() && last->folders.size() == 1) {
        last = last->folders.first();
        ++depth;
    }
    EXPECT_EQ(depth, 50000);

    ProjectTemplateFile file;
    ASSERT_TRUE(
        file.parseText("<project><property name='k' value='v' configuration='$(Configuration)'/></project>"));
    const ProjectTemplateNodeList none;
    LoadWork work;
    work.addTemplateUnits(LoadWork::maxTemplateUnits - 40);
    TemplateExpander expander(none, work, *engine.solution(), *newProject("q"), {q("A"), q("B"), q("C")});
    EXPECT_THROW(expander.expand(*xml::asElement(file.root())), SolutionLoadError);

    // Template files and linked solutions count as files of one load.
    while (work.addFile(0)) {
    }
    EXPECT_THROW(ProjectTemplates(directory.filePath(q("templates.xml")), work), SolutionLoadError);
    EXPECT_THROW(SolutionLoader(engine, work, {}, nullptr, nullptr)
                     .loadFile(directory.path(), q("s.qxProject"), QString()),
                 SolutionLoadError);
}

}  // namespace
