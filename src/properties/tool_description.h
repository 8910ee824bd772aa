#pragma once

#include "properties/generic_property_class.h"
#include "properties/property_members.h"
#include "properties/property_value_group_class.h"
#include "xml/preprocessor.h"

#include <QList>
#include <QSet>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace properties {

class Schema;

/// The tools whose options a file can describe.
enum class Tool { Assembler, Compiler, CCompiler, CppCompiler, Linker };
inline constexpr std::size_t toolCount = 5;

/// What a word of the attribute `tool` does.
struct ToolRow {
    Tool tool;
    const char* word;
    const char* page;
    std::uint32_t steps;                         ///< bits of Step: the sets that the class joins
    PropertyClass* ToolProperties::*optionList;  ///< where users put options that had no class of their own
    PropertyClass* ToolProperties::*backup;      ///< keeps that list as it was before any option moved
};
std::span<const ToolRow> toolRows();

/// The document of a generic options file. What its directives complain of is not told.
class GenericOptionsXMLPP2 : public xml::XMLPP2 {
public:
    void warning(const QString&) override {}
};

using GenericPropertyClassList = QList<const GenericPropertyClass*>;
using PropertyValueGroupClassList = QList<const PropertyValueGroupClass*>;

/// The generic options file in force. It describes the options of particular tools as properties of their
/// own, overrides defaults of the schema, and adds groups. The object owns what it adds to the schema, and
/// takes it out again before it reads another file.
class ToolDescription {
public:
    /// Is told of each class and each tool whose options it joins.
    using Joined = std::function<void(const GenericPropertyClass&, const ToolRow&)>;

    explicit ToolDescription(Schema& schema) : schema_(schema) {}
    ToolDescription(const ToolDescription&) = delete;
    ToolDescription& operator=(const ToolDescription&) = delete;
    ~ToolDescription();

    /// Reads a file in place of the one in force; an empty path only ends that one. A file that can't be read
    /// has no classes, and counts as read.
    void load(const QString& path, const Joined& joined);
    /// Puts the schema back as it was. Classes of the file are gone then.
    void unload();

    /// Of the file read last, as given; empty for none.
    const QString& path() const { return path_; }
    /// The options of a tool, in the order of the file.
    const GenericPropertyClassList& options(Tool tool) const {
        return options_[static_cast<std::size_t>(tool)];
    }
    const PropertyValueGroupClassList& groups() const { return groups_; }
    /// Whether the class is of this file.
    bool owns(const PropertyClass* propertyClass) const { return owned_.contains(propertyClass); }

private:
    void readElement(std::unique_ptr<xml::XMLElement> element, const Joined& joined);
    void addOption(const xml::XMLElement& element, const Joined& joined);
    void addGroup(std::unique_ptr<xml::XMLElement> element);
    void overrideDefault(const xml::XMLElement& element);
    void enter(std::unique_ptr<PropertyClass> propertyClass);

    struct Entry {
        std::unique_ptr<PropertyClass> propertyClass;
        PropertyClass* hidden;  ///< what its key found before, or null
    };

    Schema& schema_;
    QString path_;
    std::array<GenericPropertyClassList, toolCount> options_;
    PropertyValueGroupClassList groups_;
    std::vector<Entry> entries_;
    QSet<const PropertyClass*> owned_;
    std::vector<std::unique_ptr<xml::XMLElement>> groupElements_;
    std::vector<std::pair<PropertyClass*, QString>> formerDefaults_;
};

}  // namespace properties
