#pragma once

#include <QString>

#include <cstdint>
#include <exception>

namespace script {

/// The THROW codes that the evaluator itself raises, with the numbers of the Forth standard (ANS X3.215-1994,
/// table 9.2) and those of this system below -255. Hosts throw any code.
enum ForthCode : std::int32_t {
    ForthAbort = -1,
    ForthStackUnderflow = -3,
    ForthStackOverflow = -4,
    ForthReturnStackOverflow = -5,
    ForthDivideByZero = -10,
    ForthTypeMismatch = -12,
    ForthUndefinedWord = -13,
    ForthCompileOnly = -14,
    ForthStringOverflow = -17,
    ForthInvalidArgument = -24,
    ForthNoDefinition = -256,
    ForthNotSupported = -265,
    ForthNoStore = -268,
    ForthSealedDefinition = -270,
};

/// The exception of every failure while a line is evaluated.
class ForthException : public std::exception {
public:
    explicit ForthException(std::int32_t code, QString text = QString());

    std::int32_t code() const { return code_; }
    const QString& text() const { return text_; }
    const char* what() const noexcept override { return "Forth exception"; }

private:
    std::int32_t code_;
    QString text_;
};

/// What a user is told: the code's text, and behind ": " the exception's own where both have one.
QString errorText(const ForthException& exception);

}  // namespace script
