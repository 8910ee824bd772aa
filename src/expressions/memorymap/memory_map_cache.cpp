#include "expressions/memorymap/memory_map_cache.h"

#include "project/base/path.h"

namespace expressions {

MemoryMap* MemoryMapCache::memoryMap(const QString& path, const QString& macros, bool preProcess) {
    const QString expanded = project::macroEngine ? project::macroEngine->expandGlobal(path) : path;
    const QString file = project::Path(expanded).absFilePath();
    const auto known = maps_.find(file);
    if (known != maps_.end()) {
        if (known->second->isUpToDate() && known->second->macros == macros) return known->second.get();
        maps_.erase(known);
    }
    auto map = std::make_unique<MemoryMap>(preProcess, macros);
    if (!map->loadFile(file)) return nullptr;
    return (maps_[file] = std::move(map)).get();
}

}  // namespace expressions
