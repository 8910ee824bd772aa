#pragma once

#include "manifest/hash_index.h"
#include "manifest/string_pool.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace manifest {

/// Values by name, in order of first mention. A short table is searched from front to back, which suits the
/// handful of names of a build statement; a long one, such as the variables of a file, gets a hash index.
template <class Value>
class NameTable {
public:
    struct Entry {
        PooledString name;
        Value value;
    };

    /// The entries live in `memory`, which outlives the table.
    explicit NameTable(std::pmr::memory_resource* memory) : entries_(memory) {}

    /// The value under the name, or null. It is valid until the next `set`.
    const Value* find(std::string_view name) const {
        const std::size_t position = positionOf(name);
        return position < entries_.size() ? &entries_[position].value : nullptr;
    }

    /// Enters the value under the name, in place of an earlier one.
    void set(PooledString name, Value value) {
        const std::size_t position = positionOf(name.view());
        if (position < entries_.size()) {
            entries_[position].value = value;
            return;
        }
        entries_.push_back({name, value});
        if (index_)
            indexEntry(entries_.size() - 1);
        else if (entries_.size() > longestWalk)
            buildIndex();
    }

    void reserve(std::size_t size) { entries_.reserve(size); }

private:
    static constexpr std::size_t longestWalk = 24;

    struct Position {
        std::uint32_t value = 0xFFFFFFFF;
        friend bool operator==(Position, Position) = default;
    };

    /// The place of the name, or at least the number of entries.
    std::size_t positionOf(std::string_view name) const {
        if (index_) return index_->find(name, textOf()).value;
        std::size_t i = 0;
        while (i < entries_.size() && entries_[i].name.view() != name) ++i;
        return i;
    }

    auto textOf() const {
        return [this](Position position) { return entries_[position.value].name.view(); };
    }

    void indexEntry(std::size_t position) {
        index_->insert({static_cast<std::uint32_t>(position)}, textOf());
    }

    void buildIndex() {
        index_ = std::make_unique<HashIndex<Position>>(StringPool::hash);
        for (std::size_t i = 0; i < entries_.size(); ++i) indexEntry(i);
    }

    std::pmr::vector<Entry> entries_;
    std::unique_ptr<HashIndex<Position>> index_;
};

}  // namespace manifest
