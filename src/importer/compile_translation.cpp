#include "importer/compile_translation.h"

#include "importer/command_text.h"

#include <QStringList>

#include <functional>

namespace importer {

namespace {

/// Appends an entry to a list value that a scan gathers; no ";" goes in front while the text is empty.
void addEntry(QString& list, const QString& entry) {
    if (!list.isEmpty()) list += u';';
    list += entry;
}

QString withoutOuterQuotes(const QString& text) {
    const bool quoted = text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"');
    return quoted ? text.mid(1, text.size() - 2) : text;
}

void scanDefinitions(const QStringList& arguments, CompileArguments& result) {
    for (const QString& argument : arguments)
        if (argument.startsWith(u"-D")) addEntry(result.definitions, argument.mid(2));
}

void scanIncludeDirectories(const QStringList& arguments, CompileArguments& result) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument.startsWith(u"-I")) {
            addEntry(result.userIncludeDirectories, argument.mid(2));
        } else if (argument == u"-isystem" && i + 1 < arguments.size()) {
            addEntry(result.systemIncludeDirectories, withoutOuterQuotes(arguments[++i]));
        }
    }
}

void scanMacroFiles(const QStringList& arguments, CompileArguments& result) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument == u"-imacros") {
            if (i + 1 < arguments.size())
                addEntry(result.macroFiles, QStringLiteral("-imacros;") + arguments[++i]);
        } else if (argument.startsWith(u"-imacros")) {
            addEntry(result.macroFiles, argument);
        }
    }
}

CompileArguments translateOnce(std::string_view defines, std::string_view includes, std::string_view flags) {
    QStringList arguments;
    splitArguments(defines, arguments);
    splitArguments(includes, arguments);
    splitArguments(flags, arguments);
    CompileArguments result;
    result.all = arguments.join(u';');
    scanDefinitions(arguments, result);
    scanIncludeDirectories(arguments, result);
    scanMacroFiles(arguments, result);
    return result;
}

}  // namespace

std::size_t CompileTranslator::Hash::operator()(const Key& key) const {
    std::size_t hash = 0;
    for (const char* text : {key.defines.data(), key.includes.data(), key.flags.data()})
        hash = hash * 1000003 + std::hash<const char*>()(text);
    return hash;
}

const CompileArguments& CompileTranslator::translate(std::string_view defines, std::string_view includes,
                                                     std::string_view flags) {
    const auto [entry, isNew] = known_.try_emplace({defines, includes, flags});
    if (isNew) entry->second = translateOnce(defines, includes, flags);
    return entry->second;
}

}  // namespace importer
