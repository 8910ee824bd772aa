#include "xml/generated_elements.h"

#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace xml {

namespace {

using project::MacroTable;

QString hexadecimal(std::uint32_t value) {
    return QStringLiteral("0x") + QString::number(value, 16).toUpper();
}

/// Takes the element of a wildcard pattern at `place`, a character, "?" or a set in brackets, and answers
/// whether the character fits.
bool fits(QStringView pattern, qsizetype& place, QChar character) {
    const QChar first = pattern[place++];
    const qsizetype end = first == u'[' ? pattern.indexOf(u']', place + 1) : -1;
    if (end < 0) return first == u'?' || first == character;
    const bool inverse = pattern[place] == u'^';
    bool found = false;
    for (qsizetype i = place + (inverse ? 1 : 0); i < end; ++i) {
        const bool isRange = i + 2 < end && pattern[i + 1] == u'-';
        found = found ||
                (isRange ? pattern[i] <= character && character <= pattern[i + 2] : pattern[i] == character);
        i += isRange ? 2 : 0;
    }
    place = end + 1;
    return found != inverse;
}

/// Whether a wildcard pattern fits some part of the text. Going back to the last "*" alone is enough, so
/// that the time is bounded by the product of both lengths.
bool wildcardIsIn(QStringView pattern, QStringView text) {
    qsizetype place = 0;
    qsizetype at = 0;
    qsizetype starPlace = 0;  // in front of the pattern there is a "*" in effect
    qsizetype starAt = 0;
    while (place < pattern.size()) {
        if (pattern[place] == u'*') {
            starPlace = ++place;
            starAt = at;
        } else if (at == text.size()) {
            return false;
        } else if (fits(pattern, place, text[at])) {
            ++at;
        } else {
            place = starPlace;
            at = ++starAt;
        }
    }
    return true;
}

/// What leaves entries out of a variable's list.
struct Exclusions {
    QSet<QString> entries;
    QStringList wildcards;

    bool isEmpty() const { return entries.isEmpty() && wildcards.isEmpty(); }
    bool holds(const QString& item) const {
        return entries.contains(item) ||
               std::any_of(wildcards.begin(), wildcards.end(),
                           [&](const QString& wildcard) { return wildcardIsIn(wildcard, item); });
    }
};

}  // namespace

std::unique_ptr<XMLElement> substitutedCopy(XMLDocument& document, const XMLElement& element,
                                            const MacroTable& macros, const Expander& expand,
                                            qsizetype& budget) {
    const auto copyOne = [&](const XMLElement& source) -> std::unique_ptr<XMLElement> {
        if (--budget < 0) return nullptr;
        std::unique_ptr<XMLElement> copy(document.createElement(source.tagName()));
        for (const XMLAttribute& attribute : source.attributes())
            copy->setAttribute(attribute.name, expand(macros, QString::fromUtf8(attribute.value)).toUtf8());
        return copy;
    };
    std::unique_ptr<XMLElement> result = copyOne(element);
    if (!result) return nullptr;
    std::vector<std::pair<const XMLElement*, XMLElement*>> pending{{&element, result.get()}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        for (const XMLNode* node = source->firstChild(); node; node = node->nextSibling()) {
            const XMLElement* const child = asElement(node);
            if (!child) continue;
            std::unique_ptr<XMLElement> childCopy = copyOne(*child);
            if (!childCopy) return nullptr;
            pending.emplace_back(child, childCopy.get());
            copy->appendChild(childCopy.release());
        }
    }
    return result;
}

qsizetype countElements(const XMLElement& top) {
    qsizetype count = 0;
    std::vector<const XMLNode*> pending{&top};
    while (!pending.empty()) {
        const XMLNode* const node = pending.back();
        pending.pop_back();
        count += asElement(node) ? 1 : 0;
        for (const XMLNode* child = node->firstChild(); child; child = child->nextSibling())
            pending.push_back(child);
    }
    return count;
}

IndexTables::IndexTables(const IndexRange& range)
    : range_(range),
      index_(range.start),
      product_(range.start * range.multiplier + range.offset),
      isOver_(range.start >= range.end) {}

std::optional<MacroTable> IndexTables::next() {
    if (isOver_) return std::nullopt;
    MacroTable table;
    table.insert(range_.name, QString::number(index_));
    table.insert(range_.name + QStringLiteral("_alpha"), QString(QChar(static_cast<char16_t>(65 + index_))));
    table.insert(range_.name + QStringLiteral("_hex"), hexadecimal(index_));
    table.insert(range_.name + QStringLiteral("_ap"), QString::number(product_));
    table.insert(range_.name + QStringLiteral("_ap_hex"), hexadecimal(product_));
    index_ += range_.increment;
    product_ += range_.increment * range_.multiplier;
    isOver_ = index_ >= range_.end;
    return table;
}

ProductTables::ProductTables(const XMLElement& loop, const std::function<QString(const QString&)>& expand,
                             const std::function<void(const QString&)>& report) {
    QString separator = QStringLiteral(",");
    bool expands = false;
    Exclusions excluded;
    for (const XMLAttribute& attribute : loop.attributes()) {
        const QString text = QString::fromUtf8(attribute.value);
        if (attribute.name == "split_by") {
            separator = text;
            continue;
        }
        if (attribute.name == "expand_macros") {
            expands = true;
            continue;
        }
        QString list = expands ? expand(text) : text;
        list.remove(u'\r').remove(u'\n');
        if (attribute.name == "exclude_entries") {
            const QStringList entries = list.split(separator, Qt::SkipEmptyParts);
            excluded.entries = QSet<QString>(entries.begin(), entries.end());
        } else if (attribute.name == "exclude_wildcard") {
            excluded.wildcards.clear();
            excluded.wildcards += list.split(separator, Qt::SkipEmptyParts);
        } else {
            const QStringList items = list.split(separator);
            Variable variable{QString::fromUtf8(attribute.name), {}};
            const QSet<QString> present(items.begin(), items.end());
            for (const QString& entry : std::as_const(excluded.entries))
                if (!present.contains(entry))
                    report(QStringLiteral("exclude_entries cannot find entry named ") + entry);
            for (const QString& item : items)
                if (!excluded.holds(item)) variable.values.append(item);
            isOver_ = isOver_ || variable.values.isEmpty();
            variables_.append(variable);
        }
    }
}

std::optional<MacroTable> ProductTables::next() {
    if (isOver_) return std::nullopt;
    for (; changedFrom_ < variables_.size(); ++changedFrom_) {
        const Variable& variable = variables_[changedFrom_];
        table_.insert(variable.name, variable.values[variable.place]);
    }
    changedFrom_ = variables_.size() - 1;
    while (changedFrom_ >= 0 && ++variables_[changedFrom_].place == variables_[changedFrom_].values.size())
        variables_[changedFrom_--].place = 0;
    isOver_ = changedFrom_ < 0;
    return table_;
}

}  // namespace xml
