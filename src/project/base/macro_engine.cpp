#include "project/base/macro_engine.h"

#include "project/base/text_list.h"

#include <QDateTime>

#include <optional>
#include <vector>

namespace project {

MacroEngine* macroEngine = nullptr;

namespace {

struct ClockRow {
    const char* name;
    const char* pattern;  ///< of QDateTime; null for the seconds since 1970
};

constexpr ClockRow clockRows[] = {
    {"Date", "d MMMM yyyy"}, {"DateYear", "yyyy"}, {"DateMonth", "MM"},
    {"DateDay", "dd"},       {"Time", "hh:mm:ss"}, {"TimeHour", "hh"},
    {"TimeMinute", "mm"},    {"TimeSecond", "ss"}, {"UnixTime", nullptr},
};

/// What a clock name gives now; nothing for any other name.
std::optional<QString> clockValue(QStringView name) {
    for (const ClockRow& row : clockRows) {
        if (name != QLatin1StringView(row.name)) continue;
        const QDateTime now = QDateTime::currentDateTime();
        return row.pattern ? now.toString(QLatin1StringView(row.pattern))
                           : QString::number(now.toSecsSinceEpoch());
    }
    return std::nullopt;
}

/// For each "(" of the text the place of its ")", or -1; any other place holds -1. One walk, however deep
/// they nest.
std::vector<qsizetype> matchingBrackets(const QString& text) {
    std::vector<qsizetype> closing(static_cast<std::size_t>(text.size()), -1);
    std::vector<qsizetype> open;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'(') {
            open.push_back(i);
        } else if (text[i] == u')' && !open.empty()) {
            closing[static_cast<std::size_t>(open.back())] = i;
            open.pop_back();
        }
    }
    return closing;
}

/// One walk over a text.
class Pass {
public:
    Pass(const MacroTable* const* tables, std::size_t tableCount, const QString& text)
        : tables_(tables), tableCount_(tableCount), text_(text), closing_(matchingBrackets(text)) {}

    void run() {
        qsizetype i = 0;
        while (i < text_.size() && output_.size() <= MacroEngine::maxLength) {
            if (text_[i] != u'$') {
                output_ += text_[i++];
            } else if (i + 1 >= text_.size() || text_[i + 1] != u'(') {
                output_ += u'$';
                i += i + 1 < text_.size() && text_[i + 1] == u'$' ? 2 : 1;
            } else {
                i = expandReference(i);
            }
        }
    }

    const QString& output() const { return output_; }
    bool isNested() const { return nested_; }

private:
    /// Expands the reference that begins at `start`, and answers where the walk goes on.
    qsizetype expandReference(qsizetype start) {
        const qsizetype end = closing_[static_cast<std::size_t>(start + 1)];
        if (end < 0) {
            nested_ = nested_ || text_.indexOf(u'$', start + 2) >= 0;
            return start + 1;
        }
        const QStringView body = QStringView(text_).mid(start + 2, end - start - 2);
        if (body.contains(u'$')) nested_ = true;
        const qsizetype colon = body.indexOf(u':');
        const QStringView name = colon < 0 ? body : body.left(colon);
        QStringView fallback = QStringView(text_).mid(start, end + 1 - start);
        if (colon >= 0) {
            fallback = body.mid(colon + 1);
            if (fallback.startsWith(u':')) {
                fallback = fallback.mid(1);
                nested_ = false;
            }
        }
        if (const QString* const value = find(name)) {
            output_ += clockValue(name).value_or(*value);
        } else {
            output_ += fallback;
        }
        return end + 1;
    }

    const QString* find(QStringView name) const {
        const QString key = name.toString();
        for (std::size_t i = 0; i < tableCount_; ++i) {
            const auto found = tables_[i]->constFind(key);
            if (found != tables_[i]->constEnd()) return &*found;
        }
        return nullptr;
    }

    const MacroTable* const* tables_;
    std::size_t tableCount_;
    const QString& text_;
    std::vector<qsizetype> closing_;
    QString output_;
    bool nested_ = false;
};

}  // namespace

QString MacroEngine::expand(const MacroTable& table, const QString& text, bool useGlobal,
                            bool useSystem) const {
    const MacroTable* tables[3] = {&table};
    std::size_t count = 1;
    if (useGlobal) tables[count++] = &globalMacros;
    if (useSystem) tables[count++] = &systemMacros;

    QString current = text;
    for (int passes = 0; passes < maxPasses && current.contains(u'$'); ++passes) {
        Pass pass(tables, count, current);
        pass.run();
        if (pass.output().size() > maxLength) break;
        const bool changed = pass.output() != current;
        current = pass.output();
        if (!changed || !pass.isNested()) break;
    }
    return current;
}

QString MacroEngine::macroValue(const QString& name) const {
    const auto global = globalMacros.constFind(name);
    return global != globalMacros.constEnd() ? *global : systemMacros.value(name);
}

void MacroEngine::setGlobalMacro(const QString& name, const QString& value) {
    if (value.isEmpty()) {
        globalMacros.remove(name);
    } else {
        globalMacros.insert(name, value);
    }
}

MacroTable MacroEngine::parseMacros(const QString& text) {
    MacroTable table;
    for (const QString& entry : escapedEntries(text)) {
        const qsizetype cut = entry.indexOf(u'=');
        table.insert(cut < 0 ? entry : entry.left(cut), cut < 0 ? QStringLiteral("") : entry.mid(cut + 1));
    }
    return table;
}

QStringList MacroEngine::macroList(const MacroTable& table) {
    QStringList list;
    for (auto entry = table.constBegin(); entry != table.constEnd(); ++entry)
        list.append(entry.key().trimmed() + u'=' + entry.value());
    return list;
}

QString MacroEngine::macroText(const QStringList& list) {
    QStringList escaped;
    for (QString entry : list)
        escaped.append(entry.replace(u'\\', QStringLiteral("\\\\")).replace(u';', QStringLiteral("\\;")));
    return escaped.join(u';');
}

MacroTable MacroEngine::mergeMacros(MacroTable base, const MacroTable& overrides) {
    for (auto entry = overrides.constBegin(); entry != overrides.constEnd(); ++entry)
        base.insert(entry.key(), entry.value());
    return base;
}

void MacroEngine::addClockNames() {
    for (const ClockRow& row : clockRows) systemMacros.insert(QString::fromLatin1(row.name), QString());
}

}  // namespace project
