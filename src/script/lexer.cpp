#include "script/lexer.h"

#include "script/context.h"
#include "script/native_error.h"

#include <array>
#include <bit>

namespace script {

namespace {

enum CharacterClass : std::uint8_t {
    LowerCase = 1,
    UpperCase = 2,
    DollarOrUnderscore = 4,
    Digit = 8,
    Sign = 16,
    Exponent = 32,
    HexDigit = 64,
    OctalDigit = 128,
};
constexpr std::uint8_t wordStart = LowerCase | UpperCase | DollarOrUnderscore;
constexpr std::uint8_t wordPart = wordStart | Digit;

constexpr std::size_t classifiedCodes = 256;

constexpr std::array<std::uint8_t, classifiedCodes> characterClasses = [] {
    std::array<std::uint8_t, classifiedCodes> table{};
    const auto mark = [&](char first, char last, unsigned flags) {
        for (unsigned code = static_cast<unsigned char>(first); code <= static_cast<unsigned char>(last);
             ++code)
            table[code] |= static_cast<std::uint8_t>(flags);
    };
    mark('a', 'z', LowerCase);
    mark('A', 'Z', UpperCase);
    mark('$', '$', DollarOrUnderscore);
    mark('_', '_', DollarOrUnderscore);
    mark('0', '9', Digit | HexDigit);
    mark('0', '7', OctalDigit);
    mark('+', '+', Sign);
    mark('-', '-', Sign);
    mark('e', 'e', Exponent);
    mark('E', 'E', Exponent);
    mark('a', 'f', HexDigit);
    mark('A', 'F', HexDigit);
    return table;
}();

bool isOf(char16_t unit, std::uint8_t classes) {
    return unit < classifiedCodes && (characterClasses[unit] & classes) != 0;
}

unsigned digitValue(char16_t unit) {
    constexpr unsigned ten = 10;
    if (unit <= u'9') return static_cast<unsigned>(unit - u'0');
    return static_cast<unsigned>((unit | 0x20) - u'a') + ten;
}

/// Blanks that cross no line.
bool isBlank(char16_t unit) {
    return unit == u'\t' || unit == u'\v' || unit == u'\f' || unit == u' ';
}

constexpr char16_t controlZ = 26;

}  // namespace

void ESLexer::setSource(QStringView text) {
    source_ = text;
    position_ = 0;
    line_ = 1;
    newlineBefore_ = false;
    peeked_ = -1;
}

int ESLexer::nextToken() {
    if (peeked_ == -1) return scan();
    const int token = peeked_;
    peeked_ = -1;
    return token;
}

int ESLexer::peekToken() {
    if (peeked_ == -1) peeked_ = scan();
    return peeked_;
}

void ESLexer::expect(int token) {
    const int found = nextToken();
    if (found != token)
        throwSyntaxError(QStringLiteral("expected %1 found %2").arg(tokenName(token), tokenName(found)));
}

bool ESLexer::accept(int token) {
    if (peekToken() != token) return false;
    nextToken();
    return true;
}

bool ESLexer::isFollowedByColon() const {
    qsizetype offset = 0;
    while (isBlank(at(offset))) ++offset;
    return at(offset) == u':';
}

void ESLexer::throwSyntaxError(const QString& message) const {
    context_.throwErrorAt(line_, context_.syntaxErrorClass->constructorFunction(), message);
}

void ESLexer::skipBlanks() {
    for (; !atEnd(); ++position_) {
        const char16_t unit = at();
        if (unit == u'\n') ++line_;
        if (unit == u'\n' || unit == u'\r')
            newlineBefore_ = true;
        else if (!isBlank(unit) && unit != controlZ)
            return;
    }
}

void ESLexer::skipLineComment() {
    while (!atEnd() && at() != u'\n' && at() != u'\r') ++position_;
}

void ESLexer::skipBlockComment() {
    for (position_ += 2; !atEnd(); ++position_) {
        if (at() == u'*' && at(1) == u'/') {
            position_ += 2;
            return;
        }
        if (at() == u'\n') ++line_;
        if (at() == u'\n' || at() == u'\r') newlineBefore_ = true;
    }
}

int ESLexer::scan() {
    newlineBefore_ = false;
    for (skipBlanks(); at() == u'/' && (at(1) == u'/' || at(1) == u'*'); skipBlanks())
        at(1) == u'/' ? skipLineComment() : skipBlockComment();
    if (atEnd()) return TokenEnd;
    const char16_t unit = at();
    if (isOf(unit, wordStart)) return scanWord();
    if (isOf(unit, Digit) || (unit == u'.' && isOf(at(1), Digit))) return scanNumber();
    ++position_;
    if (unit == u'"' || unit == u'\'') return scanString(unit);
    if (!QStringView(u"{}()[];,<>=!+-*/%&|^~?:.").contains(unit))
        throwSyntaxError(QStringLiteral("unknown character '%1'").arg(QChar(unit)));
    const OperatorMatch match = matchOperator(source_.sliced(position_ - 1));
    if (match.length == 0) return unit;
    position_ += match.length - 1;
    return match.token;
}

int ESLexer::scanWord() {
    const qsizetype start = position_;
    while (isOf(at(), wordPart)) ++position_;
    const QStringView word = source_.sliced(start, position_ - start);
    const int token = tokenOfWord(word);
    if (token == TokenIdentifier) tokenAtom_ = internAtom(word);
    return token;
}

int ESLexer::scanString(char16_t quote) {
    QString text;
    for (;;) {
        if (atEnd()) throwSyntaxError(QStringLiteral("end of file in string constant"));
        const char16_t unit = at();
        ++position_;
        if (unit == quote) break;
        if (unit == u'\n' || unit == u'\r') throwSyntaxError(QStringLiteral("newline in string constant"));
        if (unit == u'\\')
            scanEscape(text);
        else
            text += QChar(unit);
    }
    tokenAtom_ = internAtom(text);
    return TokenString;
}

void ESLexer::scanEscape(QString& text) {
    if (atEnd()) return;
    constexpr QStringView letters = u"bfnrt";
    constexpr QStringView meanings = u"\b\f\n\r\t";
    const char16_t unit = at();
    if (isOf(unit, OctalDigit)) {
        text += QChar(scanOctalEscape());
        return;
    }
    ++position_;
    if (unit == u'\n') ++line_;
    if (unit == u'x')
        text += QChar(scanHexEscape(2));
    else if (unit == u'u')
        text += QChar(scanHexEscape(4));
    else if (const qsizetype letter = letters.indexOf(QChar(unit)); letter >= 0)
        text += meanings[letter];
    else
        text += QChar(unit);
}

char16_t ESLexer::scanHexEscape(int digits) {
    constexpr unsigned base = 16;
    unsigned value = 0;
    for (; digits > 0; --digits, ++position_) {
        if (!isOf(at(), HexDigit)) throwSyntaxError(QStringLiteral("malformed hex escape sequence"));
        value = value * base + digitValue(at());
    }
    return static_cast<char16_t>(value);
}

char16_t ESLexer::scanOctalEscape() {
    constexpr unsigned base = 8;
    constexpr unsigned largestForThird = 31;
    unsigned value = 0;
    for (int digits = 0; digits < 3 && isOf(at(), OctalDigit); ++digits, ++position_) {
        if (digits == 2 && value > largestForThird) break;
        value = value * base + digitValue(at());
    }
    return static_cast<char16_t>(value);
}

double ESLexer::scanDigits(unsigned base) {
    double value = 0;
    for (; isOf(at(), HexDigit) && digitValue(at()) < base; ++position_)
        value = value * base + digitValue(at());
    return value;
}

void ESLexer::skipDigits() {
    while (isOf(at(), Digit)) ++position_;
}

void ESLexer::skipExponent() {
    if (!isOf(at(), Exponent)) return;
    const qsizetype digits = isOf(at(1), Sign) ? 2 : 1;
    if (!isOf(at(digits), Digit)) return;
    position_ += digits;
    skipDigits();
}

int ESLexer::scanNumber() {
    constexpr unsigned octal = 8;
    constexpr unsigned decimal = 10;
    constexpr unsigned hexadecimal = 16;
    const qsizetype start = position_;
    if (at() == u'0' && (at(1) | 0x20) == u'x') {
        position_ += 2;
        return enterNumber(scanDigits(hexadecimal));
    }
    if (at() == u'0' && isOf(at(1), Digit)) {
        ++position_;
        return enterNumber(scanDigits(octal));
    }
    const double whole = scanDigits(decimal);
    const qsizetype wholeEnd = position_;
    if (at() == u'.') {
        ++position_;
        skipDigits();
    }
    skipExponent();
    if (position_ == wholeEnd) return enterNumber(whole);
    return enterNumber(source_.sliced(start, position_ - start).toDouble());
}

int ESLexer::enterNumber(double number) {
    std::vector<double>& numbers = unit_->code->numbers;
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const auto found = unit_->numberIndex.constFind(bits);
    if (found != unit_->numberIndex.constEnd()) {
        tokenNumber_ = *found;
        return TokenNumber;
    }
    tokenNumber_ = static_cast<std::uint32_t>(numbers.size());
    unit_->numberIndex.insert(bits, tokenNumber_);
    numbers.push_back(number);
    return TokenNumber;
}

}  // namespace script
