// Command-line texts and escaped lists: what is taken apart and written again reads the same.
#include "build/process/command_text.h"
#include "build/process/line_splitter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

/// Lists without a trailing backslash can be written so that they split into the same items.
void checkList(const QString& text) {
    const QStringList items = build::splitEscaped(text, true);
    QStringList written;
    for (QString item : items)
        written.append(item.replace(QStringLiteral("\\"), QStringLiteral("\\\\"))
                           .replace(QStringLiteral(";"), QStringLiteral("\\;")));
    if (build::splitEscaped(written.join(u';'), true) != items) __builtin_trap();
    QStringList kept = items;
    kept.removeAll(QString());
    if (build::splitEscaped(text, false) != kept) __builtin_trap();
}

/// A quoted command parses into its arguments, unless one of them holds a backslash, which the quoting can't
/// express before a quote.
void checkCommand(const QString& text) {
    const QStringList arguments = build::parseCommandLine(text);
    if (arguments.contains(QString())) __builtin_trap();
    std::vector<std::string> bytes;
    for (const QString& argument : arguments) bytes.push_back(argument.toStdString());
    const QString command = QString::fromStdString(build::commandText(bytes, ""));
    if (!text.contains(u'\\') && build::parseCommandLine(command) != arguments) __builtin_trap();
}

void checkLines(const std::string& bytes) {
    std::vector<std::string> whole;
    std::vector<std::string> pieces;
    build::LineSplitter splitter;
    const auto toWhole = [&whole](std::string_view line) { whole.emplace_back(line); };
    splitter.add(bytes, toWhole);
    splitter.finish(toWhole);
    const auto toPieces = [&pieces](std::string_view line) { pieces.emplace_back(line); };
    for (const char& byte : bytes) splitter.add({&byte, 1}, toPieces);
    splitter.finish(toPieces);
    if (whole != pieces) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(size));
    checkList(text);
    checkCommand(text);
    checkLines(bytes);
    return 0;
}
