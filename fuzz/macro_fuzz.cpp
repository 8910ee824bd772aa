// The macro expander: any text ends in a text within its bounds, and a table of macros survives its text
// form.
#include "project/base/macro_engine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static project::MacroEngine engine;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    // The first line is a table, the rest a text.
    const qsizetype end = text.indexOf(u'\n');
    project::MacroTable table = project::MacroEngine::parseMacros(text.left(end));
    if (engine.expand(table, text.mid(end + 1), true, true).size() > project::MacroEngine::maxLength)
        std::abort();
    const QStringList entries = project::MacroEngine::macroList(table);
    for (const QString& entry : entries)
        if (entry.endsWith(u'\\') || entry.isEmpty()) return 0;  // a backslash at the end stands for itself
    if (project::MacroEngine::parseMacros(project::MacroEngine::macroText(entries)).size() > table.size())
        std::abort();
    return 0;
}
