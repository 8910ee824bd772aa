#include "cli/schema_command.h"

#include "cli/output.h"
#include "properties/lists.h"
#include "properties/schema.h"

#include <QString>
#include <QStringList>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

using properties::BuildKind;
using properties::PropertyClass;
using properties::Schema;

struct SchemaOptions {
    std::string key;
    bool hasKey = false;
    bool macros = false;
};

QString buildKinds(const Schema& schema, const PropertyClass& property) {
    QStringList numbers;
    for (std::uint32_t kind = 0; kind < properties::buildKindCount; ++kind)
        if (schema.affecting(static_cast<BuildKind>(kind)).contains(&property))
            numbers.append(QString::number(kind));
    return numbers.join(u',');
}

QString flags(const Schema& schema, const PropertyClass& property) {
    QString letters;
    if (property.readOnly) letters += u'R';
    if (!property.perConfiguration) letters += u'C';
    if (!schema.find(property.name)) letters += u'F';
    return letters;
}

/// One of the limits; nothing when the property has none.
QString limit(const PropertyClass& property, std::uint32_t value) {
    return property.minimum != 0 || property.maximum != 0 ? QString::number(value) : QString();
}

/// What is told of a property. The listing leaves out what few properties have.
struct Field {
    const char* name;
    bool isListed;
    QString (*text)(const Schema& schema, const PropertyClass& property);
};

// clang-format off
constexpr Field fields[] = {
    {"key", true, [](const Schema&, const PropertyClass& p) { return p.name; }},
    {"kind", true, [](const Schema&, const PropertyClass& p) { return properties::kindName(p.kind); }},
    {"page", true, [](const Schema&, const PropertyClass& p) { return p.page; }},
    {"group", true, [](const Schema&, const PropertyClass& p) { return p.group; }},
    {"short name", true, [](const Schema&, const PropertyClass& p) { return p.shortName; }},
    {"default", true, [](const Schema&, const PropertyClass& p) { return p.defaultValue; }},
    {"special value", false, [](const Schema&, const PropertyClass& p) { return p.specialValue; }},
    {"order", true, [](const Schema&, const PropertyClass& p) { return QString::number(p.order); }},
    {"build kinds", true, buildKinds},
    {"flags", true, flags},
    {"values", true, [](const Schema&, const PropertyClass& p) { return p.enumerationValues.join(u';'); }},
    {"headings", false, [](const Schema&, const PropertyClass& p) { return p.enumerationGroups.join(u';'); }},
    {"minimum", true, [](const Schema&, const PropertyClass& p) { return limit(p, p.minimum); }},
    {"maximum", true, [](const Schema&, const PropertyClass& p) { return limit(p, p.maximum); }},
    {"description", true, [](const Schema&, const PropertyClass& p) { return p.longDescription(); }},
};
// clang-format on

void printListing(const Schema& schema, Output& output) {
    for (const auto& property : schema.classes()) {
        QStringList texts;
        for (const Field& field : fields)
            if (field.isListed) texts.append(field.text(schema, *property));
        output << texts.join(u'\t').toStdString() << "\n";
    }
}

void printProperty(const Schema& schema, const PropertyClass& property, Output& output) {
    for (const Field& field : fields)
        output << field.name << "\t" << field.text(schema, property).toStdString() << "\n";
}

void printMacros(const Schema& schema, Output& output) {
    for (const properties::MacroPropertyClass* macro : schema.macroClasses())
        output << macro->macroName().toStdString() << "\t" << macro->longDescription().toStdString() << "\n";
}

int run(const SchemaOptions& options) {
    Schema schema(properties::fileTypes(), properties::projectTypes());
    schema.addToolRows({}, QString());
    Output output;
    if (options.macros) {
        printMacros(schema, output);
    } else if (!options.hasKey) {
        printListing(schema, output);
    } else if (const PropertyClass* property = schema.find(QString::fromStdString(options.key))) {
        printProperty(schema, *property, output);
    } else {
        reportError("no property \"" + options.key + "\"");
        return 1;
    }
    return output.finish() ? 0 : 1;
}

}  // namespace

void addSchemaCommand(CLI::App& app, int& exitStatus) {
    const auto options = std::make_shared<SchemaOptions>();
    CLI::App* command = app.add_subcommand("schema", "Lists the properties that a project can have");
    CLI::Option* key =
        command->add_option("KEY", options->key, "Shows this property, a field a line")->type_name("");
    command->add_flag("--macros", options->macros, "Lists the built-in macros")->excludes(key);
    command->callback([options, key, &exitStatus] {
        options->hasKey = key->count() > 0;
        exitStatus = run(*options);
    });
}

}  // namespace cli
