#include "manifest/manifest_parser.h"
#include "manifest/state.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace manifest;

/// Compile statements as CMake writes them, each with a name of its own and few distinct flags.
std::string statements(std::int64_t count) {
    std::string text = "rule C_COMPILER\n  command = cc $DEFINES $INCLUDES $FLAGS -o $out -c $in\n";
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += "build CMakeFiles/app.dir/src/module" + number + ".c.o: C_COMPILER ../src/module" + number +
                ".c || order\n  DEFINES = -DDEBUG -DMODULE=" + std::to_string(i % 100) +
                "\n  DEP_FILE = CMakeFiles/app.dir/src/module" + number +
                ".c.o.d\n  FLAGS = -mcpu=cortex-m4 -mthumb -Os -g -Wall -Wextra -std=gnu11\n"
                "  INCLUDES = -I../Core/Inc -I../Drivers/HAL/Inc -isystem ../Drivers/CMSIS/Include\n"
                "  OBJECT_DIR = CMakeFiles/app.dir\n  OBJECT_FILE_DIR = CMakeFiles/app.dir/src\n\n";
    }
    return text;
}

class TextReader : public FileReader {
public:
    explicit TextReader(const std::string& text) : text_(text) {}

    Status readFile(const std::string&, std::string* contents, std::string*) override {
        *contents = text_;
        return Status::Okay;
    }

private:
    const std::string& text_;
};

void lexValues(benchmark::State& run) {
    const std::string line(static_cast<std::size_t>(run.range(0)), 'x');
    const std::string text = line + "\n";
    EvalString value;
    std::string error;
    for (auto _ : run) {
        ManifestLexer lexer;
        lexer.start("f", {text.c_str(), text.size() + 1});
        value.clear();
        benchmark::DoNotOptimize(lexer.readValue(&value, &error));
    }
    run.SetBytesProcessed(run.iterations() * run.range(0));
}
BENCHMARK(lexValues)->Arg(16)->Arg(256)->Arg(8192);

/// The time an item must stay the same from one size to the next.
void parseStatements(benchmark::State& run) {
    const std::string text = statements(run.range(0));
    TextReader reader(text);
    for (auto _ : run) {
        State state;
        std::string error;
        if (!ManifestParser(&state, &reader).load("build.ninja", &error, nullptr))
            run.SkipWithError(error.c_str());
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parseStatements)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// A text that the pool holds already, which is the common case.
void internKnownText(benchmark::State& run) {
    std::pmr::monotonic_buffer_resource memory;
    StringPool pool(memory);
    const std::string text(static_cast<std::size_t>(run.range(0)), 'x');
    pool.intern(text);
    for (auto _ : run) benchmark::DoNotOptimize(pool.intern(text));
    run.SetBytesProcessed(run.iterations() * run.range(0));
}
BENCHMARK(internKnownText)->Arg(16)->Arg(256)->Arg(8192);

}  // namespace
