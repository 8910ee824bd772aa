#include "properties/schema.h"

#include "properties/lists.h"
#include "properties/macro_rows.h"
#include "properties/property_row.h"

namespace properties {

namespace {

struct ValuesRow {
    const char* key;
    const char* values;  ///< joined by ";"
};

constexpr ValuesRow valuesRows[] = {
    {"file_open_with", "Default;Text Editor;Binary Editor;Web Browser;HTML Viewer;Run File"},
    {"project_can_build_in_parallel", "Default;Yes;No"},
    {"stage_set_readonly", "Yes;No;Don't"},
    {"combine_set_readonly", "Yes;No;Don't"},
    {"pre_build_command_control", "Always Run;Run When Build Required"},
    {"post_build_command_control", "Always Run;Run When Build Has Occurred"},
    {"linker_printf_fmt_level", "int;long;long long"},
    {"linker_scanf_fmt_level", "int;long;long long"},
    {"linker_printf_fp_enabled", "No;Float;Double"},
    {"debug_target_connection", "Simulator;Q-Probe;GDB Server"},
    {"debug_initial_breakpoint_set_option", "Always;Only With No Breakpoints Set;Never;On Entry"},
    {"linker_output_format", ""},
};

struct LimitsRow {
    const char* key;
    std::uint32_t minimum;
    std::uint32_t maximum;
};

constexpr LimitsRow limitsRows[] = {
    {"debug_threads_max", 1, 1000},
};

struct FilterRow {
    const char* key;
    const char* filter;
};

/// The filters of the dialogs that select a file.
// clang-format off
constexpr FilterRow filterRows[] = {
    {"property_groups_file_path", "XML (*.xml)"},
    {"linker_memory_map_file", "XML (*.xml)"},
    {"linker_section_placement_file", "XML (*.xml)"},
    {"debug_register_definition_file", "XML (*.xml)"},
    {"link_linker_script_file", "LD (*.ld)"},
};
// clang-format on

LimitsRow limitsOf(const QString& key) {
    for (const LimitsRow& row : limitsRows)
        if (key == QLatin1StringView(row.key)) return row;
    return {};
}

/// A class of a row, in the form that its kind asks for.
std::unique_ptr<PropertyClass> makeClass(const QString& key, Kind kind, const QStringList& values,
                                         const QString& page, const QString& group, const QString& title,
                                         const QString& defaultValue, int order, const char* description) {
    QString text = QString::fromUtf8(description);
    if (text.contains(u"%1")) text.replace(QStringLiteral("%1"), values.join(QStringLiteral(", ")));
    switch (kind) {
        case Kind::Boolean:
            return std::make_unique<PropertyClass>(key, page, group, title, text, defaultValue == u"Yes",
                                                   order);
        case Kind::Enumeration:
            return std::make_unique<PropertyClass>(key, kind, values, page, group, title, text, defaultValue,
                                                   order);
        case Kind::IntegerRange:
            return std::make_unique<PropertyClass>(key, kind, limitsOf(key).minimum, limitsOf(key).maximum,
                                                   page, group, title, text, defaultValue.toUInt(), order);
        default:
            return std::make_unique<PropertyClass>(key, kind, page, group, title, text, defaultValue, order);
    }
}

}  // namespace

Schema::Schema(const QStringList& fileTypes, const QStringList& projectTypes)
    : fileTypes_(QStringList{QStringLiteral("Default")} + fileTypes), projectTypes_(projectTypes) {
    makeTables(generalTables(), general);
    makeTables(buildTables(), general);
    makeMacros(generalMacros());
}

Schema::~Schema() = default;

void Schema::addToolRows(const QStringList& loadFileFormats, const QString& genericOptionsFile) {
    loadFileTypes_ = QStringList{QStringLiteral("Detect")} + loadFileFormats;
    attachSteps(generalTables(), general);
    attachSteps(buildTables(), general);
    const auto addTables = [this](const auto& tables) {
        makeTables(tables, tools);
        attachSteps(tables, tools);
    };
    addTables(compilerTables());
    for (const IndexedRow& row : indexedRows()) makeIndexedRow(row);
    addTables(linkerTables());
    addTables(debuggerTables());
    addTables(externalBuildTables());
    makeMacros(buildStepMacros());

    tools.build_generic_options_file_name->defaultValue = genericOptionsFile;
    tools.link_use_linker_script_file->viewFlag = true;
    tools.linker_output_format->viewFlag = true;
    for (const FilterRow& row : filterRows)
        find(QString::fromLatin1(row.key))->specialValue = QString::fromLatin1(row.filter);
}

void Schema::remove(PropertyClass* propertyClass) {
    if (find(propertyClass->name) == propertyClass) byKey_.remove(propertyClass->name);
    for (Set& set : affecting_) set.erase(propertyClass);
}

QStringList Schema::valuesOf(const char* key) const {
    const std::string_view name = key;
    if (name == "file_type") return fileTypes_;
    if (name == "project_type") return projectTypes_;
    if (name == "file_codec") return codecsWithHeadings();
    if (name.ends_with("_flag")) return colours();
    if (name.ends_with("_load_file_type")) return loadFileTypes_;
    for (const ValuesRow& row : valuesRows)
        if (name == row.key) return QString::fromLatin1(row.values).split(u';', Qt::SkipEmptyParts);
    return {};
}

template <typename Members>
void Schema::makeTables(std::span<const PropertyTable<Members>> tables, Members& members) {
    for (const PropertyTable<Members>& table : tables) {
        const QString page = QString::fromLatin1(table.page);
        const QString group = QString::fromLatin1(table.group);
        for (const PropertyRow<Members>& row : table.rows)
            members.*row.member =
                make(makeClass(QString::fromLatin1(row.key), row.kind, valuesOf(row.key), page, group,
                               QString::fromLatin1(row.shortName), QString::fromLatin1(row.defaultValue),
                               row.order, row.description),
                     row.flags);
    }
}

template <typename Members>
void Schema::attachSteps(std::span<const PropertyTable<Members>> tables, const Members& members) {
    for (const PropertyTable<Members>& table : tables)
        for (const PropertyRow<Members>& row : table.rows)
            for (std::uint32_t kind = 0; kind < buildKindCount; ++kind)
                if (row.steps & (1U << kind)) affecting_[kind].insert(members.*row.member);
}

void Schema::makeIndexedRow(const IndexedRow& row) {
    for (int index = 0; index < 4; ++index) {
        const QString suffix = index == 0 ? QString() : QString::number(index);
        (tools.*row.member)[static_cast<std::size_t>(index)] = make(
            makeClass(QString::fromLatin1(row.key) + suffix, row.kind, valuesOf(row.key),
                      QStringLiteral("Debugging"), QString::fromLatin1(row.group),
                      QStringLiteral("%1[%2]").arg(QString::fromLatin1(row.shortName)).arg(index),
                      QString::fromLatin1(row.defaultValue), row.orderOfFirst + 4 * index, row.description),
            0);
    }
}

void Schema::makeMacros(std::span<const MacroRow> rows) {
    for (const MacroRow& row : rows) {
        macros_.push_back(std::make_unique<MacroPropertyClass>(QString::fromLatin1(row.name), false,
                                                               QString::fromLatin1(row.description)));
        macroClasses_.append(macros_.back().get());
    }
}

PropertyClass* Schema::make(std::unique_ptr<PropertyClass> made, std::uint32_t flags) {
    made->readOnly = (flags & RowFlag::ReadOnly) != 0;
    made->perConfiguration = (flags & RowFlag::AllConfigurations) == 0;
    classes_.push_back(std::move(made));
    PropertyClass* const result = classes_.back().get();
    if (!(flags & RowFlag::NotFoundByKey)) add(result);
    return result;
}

}  // namespace properties
