#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace project {

/// Names to values, made for one use.
using MacroTable = QMap<QString, QString>;

/// Expands references of the form "$(Name)" in texts. "$(Name:text)" gives the text where the name is
/// unknown, and "$(Name::text)" gives it without looking at it again. It fails at nothing: what cannot be
/// resolved stays.
class MacroEngine {
public:
    /// A text of nested references is expanded again until a pass changes nothing, at most so often,
    static constexpr int maxPasses = 64;
    /// and as long as it stays within so many characters; the text reached is the result.
    static constexpr qsizetype maxLength = qsizetype{16} << 20;

    /// Names are looked for in `table`, then with `useGlobal` among the user's, then with `useSystem` among
    /// the environment's.
    QString expand(const MacroTable& table, const QString& text, bool useGlobal, bool useSystem) const;
    QString expandGlobal(const QString& text) const { return expand({}, text, true, true); }
    QString expandSystem(const QString& text) const { return expand({}, text, false, true); }

    /// The value of a name among the user's or else the environment's, or null.
    QString macroValue(const QString& name) const;
    /// An empty value removes the name.
    void setGlobalMacro(const QString& name, const QString& value);

    /// The table of a text "name=value;name=value", in which a backslash takes the next character as it is.
    static MacroTable parseMacros(const QString& text);
    /// "name=value" for each entry, in name order.
    static QStringList macroList(const MacroTable& table);
    /// The entries as one text that `parseMacros` reads.
    static QString macroText(const QStringList& list);
    static MacroTable mergeMacros(MacroTable base, const MacroTable& overrides);

    /// Enters the names of the clock, which then give the time of their expansion.
    void addClockNames();

    MacroTable systemMacros;  ///< the environment's own, such as AtelisDir
    MacroTable globalMacros;  ///< the user's
};

/// The engine of the process, made before any solution is opened; without one, texts stay as they are. Not
/// owned.
extern MacroEngine* macroEngine;

}  // namespace project
