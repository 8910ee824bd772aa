#include "build/dependency_file.h"

#include "project/base/path.h"

#include <algorithm>
#include <utility>

namespace build {

namespace {

bool isSpace(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// What a line says of prerequisites.
std::string_view prerequisites(std::string_view line) {
    if (!line.starts_with(' ') && !line.starts_with('\t')) {
        const std::size_t colon = line.find(": ");
        if (colon == std::string_view::npos) return {};
        line.remove_prefix(colon + 2);
    }
    if (line.ends_with('\\')) line.remove_suffix(1);
    while (!line.empty() && isSpace(line.front())) line.remove_prefix(1);
    while (!line.empty() && isSpace(line.back())) line.remove_suffix(1);
    return line;
}

QString unescaped(std::string_view name) {
    QString text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    return text.replace(QStringLiteral("$$"), QStringLiteral("$"))
        .replace(QStringLiteral("\\ "), QStringLiteral(" "))
        .replace(QStringLiteral("\\#"), QStringLiteral("#"))
        .replace(QStringLiteral("\\:"), QStringLiteral(":"));
}

/// Where the first name of the text ends: at a blank without a backslash before it, or at the end.
std::size_t nameEnd(std::string_view text) {
    std::size_t blank = text.find(' ');
    while (blank != std::string_view::npos && blank > 0 && text[blank - 1] == '\\')
        blank = text.find(' ', blank + 1);
    return std::min(blank, text.size());
}

}  // namespace

QStringList parseDependencies(std::string_view text, const QString& directory) {
    QStringList files;
    bool isSource = true;
    const auto add = [&](std::string_view name) {
        if (std::exchange(isSource, false)) return;
        QString file = unescaped(name);
        if (!directory.isEmpty() && !project::isAbsolutePath(file)) file = directory + u'/' + file;
        files.append(project::Path(file).normalised());
    };
    while (!text.empty()) {
        const std::size_t lineEnd = std::min(text.find('\n'), text.size());
        std::string_view names = prerequisites(text.substr(0, lineEnd));
        text.remove_prefix(std::min(lineEnd + 1, text.size()));
        while (!names.empty()) {
            const std::size_t end = nameEnd(names);
            add(names.substr(0, end));
            names.remove_prefix(std::min(end + 1, names.size()));
        }
    }
    return files;
}

}  // namespace build
