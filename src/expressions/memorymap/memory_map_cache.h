#pragma once

#include "expressions/memorymap/memory_map.h"

#include <QString>

#include <map>
#include <memory>

namespace expressions {

/// The memory maps that have been read, by the path of their file. A map is read again when its file, one
/// that it imports, or the macros have changed; the map of before is then gone.
class MemoryMapCache {
public:
    /// The map of a file, or null when it cannot be read or has no root; it belongs to the cache. Macros in
    /// `path` are expanded. `macros` and `preProcess` as for MemoryMap; the latter counts when the file is
    /// read.
    MemoryMap* memoryMap(const QString& path, const QString& macros, bool preProcess);

private:
    std::map<QString, std::unique_ptr<MemoryMap>> maps_;
};

}  // namespace expressions
