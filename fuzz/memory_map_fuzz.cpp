// Memory map files: any file loads or is refused, and its numbers are the same each time.
#include "expressions/memorymap/memory_map.h"
#include "memory_file.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace expressions;
    static project::MacroEngine macros;
    static const fuzz::MemoryFile file;
    project::macroEngine = &macros;
    file.fill(data, size);
    const QString path = QString::fromStdString(file.path());
    MemoryMap first(true, QStringLiteral("A=1;B=x"));
    MemoryMap second(true, QStringLiteral("A=1;B=x"));
    if (first.load(path) != second.load(path)) __builtin_trap();
    const QList<MemoryMapElement*> segments = first.memorySegments(false);
    const QList<MemoryMapElement*> others = second.memorySegments(true);
    if (segments.size() != others.size()) __builtin_trap();
    for (qsizetype i = 0; i < segments.size(); ++i)
        if (segments[i]->start != others[segments.size() - 1 - i]->start) __builtin_trap();
    return 0;
}
