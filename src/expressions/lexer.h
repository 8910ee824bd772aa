#pragma once

#include "expressions/token.h"

#include <QRegularExpression>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace expressions {

/// Turns a text into tokens by a list of regular expressions, tried in order at the current position. An
/// identifier may stand for other text (`lookup`), which is then read before the lexer goes on; such texts
/// stack.
///
/// The rules are compiled into one expression at the first use after a change, which costs far more than
/// reading a text: make a lexer once and keep it. Every failure is a `ParserException`.
class Lexer {
public:
    /// The precedence of a token that is no binary operator.
    static constexpr std::int32_t noOperator = 10;

    /// Where a lexer stands. It holds as long as the rules don't change.
    class State {
        friend class Lexer;

        struct Input {
            QString text;
            qsizetype position;
            QRegularExpression::MatchOptions options;
        };

        std::vector<Input> inputs;  // the current one last
        QString text;
        Token token = Token::Eol;
        std::int32_t precedence = noOperator;
    };

    Lexer() = default;
    Lexer(const Lexer&) = delete;
    Lexer& operator=(const Lexer&) = delete;
    virtual ~Lexer() = default;

    /// The text that an identifier stands for; empty when it stands for itself.
    virtual QString lookup(const QString& name) = 0;

    /// Appends a rule. `pattern` is a case-sensitive regular expression without back references.
    void addToken(const QString& pattern, Token token, std::int32_t precedence = noOperator);

    /// Drops what was read before and reads the first token of `text`.
    void setInput(const QString& text);
    /// Reads the following token; blanks are skipped.
    void next();

    Token token() const { return state_.token; }
    const QString& text() const { return state_.text; }
    std::int32_t precedence() const { return state_.precedence; }
    /// The place behind the current token in the innermost text, in UTF-16 units.
    qsizetype position() const;
    /// The current text as an integer.
    std::int64_t integerValue() const;

    /// To read ahead and come back.
    State save() const { return state_; }
    void restore(const State& state) { state_ = state; }

private:
    struct Rule {
        QString pattern;
        Token token;
        std::int32_t precedence;
        int group;  ///< the capture group that holds the whole pattern
    };

    Token scan();
    const Rule& match(State::Input& input);
    void push(const QString& text);
    void compile();

    std::vector<Rule> rules_;
    std::optional<QRegularExpression> compiled_;
    State state_;
};

}  // namespace expressions
