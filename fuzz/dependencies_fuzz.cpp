// Dependency files: whatever they hold, the names are finite and none is larger than the file.
#include "build/dependency_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const QStringList bare = build::parseDependencies(text, QString());
    const QStringList placed = build::parseDependencies(text, QStringLiteral("/dir"));
    qsizetype total = 0;
    for (const QString& name : bare) total += name.size();
    if (bare.size() != placed.size() || total > static_cast<qsizetype>(size)) std::abort();
    return 0;
}
