// The commands that open a solution: what they print, what they change, and how they refuse.
#include "cli/program.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace cli_test;

class SolutionCommand : public testing::Test {
protected:
    struct Row {
        const char* words;  ///< the command and its words; @ stands for the solution
        int status;
        const char* output;
        const char* errors = "";
    };

    SolutionCommand() {
        write("demo.qxProject",
              "<!DOCTYPE Kestrelhaus_Project_File>\n"
              "<solution Name=\"demo\" target=\"8\" version=\"2\">\n"
              "  <configuration Name=\"Debug\" inherited_configurations=\"Base\" />\n"
              "  <configuration Name=\"Base\" hidden=\"Yes\" />\n"
              "  <configuration Name=\"Common\" c_preprocessor_definitions=\"A\" />\n"
              "  <project Name=\"app\">\n"
              "    <configuration\n"
              "      Name=\"Common\"\n"
              "      project_dependencies=\"glue;lib\"\n"
              "      project_type=\"Executable\" />\n"
              "    <folder Name=\"Source Files\">\n"
              "      <file file_name=\"src/main.c\">\n"
              "        <configuration\n"
              "          Name=\"Debug\"\n"
              "          c_preprocessor_definitions=\"B;$(ProjectName)\" />\n"
              "      </file>\n"
              "      <file Name=\"main.c\" file_name=\"src/notes\" />\n"
              "    </folder>\n"
              "  </project>\n"
              "  <project Name=\"glue\" hidden=\"Yes\">\n"
              "    <configuration Name=\"Common\" project_dependencies=\"glue2;lib(other)\" />\n"
              "  </project>\n"
              "  <project Name=\"glue2\" hidden=\"Yes\">\n"
              "    <configuration Name=\"Common\" project_dependencies=\"glue;lib\" />\n"
              "  </project>\n"
              "  <project Name=\"lib\">\n"
              "    <configuration Name=\"Common\" project_type=\"Library\" />\n"
              "  </project>\n"
              "  <import file_name=\"other.qxProject\" can_modify_solution=\"No\" />\n"
              "</solution>\n");
        write("other.qxProject",
              "<!DOCTYPE Kestrelhaus_Project_File>\n"
              "<solution Name=\"other\" target=\"8\" version=\"2\">\n"
              "  <project Name=\"lib\">\n"
              "    <configuration Name=\"Common\" project_type=\"\" />\n"
              "  </project>\n"
              "</solution>\n");
    }

    void write(const char* name, const QByteArray& text) {
        QFile file(directory.filePath(QString::fromUtf8(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    std::string read(const char* name) {
        QFile file(directory.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }
    /// Runs a command in the directory; in what it prints, the directory is left out.
    Outcome run(std::string words) {
        const std::string path = directory.path().toStdString();
        for (std::size_t at = words.find('@'); at != std::string::npos; at = words.find('@'))
            words.replace(at, 1, "demo.qxProject");
        Outcome outcome = atelis(words, path);
        for (std::string* text : {&outcome.output, &outcome.errors})
            for (std::size_t at = text->find(path + "/"); at != std::string::npos;
                 at = text->find(path + "/"))
                text->erase(at, path.size() + 1);
        return outcome;
    }
    void check(const std::initializer_list<Row>& rows) {
        for (const Row& row : rows) {
            const Outcome outcome = run(row.words);
            EXPECT_EQ(outcome.status, row.status) << row.words;
            EXPECT_EQ(outcome.output, row.output) << row.words;
            EXPECT_EQ(outcome.errors, row.errors) << row.words;
        }
    }

    QTemporaryDir directory;
};

TEST_F(SolutionCommand, TreeShowsNodes) {
    check({
        {"tree @", 0,
         "solution demo\n"
         "  project app [Executable]\n"
         "    folder Source Files\n"
         "      file main.c [C]\n"
         "      file main.c\n"
         "  project glue [Executable] (hidden)\n"
         "  project glue2 [Executable] (hidden)\n"
         "  project lib [Library]\n"
         "  solution other\n"
         "    project lib\n"},
        {"tree @ -p app -f src/main.c --configurations", 0,
         "file main.c [C]\n"
         "  configuration Debug\n"
         "    c_preprocessor_definitions=\"B;$(ProjectName)\"\n"},
        {"tree @ -p 'lib(other)'", 0, "project lib\n"},
        {"tree @ -p nop", 1, "", "atelis: error: no project \"nop\"\n"},
        {"tree @ -p app -F nof", 1, "", "atelis: error: no folder \"nof\"\n"},
        {"tree @ -p app -f nof.c", 1, "", "atelis: error: no file \"nof.c\"\n"},
        {"tree @ -f main.c", 2, "", "atelis: error: -f requires -p\n"},
        {"tree none.qxProject", 1, "", "atelis: error: none.qxProject: none.qxProject does not exist\n"},
    });
    write("bad.qxProject", "<!DOCTYPE Kestrelhaus_Project_File>\n<solution>\n</project>");
    check({{"tree bad.qxProject", 1, "", "atelis: error: bad.qxProject:3: tagName mismatch\n"}});
}

TEST_F(SolutionCommand, TreeIsIndentedOnlySoFar) {
    constexpr int depth = 1200;
    write("deep.qxProject",
          "<!DOCTYPE Kestrelhaus_Project_File>\n<solution Name=\"s\" target=\"8\" version=\"2\">"
          "<project Name=\"p\">" +
              QByteArray("<folder Name=\"f\">").repeated(depth) + "<file file_name=\"a.c\"/>" +
              QByteArray("</folder>").repeated(depth) + "</project></solution>");
    const std::string output = run("tree deep.qxProject").output;
    EXPECT_NE(output.find("\n" + std::string(2000, ' ') + "file a.c [C]\n"), std::string::npos);
    EXPECT_EQ(output.find(std::string(2001, ' ')), std::string::npos);
}

TEST_F(SolutionCommand, GetPrintsValues) {
    check({
        {"get @ c_preprocessor_definitions -p app -f src/main.c -c Debug", 0, "A;B;$(ProjectName)\n"},
        {"get @ c_preprocessor_definitions -p app -f src/main.c -c Debug --list --expand", 0, "A\nB\napp\n"},
        {"get @ c_preprocessor_definitions -p app -f src/main.c -c Debug --trace", 0,
         "B;$(ProjectName)\tDebug\tmain.c\nA\tCommon\tdemo\n"},
        {"get @ project_type -p app --local", 0, "Executable\n"},
        {"get @ project_type -p app -c Debug --local", 1, ""},
        {"get @ file_type -p app -f src/main.c --trace", 0, "Default\t\t\n"},
        {"get @ no_such_key", 1, "", "atelis: error: no property \"no_such_key\"\n"},
        {"expand @ '$(ProjectName)/$(None:x)$$' -p app", 0, "app/x$\n"},
        {"-D NAME=1 expand @ '$(NAME)'", 0, "1\n"},
        {"--user-dir /u --atelis-dir /a expand @ '$(AtelisDir) $(AtelisUserDir) $(PackagesDir)'", 0,
         "/a /u /u/packages\n"},
    });
}

TEST_F(SolutionCommand, ChangesTouchOneLine) {
    std::string expected = read("demo.qxProject");
    const std::string before = expected;
    check({{"set @ project_type Library -p app", 0, ""}});
    expected.replace(expected.find("\"Executable\""), 12, "\"Library\"");
    EXPECT_EQ(read("demo.qxProject"), expected);
    check({{"set @ project_type Executable -p app", 0, ""},
           {"set @ c_preprocessor_definitions X -p lib -c Debug", 0, ""},
           {"clear @ c_preprocessor_definitions -p lib -c Debug", 0, ""}});
    EXPECT_EQ(read("demo.qxProject"), before);
    check({
        {"set @ project_type Library -p 'lib(other)'", 1, "",
         "atelis: error: solution \"other\" cannot be modified\n"},
        {"set @ environment_variables A=1 -c Debug", 1, "",
         "atelis: error: property \"environment_variables\" is the same in all configurations\n"},
        {"set @ nokey 1", 1, "", "atelis: error: no property \"nokey\"\n"},
        {"set @ project_type", 2, "", "atelis: error: VALUE is required\n"},
    });
    EXPECT_EQ(read("demo.qxProject"), before);
}

TEST_F(SolutionCommand, Configurations) {
    check({
        {"configurations @", 0, "Debug\n"},
        {"configurations @ --private", 0, "Base\n"},
        {"configurations @ --all", 0, "Base\nCommon\nDebug\n"},
        {"rename-configuration @ Nix Other", 1, "", "atelis: error: no configuration \"Nix\"\n"},
        {"rename-configuration @ Common Other", 1, "", "atelis: error: Common cannot be renamed\n"},
        {"rename-configuration @ Debug ''", 2, "", "atelis: error: NEW: a name is needed\n"},
        {"rename-configuration @ Debug Base", 1, "", "atelis: error: Base is already in use\n"},
    });
    check({{"inherit @ Debug Base Other", 0, ""}});
    EXPECT_NE(read("demo.qxProject").find("inherited_configurations=\"Base;Other\""), std::string::npos);
}

TEST_F(SolutionCommand, RenamesAConfigurationEverywhere) {
    write("demo.qxProject",
          QByteArray::fromStdString(read("demo.qxProject")).replace(" can_modify_solution=\"No\"", ""));
    check({{"rename-configuration @ Base Core", 0, ""}, {"configurations @ --private", 0, "Core\n"}});
    EXPECT_NE(read("demo.qxProject").find("inherited_configurations=\"Core\""), std::string::npos);
}

TEST_F(SolutionCommand, GraphBridgesHiddenProjects) {
    check({
        {"graph @", 0,
         "digraph \"demo\" {\n"
         "    \"app\";\n    \"lib\";\n    \"lib(other)\";\n"
         "    \"app\" -> \"lib\";\n    \"app\" -> \"lib(other)\";\n"
         "}\n"},
        {"graph @ --all", 0,
         "digraph \"demo\" {\n"
         "    \"app\";\n    \"glue\";\n    \"glue2\";\n    \"lib\";\n    \"lib(other)\";\n"
         "    \"app\" -> \"glue\";\n    \"app\" -> \"lib\";\n"
         "    \"glue\" -> \"glue2\";\n    \"glue\" -> \"lib(other)\";\n"
         "    \"glue2\" -> \"glue\";\n    \"glue2\" -> \"lib\";\n"
         "}\n"},
    });
}

TEST_F(SolutionCommand, SolutionsAreMadeFromNothing) {
    check({
        {"new made", 0, ""},
        {"new-project made.qxProject core --type Library --directory sub/core", 0, ""},
        {"set made.qxProject c_preprocessor_definitions A=1 -p core -c Debug", 0, ""},
        {"link made.qxProject other.qxProject", 0, ""},
        {"link made.qxProject other.qxProject", 0, ""},
        {"new made.qxProject", 1, "", "atelis: error: made.qxProject already exists\n"},
        {"new-project made.qxProject core --type Library", 1, "",
         "atelis: error: project \"core\" already exists\n"},
        {"new-project made.qxProject x --type Nix", 1, "", "atelis: error: no project type \"Nix\"\n"},
        {"link made.qxProject none.qxProject", 1, "",
         "atelis: error: none.qxProject: none.qxProject does not exist\n"},
        {"link made.qxProject made.qxProject", 1, "",
         "atelis: error: made.qxProject: made.qxProject solution already loaded\n"},
    });
    EXPECT_EQ(read("made.qxProject"),
              "<!DOCTYPE Kestrelhaus_Project_File>\n"
              "<solution Name=\"made\" target=\"8\" version=\"2\">\n"
              "  <project Name=\"core\">\n"
              "    <configuration\n"
              "      Name=\"Common\"\n"
              "      project_directory=\"sub/core\"\n"
              "      project_type=\"Library\" />\n"
              "    <configuration Name=\"Debug\" c_preprocessor_definitions=\"A=1\" />\n"
              "  </project>\n"
              "  <import file_name=\"other.qxProject\" />\n"
              "</solution>\n");
}

TEST_F(SolutionCommand, PreprocessCarriesOutDirectives) {
    write("d.xml", "<r><if A='1'><a v='$(A)'/></if><ifnot/></r>");
    write("e.xml", "<r>\n<a>\n</b></r>");
    check({
        {"preprocess d.xml --macros 'A=1' --expand", 0, "<r>\n  <a v=\"1\" />\n  <ifnot/>\n</r>\n",
         "atelis: warning: XmlPP::processConditionals(): one condition required for <if[not]>\n"},
        {"preprocess - --macros A=2 < d.xml", 0, "<r>\n  <ifnot/>\n</r>\n",
         "atelis: warning: XmlPP::processConditionals(): one condition required for <if[not]>\n"},
        {"preprocess e.xml", 1, "", "atelis: error: e.xml:3: tagName mismatch\n"},
        {"preprocess none.xml", 1, "", "atelis: error: none.xml: couldn't read none.xml\n"},
    });
}

}  // namespace
