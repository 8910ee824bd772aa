#pragma once

#include <QString>

#include <stdexcept>

namespace expressions {

/// The one way in which the lexer, the parser and the evaluation fail. The `evaluate` operations of
/// `ExpressionParser` catch it; everything else lets it through.
class ParserException : public std::runtime_error {
public:
    explicit ParserException(const QString& message)
        : std::runtime_error(message.toStdString()), message_(message) {}

    const QString& message() const { return message_; }

private:
    QString message_;
};

}  // namespace expressions
