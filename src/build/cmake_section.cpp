#include "build/cmake_section.h"

namespace build {

namespace {

struct CallRow {
    const char* name;
    QStringList CMakeSection::*list;
};

constexpr CallRow calls[] = {
    {"target_sources", &CMakeSection::sources},
    {"target_compile_definitions", &CMakeSection::definitions},
    {"target_include_directories", &CMakeSection::includeDirectories},
    {"target_compile_options", &CMakeSection::options},
};

bool isWordCharacter(QChar character) {
    constexpr QStringView words =
        u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.$/\\~=+[]*?-!^:{}";
    return words.contains(character);
}

QStringList tokensOf(QStringView text) {
    QStringList tokens;
    for (qsizetype i = 0; i < text.size();) {
        if (text[i].isSpace()) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        while (i < text.size() && isWordCharacter(text[i])) ++i;
        if (i == start) ++i;
        tokens.append(text.sliced(start, i - start).toString());
    }
    return tokens;
}

const CallRow* callNamed(const QString& token) {
    for (const CallRow& call : calls)
        if (token == QLatin1StringView(call.name)) return &call;
    return nullptr;
}

void readCalls(const QStringList& tokens, CMakeSection& section) {
    const QStringList opening{QStringLiteral("("), QStringLiteral("app"), QStringLiteral("PRIVATE")};
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const CallRow* const call = callNamed(tokens[i]);
        if (!call) {
            section.others.append(tokens[i]);
            continue;
        }
        const qsizetype end = tokens.indexOf(QStringLiteral(")"), i);
        if (tokens.mid(i + 1, opening.size()) != opening || end < 0) return;
        section.*call->list += tokens.mid(i + 4, end - i - 4);
        i = end;
    }
}

const QString overlayMarker = QStringLiteral("// ONDREL Lumen Atelis auto generated");

}  // namespace

CMakeSection CMakeSection::parse(const QString& text, const QString& startMarker, const QString& endMarker) {
    CMakeSection section;
    const qsizetype start = startMarker.isEmpty() ? -1 : text.indexOf(startMarker);
    if (start >= 0) section.head = text.left(start + startMarker.size());
    const qsizetype end = endMarker.isEmpty() ? -1 : text.indexOf(endMarker, section.head.size());
    if (end >= 0) section.tail = text.mid(end);
    const qsizetype length = text.size() - section.head.size() - section.tail.size();
    readCalls(tokensOf(QStringView(text).sliced(section.head.size(), length)), section);
    return section;
}

QString CMakeSection::text() const {
    QStringList lines;
    for (const CallRow& call : calls) {
        const QStringList& list = this->*call.list;
        if (!list.isEmpty())
            lines.append(QString::fromLatin1(call.name) + QStringLiteral("(app PRIVATE ") + list.join(u' ') +
                         u')');
    }
    return head + u'\n' + lines.join(u'\n') + u'\n' + others.join(u'\n') + u'\n' + tail;
}

QString overlayForEditing(const QString& text) {
    if (!text.startsWith(overlayMarker)) return text;
    const qsizetype feed = text.indexOf(u'\n');
    return feed < 0 ? QString() : text.mid(feed + 1);
}

QString overlayForWriting(const QString& text) {
    return overlayMarker + u'\n' + text;
}

}  // namespace build
