#include "properties/tool_description.h"

#include "properties/property_row.h"
#include "properties/schema.h"
#include "xml/owned_chain.h"

namespace properties {

namespace {

using Tools = ToolProperties;

// clang-format off
constexpr ToolRow rows[] = {
    {Tool::Assembler, "assembler", "Assembler", Step::Assemble, &Tools::asm_additional_options, &Tools::asm_additional_options_backup},
    {Tool::Compiler, "compiler", "C/C++", Step::CompileC | Step::CompileCpp, &Tools::c_additional_options, &Tools::c_additional_options_backup},
    {Tool::CCompiler, "c_compiler", "C/C++", Step::CompileC, &Tools::c_only_additional_options, &Tools::c_only_additional_options_backup},
    {Tool::CppCompiler, "cpp_compiler", "C/C++", Step::CompileCpp, &Tools::cpp_only_additional_options, &Tools::cpp_only_additional_options_backup},
    {Tool::Linker, "linker", "Linker", Step::Link, &Tools::linker_additional_options, &Tools::link_additional_options_backup},
};
// clang-format on
static_assert(std::size(rows) == toolCount);

}  // namespace

std::span<const ToolRow> toolRows() {
    return rows;
}

ToolDescription::~ToolDescription() = default;

void ToolDescription::load(const QString& path, const Joined& joined) {
    unload();
    path_ = path;
    if (path.isEmpty()) return;
    GenericOptionsXMLPP2 document;
    if (!document.parseRegularFile(path)) return;
    document.processConditionals(path, {}, true);
    if (!document.root()) return;
    xml::OwnedChain children(document.root()->takeChildren());
    while (!children.isEmpty()) {
        std::unique_ptr<xml::XMLNode> node = children.takeFirst();
        xml::XMLElement* const element = xml::asElement(node.get());
        if (!element) return;
        static_cast<void>(node.release());
        readElement(std::unique_ptr<xml::XMLElement>(element), joined);
    }
}

void ToolDescription::unload() {
    for (auto former = formerDefaults_.rbegin(); former != formerDefaults_.rend(); ++former)
        former->first->defaultValue = former->second;
    formerDefaults_.clear();
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
        schema_.remove(entry->propertyClass.get());
        if (entry->hidden) schema_.add(entry->hidden);
    }
    for (GenericPropertyClassList& list : options_) list.clear();
    groups_.clear();
    entries_.clear();
    owned_.clear();
    groupElements_.clear();
    path_.clear();
}

void ToolDescription::readElement(std::unique_ptr<xml::XMLElement> element, const Joined& joined) {
    if (element->tagName() == "group") {
        addGroup(std::move(element));
    } else if (element->tagName() != "property") {
        return;
    } else if (element->hasAttribute("tool")) {
        addOption(*element, joined);
    } else {
        overrideDefault(*element);
    }
}

void ToolDescription::addOption(const xml::XMLElement& element, const Joined& joined) {
    auto made = std::make_unique<GenericPropertyClass>(element);
    GenericPropertyClass& option = *made;
    enter(std::move(made));
    const QStringList words = element.text("tool").split(u';');
    for (const ToolRow& row : rows) {
        if (!words.contains(QLatin1StringView(row.word))) continue;
        option.setPage(QString::fromLatin1(row.page));
        for (std::uint32_t kind = 0; kind < buildKindCount; ++kind)
            if (row.steps & (1U << kind)) schema_.affecting(static_cast<BuildKind>(kind)).insert(&option);
        options_[static_cast<std::size_t>(row.tool)].append(&option);
        joined(option, row);
    }
}

void ToolDescription::addGroup(std::unique_ptr<xml::XMLElement> element) {
    auto made = std::make_unique<PropertyValueGroupClass>(*element, false);
    groups_.append(made.get());
    groupElements_.push_back(std::move(element));
    enter(std::move(made));
}

void ToolDescription::overrideDefault(const xml::XMLElement& element) {
    PropertyClass* const row = schema_.find(element.text("name"));
    if (!row || !element.hasAttribute("default")) return;
    formerDefaults_.emplace_back(row, row->defaultValue);
    row->defaultValue = element.text("default");
}

/// Keeps a class, and makes it findable unless its key is none.
void ToolDescription::enter(std::unique_ptr<PropertyClass> propertyClass) {
    const bool isFindable = isStorableKey(propertyClass->name);
    PropertyClass* const hidden = isFindable ? schema_.find(propertyClass->name) : nullptr;
    if (isFindable) schema_.add(propertyClass.get());
    owned_.insert(propertyClass.get());
    entries_.push_back({std::move(propertyClass), hidden});
}

}  // namespace properties
