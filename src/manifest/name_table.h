#pragma once

#include "manifest/hash_index.h"
#include "manifest/string_pool.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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

    /// The value under the name, or null. It is valid until the next `set`.
    const Value* find(std::string_view name) const {
        const std::uint32_t position = index_ ? positionByHash(name) : positionByWalk(name);
        return position == HashIndex::none ? nullptr : &entries_[position].value;
    }

    /// Enters the value under the name, in place of an earlier one.
    void set(PooledString name, Value value) {
        if (const Value* earlier = find(name.view())) {
            *const_cast<Value*>(earlier) = value;
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

    std::uint32_t positionByWalk(std::string_view name) const {
        for (std::size_t i = 0; i < entries_.size(); ++i)
            if (entries_[i].name.view() == name) return static_cast<std::uint32_t>(i);
        return HashIndex::none;
    }

    std::uint32_t positionByHash(std::string_view name) const {
        return index_->find(StringPool::hash(name),
                            [&](std::uint32_t i) { return entries_[i].name.view() == name; });
    }

    void indexEntry(std::size_t position) {
        index_->insert(StringPool::hash(entries_[position].name.view()),
                       static_cast<std::uint32_t>(position));
    }

    void buildIndex() {
        index_ = std::make_unique<HashIndex>();
        for (std::size_t i = 0; i < entries_.size(); ++i) indexEntry(i);
    }

    std::vector<Entry> entries_;
    std::unique_ptr<HashIndex> index_;
};

}  // namespace manifest
