#include "xml/generated_elements.h"

#include <QRegExp>

#include <algorithm>
#include <utility>
#include <vector>

namespace xml {

namespace {

using project::MacroTable;

QString hexadecimal(std::uint32_t value) {
    return QStringLiteral("0x") + QString::number(value, 16).toUpper();
}

/// What leaves entries out of a variable's list.
struct Exclusions {
    QStringList entries;
    QList<QRegExp> wildcards;

    bool isEmpty() const { return entries.isEmpty() && wildcards.isEmpty(); }
    bool holds(const QString& item) const {
        return entries.contains(item) ||
               std::any_of(wildcards.begin(), wildcards.end(),
                           [&](const QRegExp& wildcard) { return wildcard.indexIn(item) >= 0; });
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
            excluded.entries = list.split(separator, Qt::SkipEmptyParts);
        } else if (attribute.name == "exclude_wildcard") {
            excluded.wildcards.clear();
            for (const QString& item : list.split(separator, Qt::SkipEmptyParts))
                excluded.wildcards.append(QRegExp(item, Qt::CaseSensitive, QRegExp::Wildcard));
        } else {
            const QStringList items = list.split(separator);
            Variable variable{QString::fromUtf8(attribute.name), {}};
            if (!excluded.isEmpty())
                for (const QString& entry : std::as_const(excluded.entries))
                    if (!items.contains(entry))
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
    MacroTable table;
    for (const Variable& variable : std::as_const(variables_))
        table.insert(variable.name, variable.values[variable.place]);
    qsizetype turning = variables_.size() - 1;
    while (turning >= 0 && ++variables_[turning].place == variables_[turning].values.size())
        variables_[turning--].place = 0;
    isOver_ = turning < 0;
    return table;
}

}  // namespace xml
