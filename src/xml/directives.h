#pragma once

#include "project/base/macro_engine.h"

#include <QString>

/// What both forms of the conditional pre-processor say and read alike.
namespace xml {

// clang-format off
inline constexpr char messagePrefix[] = "XmlPP::processConditionals(): ";
inline constexpr char oneConditionRequired[] = "one condition required for <if[not]>";
inline constexpr char missingFileName[] = "missing filename in <include>";
inline constexpr char includesTooMuch[] = "error: include file '%1' is one too many";
inline constexpr char includeTooDeep[] = "error: include file '%1' is nested too deep";
// clang-format on

/// Whether the list, separated by ",", holds the text.
inline bool listHolds(const QString& list, const QString& text) {
    return list.split(u',', Qt::SkipEmptyParts).contains(text);
}

/// The table of a text "name=value;name=value" that may be folded over lines.
inline project::MacroTable readMacroList(QString list) {
    return project::MacroEngine::parseMacros(list.remove(u'\n'));
}

}  // namespace xml
