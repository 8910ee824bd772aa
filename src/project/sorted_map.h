#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <algorithm>
#include <utility>

namespace project {

/// A small map with text keys, sorted by UTF-16 code unit and kept in one block of memory: a project tree
/// holds millions of them, most with a handful of entries. Copies share their entries until one is changed.
template <typename Value>
class SortedMap {
public:
    struct Entry {
        QString key;
        Value value;
    };
    using const_iterator = typename QList<Entry>::const_iterator;

    bool isEmpty() const { return entries_.isEmpty(); }
    qsizetype size() const { return entries_.size(); }
    const_iterator begin() const { return entries_.cbegin(); }
    const_iterator end() const { return entries_.cend(); }

    /// The value under `key`, or null; valid until the next change.
    const Value* find(QStringView key) const {
        const auto entry = lowerBound(key);
        return entry != end() && entry->key == key ? &entry->value : nullptr;
    }
    bool contains(QStringView key) const { return find(key) != nullptr; }
    /// The value under `key`, or a default-constructed one: a null text, a null pointer.
    Value value(QStringView key) const {
        const Value* found = find(key);
        return found ? *found : Value();
    }

    /// Sets or replaces.
    void insert(const QString& key, Value value) {
        const qsizetype place = lowerBound(key) - begin();
        if (place < size() && entries_.at(place).key == key) {
            entries_[place].value = std::move(value);
        } else {
            makeRoom();
            entries_.insert(place, Entry{key, std::move(value)});
        }
    }

    /// Answers whether there was such an entry.
    bool remove(QStringView key) {
        const auto entry = lowerBound(key);
        if (entry == end() || entry->key != key) return false;
        entries_.remove(entry - begin());
        return true;
    }

    /// Replaces the content by `entries`, in any order; of equal keys the last one counts. Costs one sort.
    void assign(QList<Entry> entries) {
        std::stable_sort(entries.begin(), entries.end(),
                         [](const Entry& a, const Entry& b) { return a.key < b.key; });
        entries_.clear();
        entries_.reserve(entries.size());
        for (Entry& entry : entries) {
            if (!entries_.isEmpty() && entries_.last().key == entry.key) entries_.removeLast();
            entries_.append(std::move(entry));
        }
    }

private:
    /// Small maps grow by a few entries at a time: doubling would cost a large tree a third of its memory.
    void makeRoom() {
        if (entries_.size() == entries_.capacity())
            entries_.reserve(
                entries_.isEmpty() ? 1 : entries_.size() + std::max<qsizetype>(3, entries_.size() / 2));
    }

    const_iterator lowerBound(QStringView key) const {
        return std::lower_bound(begin(), end(), key, [](const Entry& entry, QStringView name) {
            return QStringView(entry.key) < name;
        });
    }

    QList<Entry> entries_;
};

}  // namespace project
