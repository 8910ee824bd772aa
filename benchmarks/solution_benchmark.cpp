// Reads, asks and writes the solution that the environment variable BENCH_SOLUTION names, its parse beside
// other parsers that build a tree.
#include "project/base/macro_engine.h"
#include "project/solution_document.h"
#include "project/standard_project_system.h"
#include "project/tree_walk.h"
#include "xml/document.h"

#include <QDomDocument>
#include <QFile>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <cstdlib>
#include <pugixml.hpp>

namespace {

using namespace project;

const char* solutionFile() {
    const char* name = std::getenv("BENCH_SOLUTION");
    if (name == nullptr) std::abort();
    return name;
}

class Engine : public StandardProjectSystem {
public:
    Engine() : StandardProjectSystem(QString(), {}, QString()) {
        projectSystem = this;
        macroEngine = &macros_;
    }
    ~Engine() override {
        projectSystem = nullptr;
        macroEngine = nullptr;
    }
    QStringList baseCodeModelArguments(ProjectElement*, const QString&) override { return {}; }
    void load() { loadSolution(QString::fromUtf8(solutionFile()), nullptr, nullptr, nullptr, true); }

private:
    MacroEngine macros_;
};

void parseOurs(benchmark::State& run) {
    for (auto _ : run) {
        xml::XMLDocument document;
        benchmark::DoNotOptimize(document.parseFile(solutionFile()));
    }
}

void parseNodes(benchmark::State& run) {
    for (auto _ : run) {
        ProjectSystemXMLPP2 document;
        benchmark::DoNotOptimize(document.parseFile(solutionFile()));
    }
}

void parseLibxml2(benchmark::State& run) {
    for (auto _ : run) xmlFreeDoc(xmlReadFile(solutionFile(), nullptr, XML_PARSE_HUGE | XML_PARSE_NOBLANKS));
}

void parsePugixml(benchmark::State& run) {
    for (auto _ : run) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_file(solutionFile()));
    }
}

void parseQDom(benchmark::State& run) {
    for (auto _ : run) {
        QFile file(QString::fromUtf8(solutionFile()));
        QDomDocument document;
        if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) std::abort();
    }
}

void load(benchmark::State& run) {
    Engine engine;
    for (auto _ : run) engine.load();
}

void save(benchmark::State& run) {
    Engine engine;
    engine.load();
    const QString copy = QString::fromUtf8(solutionFile()) + QStringLiteral(".copy");
    QByteArray error;
    for (auto _ : run)
        if (!writeSolutionFile(*engine.solution(), copy, false, error)) std::abort();
    QFile::remove(copy);
}

/// A file five folders deep whose value stands at the solution.
struct DeepFile {
    DeepFile() {
        ProjectElement* const solution = engine.newSolution(QStringLiteral("s"), QStringLiteral("/tmp"));
        ProjectElement* node =
            engine.newProject(solution, QStringLiteral("p"), QString(), QStringLiteral("Executable"));
        for (int i = 0; i < 4; ++i) node = engine.addFolder(node, QStringLiteral("f"), QString());
        file = engine.addFile(node, QStringLiteral("a.c"));
        propertyClass = engine.schema().find(QStringLiteral("file_type"));
        engine.setPropertyValue(solution, propertyClass, commonConfiguration, QStringLiteral("C"));
    }

    Engine engine;
    ProjectElement* file;
    const PropertyClass* propertyClass;
};

void lookUp(benchmark::State& run) {
    DeepFile deep;
    const QString debug = QStringLiteral("Debug");
    for (auto _ : run)
        benchmark::DoNotOptimize(deep.engine.propertyValue(deep.file, deep.propertyClass, debug));
}

void expandWithoutMacros(benchmark::State& run) {
    DeepFile deep;
    const QString text = QStringLiteral("Sources/main.c");
    for (auto _ : run)
        benchmark::DoNotOptimize(deep.engine.expandMacros(deep.file, commonConfiguration, text));
}

void expandWithMacros(benchmark::State& run) {
    DeepFile deep;
    const QString text = QStringLiteral("$(ProjectDir)/$(ProjectName)/main.c");
    for (auto _ : run)
        benchmark::DoNotOptimize(deep.engine.expandMacros(deep.file, commonConfiguration, text));
}

BENCHMARK(parseOurs)->Unit(benchmark::kMillisecond);
BENCHMARK(parseNodes)->Unit(benchmark::kMillisecond);
BENCHMARK(parseLibxml2)->Unit(benchmark::kMillisecond);
BENCHMARK(parsePugixml)->Unit(benchmark::kMillisecond);
BENCHMARK(parseQDom)->Unit(benchmark::kMillisecond);
BENCHMARK(load)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Unit(benchmark::kMillisecond);
BENCHMARK(lookUp);
BENCHMARK(expandWithoutMacros);
BENCHMARK(expandWithMacros);

}  // namespace
