#pragma once

#include "expressions/lexer.h"

#include <QString>
#include <QStringList>

namespace expressions {

class ExpressionParser;

/// Reads the tokens of one text in order, and the names that are made of several tokens. Failures are
/// `ParserException`s.
class TokenReader {
public:
    /// The lexer stands at the first token of the text.
    TokenReader(ExpressionParser& parser, Lexer& lexer) : parser_(parser), lexer_(lexer) {}

    Token token() const { return lexer_.token(); }
    const QString& text() const { return lexer_.text(); }
    std::int32_t precedence() const { return lexer_.precedence(); }
    std::int64_t integerValue() const { return lexer_.integerValue(); }
    /// The current text without its quotes.
    QString unquoted() const { return text().sliced(1, text().size() - 2); }
    bool isInteger() const;

    void advance();
    /// Steps over the token, which must be this one.
    void expect(Token token, const char* message);
    /// Where the last token ended that was stepped over.
    qsizetype endPosition() const { return endPosition_; }

    /// An identifier, with its template arguments when it is a template name.
    QString readName();
    /// Names joined with "::"; `first` is read already.
    QStringList readScopedNames(const QString& first);

    struct State {
        Lexer::State lexer;
        qsizetype endPosition;
    };
    State save() const { return {lexer_.save(), endPosition_}; }
    void restore(const State& state);

    [[noreturn]] void failUnexpected() const;

private:
    QString readTemplateName();

    ExpressionParser& parser_;
    Lexer& lexer_;
    qsizetype endPosition_ = 0;
};

}  // namespace expressions
