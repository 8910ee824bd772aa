#include "build/tool_options.h"

#include "build/generated_files.h"
#include "build/process/command_text.h"

#include <algorithm>

namespace build {

namespace {

/// What one read of a line gets: up to its line feed, or as much as the buffer holds.
std::string_view takeLine(std::string_view& text) {
    constexpr std::size_t bufferSize = 1024;  // with the end mark of a C string
    const std::size_t feed = text.find('\n');
    const std::size_t wanted = feed == std::string_view::npos ? text.size() : feed + 1;
    const std::string_view line = text.substr(0, std::min(wanted, bufferSize - 1));
    text.remove_prefix(line.size());
    return line;
}

bool isSkipped(std::string_view line) {
    return line.starts_with("//") || line.starts_with('#');
}

}  // namespace

QStringList parseOptions(std::string_view text) {
    QStringList options;
    bool isComment = false;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (isComment) {
            isComment = line.find("*/") == std::string_view::npos;
        } else if (isSkipped(line)) {
            continue;
        } else if (line.find("/*") != std::string_view::npos) {
            isComment = true;
        } else if (line.size() >= 2 && line.ends_with('\n')) {
            options.append(QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size() - 1)));
        }
    }
    return options;
}

bool optionsFromFile(const NodeProperties& properties, const PropertyClass* fileProperty, Builder& builder,
                     QStringList& options) {
    const QString name = properties.expanded(fileProperty);
    if (name.isEmpty()) return true;
    const QString path = resolvedPath(properties.projectDirectory(), name);
    const QByteArray text = readTextFile(path);
    if (text.isNull()) {
        builder.beginStep(properties.node(), QStringLiteral("Locating Additional Options File"),
                          properties.configuration(), 0);
        builder.error(QStringLiteral("Additional options file ") + quote(path) +
                      QStringLiteral(" does not exist."));
        builder.endStep(properties.node(), properties.configuration());
        return false;
    }
    options += parseOptions({text.constData(), static_cast<std::size_t>(text.size())});
    return true;
}

namespace {

/// Of an option with a name: "-", the name and an item, for each item of the value.
void addNamedOption(const properties::GenericPropertyClass& option, const NodeProperties& properties,
                    const QString& value, QStringList& arguments) {
    const QString& name = option.specialValue;
    if (name.isEmpty() || value.isEmpty()) return;
    const QString text =
        properties.engine().expandMacros(properties.node(), properties.configuration(), value);
    for (const QString& item : splitEscaped(text, false)) arguments.append(u'-' + name + item);
}

/// Of an enumeration: the arguments that the entry of the value stands for.
void addChosenOption(const properties::GenericPropertyClass& option, const QString& value,
                     QStringList& arguments) {
    for (const auto& [entry, text] : option.options()) {
        if (entry != value) continue;
        if (!text.isEmpty()) arguments += text.split(u';');
        return;
    }
}

}  // namespace

void addToolDescriptionOptions(const properties::GenericPropertyClassList& list,
                               const NodeProperties& properties, QStringList& arguments,
                               const QString& variant) {
    for (const properties::GenericPropertyClass* option : list) {
        if (!option->variant().isEmpty() && option->variant() != variant) continue;
        const QString value = properties.value(option);
        if (option->kind == properties::Kind::Enumeration) {
            addChosenOption(*option, value, arguments);
        } else {
            addNamedOption(*option, properties, value, arguments);
        }
    }
}

}  // namespace build
