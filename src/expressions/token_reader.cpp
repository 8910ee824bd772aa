#include "expressions/token_reader.h"

#include "expressions/expression_parser.h"
#include "expressions/parser_exception.h"

namespace expressions {

bool TokenReader::isInteger() const {
    return token() == Token::Integer || token() == Token::HexInteger || token() == Token::BinInteger;
}

void TokenReader::advance() {
    endPosition_ = lexer_.position();
    lexer_.next();
}

void TokenReader::expect(Token expected, const char* message) {
    if (token() != expected) throw ParserException(QString::fromLatin1(message));
    advance();
}

QString TokenReader::readName() {
    if (token() == Token::Ident && parser_.isTemplateName(text())) return readTemplateName();
    QString name = text();
    expect(Token::Ident, "identifier expected");
    return name;
}

QStringList TokenReader::readScopedNames(const QString& first) {
    QStringList names(first);
    while (token() == Token::ColonColon) {
        advance();
        names.append(readName());
    }
    return names;
}

void TokenReader::restore(const State& state) {
    lexer_.restore(state.lexer);
    endPosition_ = state.endPosition;
}

void TokenReader::failUnexpected() const {
    throw ParserException(QStringLiteral("unexpected token ") + tokenName(token()));
}

QString TokenReader::readTemplateName() {
    QString name = text();
    advance();
    if (token() != Token::Lt) return name;
    int nesting = 0;
    Token previous = Token::Eol;
    do {
        switch (token()) {
            case Token::Lt:
                ++nesting;
                break;
            case Token::Gt:
                --nesting;
                break;
            case Token::RShift:
                nesting -= 2;
                break;
            case Token::Ident:
                if (previous == Token::Ident) name += u' ';
                break;
            case Token::Comma:
            case Token::ColonColon:
            case Token::Star:
            case Token::BitAnd:
                break;
            default:
                if (!isInteger()) failUnexpected();
        }
        name += token() == Token::Comma ? QStringLiteral(", ") : text();
        previous = token();
        advance();
    } while (nesting > 0);
    return name;
}

}  // namespace expressions
