#include "build/build_fixture.h"
#include "build/cmake_section.h"
#include "build/export_builder.h"

namespace build_test {

namespace {

class ExportTest : public BuildTest {
protected:
    ExportTest() {
        ProjectElement* const library = newProject("my lib", "Externally Built Library");
        set(library, "external_c_compile_command", "cc -DX=$(X) \"$(RelInputPath)\"");
        set(library, "external_archive_command", "ar \"$(RelTargetPath)\"&&cp a \"b \\\"c\"");
        set(library, "build_output_file_name", "$(ProjectName).a");
        set(library, "build_object_file_name", "$(InputName).o");
        addFile(library, "my file.c");
        write("my file.c");
        ProjectElement* const app = newProject("app", "Externally Built Executable");
        set(app, "external_link_command", "ld");
        set(app, "linker_pre_build_command", "before");
        set(app, "build_output_file_name", "app.elf");
        set(app, "project_dependencies", "my lib");
        addFile(app, "ready.o");
        addFile(newProject("broken", "Object file"), "none.c");
    }
};

TEST_F(ExportTest, AScriptHoldsEveryCommand) {
    const std::string base = directory.path().toStdString();
    EXPECT_EQ(exportBuildCommands(engine, engine.solution(), debug, false, false).toStdString(),
              "cd \"" + base +
                  "\"\n"
                  "cc -DX=$(X) \"my file.c\"\n"
                  "ar \"my lib.a\"\n"
                  "/opt/atelis/bin/cp a \"b \\\"c\"\n"
                  "before\n"
                  "ld\n"
                  "ERROR occurred " +
                  base + "/none.c does not exist.\n");
}

TEST_F(ExportTest, AMakefileHoldsARuleForEachNode) {
    const std::string base = directory.path().toStdString();
    EXPECT_EQ(exportMakefile(engine, engine.solution(), debug, false).toStdString(),
              "all: \\\n"
              "  my\\ lib.a\\\n"
              "  app.elf\\\n"
              "  \\\n"
              "\n"
              "-include Output/Debug/Obj/my lib/my file.d\n"
              "my\\ file.o:my\\ file.c\n"
              "\tcc -DX=$$(X) \"my file.c\"\n"
              "\n"
              "my\\ lib.a:\\\n"
              "  my\\ file.o\n"
              "\tar \"my lib.a\"\n"
              "\t/opt/atelis/bin/cp a \"b \\\"c\"\n"
              "\n"
              "app.elf:\\\n"
              "  ready.o\\\n"
              "  my\\ lib.a\n"
              "\tbefore\n"
              "\tld\n"
              "\n"
              "-include Output/Debug/Obj/broken/none.d\n"
              "Output/Debug/Obj/broken/none.o:none.c\n"
              "ERROR occurred " +
                  base + "/none.c does not exist.\n");
}

TEST(CMakeSection, IsTakenApartAndPutTogether) {
    struct Row {
        const char* inside;
        const char* written;
    };
    const Row rows[] = {
        {"", "\n\n"},
        {"target_sources(app PRIVATE a.c\n src/b.c)", "\ntarget_sources(app PRIVATE a.c src/b.c)\n"},
        {"target_compile_options( app PRIVATE -O2 ) set ( x \"y\" ) target_sources(app PRIVATE z)",
         "\ntarget_sources(app PRIVATE z)\ntarget_compile_options(app PRIVATE -O2)\nset\n(\nx\n\"\ny\n\"\n)"},
        {"target_include_directories(app PRIVATE i) target_compile_definitions(app PRIVATE D=1)",
         "\ntarget_compile_definitions(app PRIVATE D=1)\ntarget_include_directories(app PRIVATE i)\n"},
        {"one target_sources(other PRIVATE a) two", "\n\none"},
        {"target_sources(app PRIVATE a", "\n\n"},
    };
    for (const Row& row : rows) {
        const QString text = QStringLiteral("top\n# <<\n") + q(row.inside) + QStringLiteral("\n# >>\nend\n");
        const CMakeSection section = CMakeSection::parse(text, q("# <<"), q("# >>"));
        EXPECT_EQ(section.text().toStdString(), "top\n# <<" + std::string(row.written) + "\n# >>\nend\n");
    }
    const CMakeSection bare = CMakeSection::parse(q("a b"), q("# <<"), q("# >>"));
    EXPECT_EQ(bare.text().toStdString(), "\n\na\nb\n");
}

TEST(Overlay, LosesItsMarkerForEditing) {
    const QString marker = q("// ONDREL Lumen Atelis auto generated\n");
    EXPECT_EQ(overlayForEditing(marker + q("x\ny\n")), q("x\ny\n"));
    EXPECT_EQ(overlayForEditing(q("x\n")), q("x\n"));
    EXPECT_EQ(overlayForEditing(marker.chopped(1)), QString());
    EXPECT_EQ(overlayForWriting(q("x\n")), marker + q("x\n"));
}

}  // namespace

}  // namespace build_test
