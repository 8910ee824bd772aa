#pragma once

#include "project/base/macro_engine.h"
#include "xml/document.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

/// What the loops of the conditional pre-processor generate: tables of macros, one for each round, and copies
/// of elements with these macros put in.
namespace xml {

/// Expands a text with a table.
using Expander = std::function<QString(const project::MacroTable& macros, const QString& text)>;

/// A copy of `element` and the elements below it, made by `document`, with attributes expanded; nothing else
/// is copied. Takes the number of its elements off `budget`; null when that does not suffice.
std::unique_ptr<XMLElement> substitutedCopy(XMLDocument& document, const XMLElement& element,
                                            const project::MacroTable& macros, const Expander& expand,
                                            qsizetype& budget);

qsizetype countElements(const XMLElement& top);

/// The numbers of a `for`. All arithmetic is that of unsigned 32-bit numbers.
struct IndexRange {
    QString name;
    std::uint32_t start;
    std::uint32_t end;  ///< the first number behind the range
    std::uint32_t increment;
    std::uint32_t offset;
    std::uint32_t multiplier;
};

/// The tables of a `for`: the index in several forms, and the index times the multiplier plus the offset.
class IndexTables {
public:
    explicit IndexTables(const IndexRange& range);
    std::optional<project::MacroTable> next();

private:
    IndexRange range_;
    std::uint32_t index_;
    std::uint32_t product_;
    bool isOver_;
};

/// The tables of a `foreach`: every combination of its variables' values, the first variable varying slowest.
class ProductTables {
public:
    /// `expand` expands a text, `report` gets a warning.
    ProductTables(const XMLElement& loop, const std::function<QString(const QString&)>& expand,
                  const std::function<void(const QString&)>& report);
    std::optional<project::MacroTable> next();

private:
    struct Variable {
        QString name;
        QStringList values;
        qsizetype place = 0;
    };

    QList<Variable> variables_;
    project::MacroTable table_;
    qsizetype changedFrom_ = 0;  ///< the variables from here on have values that the table lacks
    bool isOver_ = false;
};

}  // namespace xml
