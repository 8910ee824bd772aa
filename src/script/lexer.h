#pragma once

#include "script/token.h"
#include "script/tree.h"

#include <QString>

#include <cstdint>

namespace script {

class ESContext;

/// Cuts source text into tokens, with one token of lookahead. Faults raise a SyntaxError that knows the line.
class ESLexer {
public:
    explicit ESLexer(ESContext& context) : context_(context) {}

    /// Starts over with `text`, which outlives the scan.
    void setSource(QStringView text);

    int nextToken();
    int peekToken();
    /// Takes the next token; anything but `token` is a SyntaxError.
    void expect(int token);
    /// Takes the next token if it is `token`.
    bool accept(int token);

    /// The number table that number tokens enter.
    void setUnit(FunctionUnit* unit) { unit_ = unit; }

    std::uint32_t line() const { return line_; }
    /// A newline was crossed in front of the token last scanned.
    bool newlineBefore() const { return newlineBefore_; }
    /// The text of the last identifier or string.
    const ESAtom* tokenAtom() const { return tokenAtom_; }
    /// The index of the last number in the unit's table.
    std::uint32_t tokenNumber() const { return tokenNumber_; }
    /// Whether the identifier just scanned has a ":" behind it, with blanks between at most.
    bool isFollowedByColon() const;

    [[noreturn]] void throwSyntaxError(const QString& message) const;

private:
    int scan();
    void skipBlanks();
    void skipLineComment();
    void skipBlockComment();
    int scanWord();
    int scanString(char16_t quote);
    void scanEscape(QString& text);
    char16_t scanHexEscape(int digits);
    char16_t scanOctalEscape();
    int scanNumber();
    double scanDigits(unsigned base);
    void skipDigits();
    void skipExponent();
    int enterNumber(double number);
    char16_t at(qsizetype offset = 0) const {
        return position_ + offset < source_.size() ? source_[position_ + offset].unicode() : u'\0';
    }
    bool atEnd() const { return position_ >= source_.size(); }

    ESContext& context_;
    FunctionUnit* unit_ = nullptr;
    QStringView source_;
    qsizetype position_ = 0;
    std::uint32_t line_ = 1;
    bool newlineBefore_ = false;
    int peeked_ = -1;
    const ESAtom* tokenAtom_ = nullptr;
    std::uint32_t tokenNumber_ = 0;
};

}  // namespace script
