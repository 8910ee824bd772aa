#pragma once

#include "properties/build_kind.h"
#include "properties/macro_property_class.h"
#include "properties/property_class.h"
#include "properties/property_members.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <set>
#include <span>
#include <vector>

namespace properties {

template <typename Members>
struct PropertyTable;
struct IndexedRow;
struct MacroRow;

/// Every property that a project can have. It owns the classes of its fixed tables; classes that come from a
/// file at run time are registered here and stay with their owner.
class Schema {
public:
    using Set = std::set<const PropertyClass*>;

    /// Makes the general rows and macros. The lists are the values of `file_type` and `project_type`.
    Schema(const QStringList& fileTypes, const QStringList& projectTypes);
    Schema(const Schema&) = delete;
    Schema& operator=(const Schema&) = delete;
    ~Schema();

    /// Makes the rows and macros of the tools, and enters into the affecting sets what belongs there.
    /// `loadFileFormats` are the names behind "Detect" in the load file types; `genericOptionsFile` is the
    /// default of `build_generic_options_file_name`.
    void addToolRows(const QStringList& loadFileFormats, const QString& genericOptionsFile);

    /// The class of a key, or null. Of two rows with one key the later one is found.
    PropertyClass* find(const QString& key) const { return byKey_.value(key); }
    /// Makes a class findable, in place of another of its key.
    void add(PropertyClass* propertyClass) { byKey_.insert(propertyClass->name, propertyClass); }
    /// Makes a class unfindable and takes it out of all affecting sets.
    void remove(PropertyClass* propertyClass);

    /// The classes of the tables in the order in which they were made, also those that no key finds.
    const std::vector<std::unique_ptr<PropertyClass>>& classes() const { return classes_; }
    const QList<MacroPropertyClass*>& macroClasses() const { return macroClasses_; }

    /// The properties of which a change makes a step of that kind out of date.
    Set& affecting(BuildKind kind) { return affecting_[static_cast<std::size_t>(kind)]; }
    const Set& affecting(BuildKind kind) const { return affecting_[static_cast<std::size_t>(kind)]; }

    GeneralProperties general;
    ToolProperties tools;

private:
    template <typename Members>
    void makeTables(std::span<const PropertyTable<Members>> tables, Members& members);
    template <typename Members>
    void attachSteps(std::span<const PropertyTable<Members>> tables, const Members& members);
    void makeIndexedRow(const IndexedRow& row);
    void makeMacros(std::span<const MacroRow> rows);
    PropertyClass* make(std::unique_ptr<PropertyClass> made, std::uint32_t flags);
    QStringList valuesOf(const char* key) const;

    QStringList fileTypes_;
    QStringList projectTypes_;
    QStringList loadFileTypes_;
    std::vector<std::unique_ptr<PropertyClass>> classes_;
    std::vector<std::unique_ptr<MacroPropertyClass>> macros_;
    QList<MacroPropertyClass*> macroClasses_;
    QHash<QString, PropertyClass*> byKey_;
    std::array<Set, buildKindCount> affecting_;
};

}  // namespace properties
