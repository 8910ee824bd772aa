#include "importer/command_text.h"

#include "importer/command_line.h"
#include "importer/compile_translation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace importer;

TEST(CommandText, Arguments) {
    struct Case {
        const char* text;
        std::vector<std::string> arguments;
    };
    const std::vector<Case> cases = {
        {"", {}},
        {" ", {""}},
        {"a", {"a"}},
        {"a b ", {"a", "b"}},
        {"a  b", {"a", "", "b"}},
        {R"("a b" c)", {R"("a)", R"(b" c)"}},
        {R"(a "b c" d)", {"a", R"("b c")", "d"}},
        {R"(x\"y z\")", {R"(x\\"y)", R"(z\\")"}},
        {R"(-DX="\"a b\"" c\d)", {R"(-DX="\\"a b\\"")", R"(c\d)"}},
        {R"(a "b)", {"a", R"("b)"}},
        {"-D\xc3\xa4", {"-D\xc3\xa4"}},
    };
    for (const Case& c : cases) {
        QStringList list{QStringLiteral("kept")};
        splitArguments(c.text, list);
        ASSERT_EQ(list.takeFirst(), QStringLiteral("kept"));
        std::vector<std::string> arguments;
        for (const QString& argument : list) arguments.push_back(argument.toStdString());
        EXPECT_EQ(arguments, c.arguments) << c.text;
    }
}

TEST(CommandText, Commands) {
    struct Case {
        const char *text, *command, *directory;
    };
    const std::vector<Case> cases = {
        {"", "", ""},
        {"run a", "run a", ""},
        {"cd .", "cd .", ""},
        {":", ":", ""},
        {"cd a && run", "run", "a"},
        {"cd a && cd b && run", "run", "b"},
        {"cd /D C:\\p && tool.exe a", "tool.exe a", "C:\\p"},
        {R"(cmd.exe /C "cd /D C:\p && tool.exe a")", "tool.exe a", "C:\\p"},
        {R"(cmd.exe /C "cd /D x && y "z" && w")", R"(y "z" && w)", "x"},
        {R"(cmd.exe /C "run)", "", ""},
        {"cmd.exe /C run", "cmd.exe /C run", ""},
        {"tool \"cd x && y\"", "tool \"y\"", "x"},
        {"cd && x", "x", ""},
        {"cd /D&& x", "x", ""},
        {"cd x&& y", "y", ""},
        {"abcd x && e", "abe", "x"},
        {"ccd x && d y && z", "z", "y"},
        {"cd x &&y", "cd x &&y", ""},
        {"run && cd x", "run && cd x", ""},
    };
    for (const Case& c : cases) {
        std::string command = c.text;
        std::string directory = "old";
        splitCommand(directory, command);
        EXPECT_EQ(command, c.command) << c.text;
        EXPECT_EQ(directory, c.directory) << c.text;
    }
}

TEST(CommandText, ALongChainOfDirectoriesCostsItsLength) {
    std::string command;
    for (int i = 0; i < 1000000; ++i) command += "cd a && ";
    std::string directory;
    splitCommand(directory, command += "run");
    EXPECT_EQ(command, "run");
    EXPECT_EQ(directory, "a");
}

TEST(CompileTranslation, ScansTheOneList) {
    struct Case {
        const char *defines, *includes, *flags;
        const char *all, *definitions, *user, *system, *macros;
    };
    const std::vector<Case> cases = {
        {R"(-DDEBUG -DNAME=\"ab\")", R"(-Iinc -isystem "C:/sys inc")", "-g -imacros cfg.h",
         R"(-DDEBUG;-DNAME=\\"ab\\";-Iinc;-isystem;"C:/sys inc";-g;-imacros;cfg.h)", R"(DEBUG;NAME=\\"ab\\")",
         "inc", "C:/sys inc", "-imacros;cfg.h"},
        {"", "", "", "", "", "", "", ""},
        {"-DA", "-IB", "-DC -ID -DA", "-DA;-IB;-DC;-ID;-DA", "A;C;A", "B;D", "", ""},
        {"-D -DX -D -DY", "", "", "-D;-DX;-D;-DY", "X;;Y", "", "", ""},
        {"", "-I x", "", "-I;x", "", "", "", ""},
        {"", "-isystem/x -isystem", "", "-isystem/x;-isystem", "", "", "", ""},
        {"", "-isystem -Ix -i y", "", "-isystem;-Ix;-i;y", "", "", "-Ix", ""},
        {"", "-isystem \"", "", "-isystem;\"", "", "", "\"", ""},
        {"", "", "-imacrosa.h  -imacros b.h -imacros", "-imacrosa.h;;-imacros;b.h;-imacros", "", "", "",
         "-imacrosa.h;-imacros;b.h"},
    };
    for (const Case& c : cases) {
        CompileTranslator translator;
        const CompileArguments& result = translator.translate(c.defines, c.includes, c.flags);
        EXPECT_EQ(result.all.toStdString(), c.all);
        EXPECT_EQ(result.definitions.toStdString(), c.definitions) << c.all;
        EXPECT_EQ(result.userIncludeDirectories.toStdString(), c.user) << c.all;
        EXPECT_EQ(result.systemIncludeDirectories.toStdString(), c.system) << c.all;
        EXPECT_EQ(result.macroFiles.toStdString(), c.macros) << c.all;
        EXPECT_EQ(&translator.translate(c.defines, c.includes, c.flags), &result) << "translated once";
    }
}

TEST(CommandLine, WordsGoIntoTheirSets) {
    struct Case {
        std::vector<const char*> words;
        TargetSet show, hide;
    };
    const std::vector<Case> cases = {
        {{}, {}, {}},
        {{"all", "a", "b"}, {"all"}, {"a", "b"}},
        {{"-show", "a"}, {"-show"}, {"a"}},
        {{"all", "-show", "a", "-hide", "b", "-show", "c"}, {"all", "a", "c"}, {"b"}},
        {{"x", "-shows", "-SHOW", "x"}, {"x"}, {"-shows", "-SHOW", "x"}},
    };
    for (const Case& c : cases) {
        std::vector<const char*> argv{"manifest_import"};
        argv.insert(argv.end(), c.words.begin(), c.words.end());
        const Targets targets = readCommandLine(static_cast<int>(argv.size()), argv.data());
        EXPECT_EQ(targets.show, c.show);
        EXPECT_EQ(targets.hide, c.hide);
    }
}

}  // namespace
