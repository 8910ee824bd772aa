#include "script/forth/forth_exception.h"

#include <utility>

namespace script {

namespace {

struct CodeText {
    std::int32_t code;
    const char* text;
};

// clang-format off
constexpr CodeText codeTexts[] = {
    {-3, "stack underflow"},
    {-4, "stack overflow"},
    {-5, "return stack overflow"},
    {-6, "return stack underflow"},
    {-7, "loop stack overflow"},
    {-9, "invalid address"},
    {-10, "divide by zero"},
    {-12, "argument type mismatch"},
    {-13, "undefined word"},
    {-14, "interpreting a compile-only word"},
    {-17, "string buffer overflow"},
    {-20, "write error"},
    {-21, "unsupported operation"},
    {-22, "control structure mismatch"},
    {-23, "misaligned address"},
    {-24, "invalid argument"},
    {-25, "return stack imbalance"},
    {-26, "loop parameters unavailable"},
    {-27, "invalid recursion"},
    {-28, "user interrupt"},
    {-30, "olsolescent feature"},
    {-31, ">BODY error"},
    {-36, "invalid file position"},
    {-37, "file I/O exception"},
    {-38, "non-existent file"},
    {-39, "unexpected EOF"},
    {-49, "search order overflow"},
    {-50, "search order underflow"},
    {-53, "exception stack overflow"},
    {-57, "receive/transmit exception"},
    {-256, "no current definition"},
    {-257, "LEAVE not in DO"},
    {-264, "no DO loop"},
    {-265, "host execution of this word not supported"},
    {-266, "invalid wordlist"},
    {-267, "unimplemented word"},
    {-268, "no store method defined"},
    {-269, "out of context"},
    {-270, "sealed definition"},
};
// clang-format on

QString codeText(const ForthException& exception) {
    if (exception.code() == -1 || exception.code() == -2)
        return exception.text().isEmpty() ? QStringLiteral("abort thrown") : QString();
    for (const CodeText& row : codeTexts)
        if (row.code == exception.code()) return QString::fromLatin1(row.text);
    return QString::number(exception.code()) + QStringLiteral(" THROW undefined");
}

}  // namespace

ForthException::ForthException(std::int32_t code, QString text) : code_(code), text_(std::move(text)) {}

QString errorText(const ForthException& exception) {
    const QString text = codeText(exception);
    if (text.isEmpty() || exception.text().isEmpty()) return text + exception.text();
    return text + QStringLiteral(": ") + exception.text();
}

}  // namespace script
