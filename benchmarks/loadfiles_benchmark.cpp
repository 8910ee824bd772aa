#include "loadfiles/image.h"
#include "loadfiles/md5_sum.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace loadfiles;

/// Sections of one byte with gaps; the time an item must stay nearly the same from one size to the next.
void sortSections(benchmark::State& run) {
    const auto count = static_cast<std::uint32_t>(run.range(0));
    const std::uint8_t byte = 1;
    for (auto _ : run) {
        LoadFileSections sections;
        for (std::uint32_t i = 0; i < count; ++i) sections.addBytes(i * 7919U % count * 2U, {&byte, 1});
        sections.sort();
        benchmark::DoNotOptimize(extentOf(sections.list()));
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(sortSections)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

void growSection(benchmark::State& run) {
    const std::string record(16, 'x');
    for (auto _ : run) {
        LoadFileSections sections;
        for (std::uint32_t at = 0; at < run.range(0); at += 16)
            sections.addBytes(at, {reinterpret_cast<const std::uint8_t*>(record.data()), record.size()});
    }
    run.SetBytesProcessed(run.iterations() * run.range(0));
}
BENCHMARK(growSection)->Arg(1 << 16)->Arg(1 << 20)->Arg(1 << 26);

void digest(benchmark::State& run) {
    const std::string bytes(static_cast<std::size_t>(run.range(0)), 'x');
    for (auto _ : run) {
        MD5Sum sum(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                   static_cast<std::uint32_t>(bytes.size()));
        benchmark::DoNotOptimize(sum.digest());
    }
    run.SetBytesProcessed(run.iterations() * run.range(0));
}
BENCHMARK(digest)->Arg(64)->Arg(1 << 20);

}  // namespace
