#include "manifest/manifest_lexer.h"

#include "manifest/eval_string.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace manifest {

namespace {

enum CharacterClass : std::uint8_t {
    SimpleName = 1,    ///< of a variable reference without braces
    VariableName = 2,  ///< of a name anywhere else
    PathText = 4,      ///< a byte that stands for itself in a path
    ValueText = 8,     ///< a byte that stands for itself in a value
};

constexpr std::array<std::uint8_t, 256> makeCharacterClasses() {
    std::array<std::uint8_t, 256> classes{};
    classes.fill(PathText | ValueText);
    const auto add = [&](std::string_view characters, unsigned bits) {
        for (const char c : characters)
            classes[static_cast<unsigned char>(c)] |= static_cast<std::uint8_t>(bits);
    };
    const auto clear = [&](std::string_view characters, unsigned bits) {
        for (const char c : characters)
            classes[static_cast<unsigned char>(c)] &= static_cast<std::uint8_t>(~bits);
    };
    add("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-", SimpleName | VariableName);
    add(".", VariableName);
    clear(std::string_view("\0\n\r$", 4), PathText | ValueText);
    clear(" :|", PathText);
    return classes;
}

constexpr std::array<std::uint8_t, 256> characterClasses = makeCharacterClasses();

bool is(char c, CharacterClass characterClass) {
    return (characterClasses[static_cast<unsigned char>(c)] & characterClass) != 0;
}

const char* skip(const char* p, CharacterClass characterClass) {
    while (is(*p, characterClass)) ++p;
    return p;
}

const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

/// The bytes of a line end at `p`, 0 when there is none. A carriage return alone is none.
std::size_t lineEnd(const char* p) {
    if (*p == '\n') return 1;
    return p[0] == '\r' && p[1] == '\n' ? 2 : 0;
}

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

void ManifestLexer::start(std::string_view fileName, std::string_view input) {
    fileName_ = fileName;
    input_ = input;
    position_ = input.data();
    lastToken_ = nullptr;
}

Token ManifestLexer::readToken() {
    const char* mark = skipBlanks(position_);
    while (const char* behind = *mark == '#' ? skipComment(mark) : nullptr) {
        position_ = behind;
        mark = skipBlanks(position_);
    }
    lastToken_ = position_;
    if (const std::size_t length = lineEnd(mark)) {
        position_ = mark + length;
        return Token::NEWLINE;
    }
    if (mark != position_) {
        position_ = mark;
        eatWhitespace();
        return Token::INDENT;
    }
    return readMark();
}

/// Behind the line feed of the comment at `mark`, or null when the text ends first: that is no comment.
const char* ManifestLexer::skipComment(const char* mark) const {
    while (*mark != '\n' && *mark != '\0') ++mark;
    return *mark == '\n' ? mark + 1 : nullptr;
}

Token ManifestLexer::readMark() {
    switch (*position_) {
        case '\0':
            return Token::TEOF;
        case '=':
            return consume(1, Token::EQUALS);
        case ':':
            return consume(1, Token::COLON);
        case '|':
            return position_[1] == '|' ? consume(2, Token::PIPE2) : consume(1, Token::PIPE);
        default:
            break;
    }
    const std::string_view word = between(position_, skip(position_, VariableName));
    return word.empty() ? consume(1, Token::ERROR) : consume(word.size(), tokenOfWord(word));
}

Token ManifestLexer::consume(std::size_t length, Token token) {
    position_ += length;
    eatWhitespace();
    return token;
}

void ManifestLexer::eatWhitespace() {
    for (;;) {
        if (*position_ == ' ') {
            ++position_;
            continue;
        }
        const std::size_t length = *position_ == '$' ? lineEnd(position_ + 1) : 0;
        if (length == 0) return;
        position_ += 1 + length;
    }
}

bool ManifestLexer::peekToken(Token expected) {
    if (readToken() == expected) return true;
    unreadToken();
    return false;
}

bool ManifestLexer::readIdentifier(std::string_view* name) {
    const char* end = skip(position_, VariableName);
    if (end == position_) return false;
    *name = between(position_, end);
    position_ = end;
    eatWhitespace();
    return true;
}

bool ManifestLexer::scan(EvalString* result, bool isPath, std::string* error) {
    const CharacterClass text = isPath ? PathText : ValueText;
    for (;;) {
        const char* end = skip(position_, text);
        if (end != position_) result->addText(between(position_, end));
        position_ = end;
        if (*end == '$') {
            if (scanEscape(result)) continue;
            return failAt(end, "bad $-escape (literal $ must be written as $$)", error);
        }
        if (*end == '\0') return failAt(end, "unexpected EOF", error);
        lastToken_ = end;
        if (*end == '\r' && lineEnd(end) == 0) return failAt(end, describeLastError(), error);
        stopScan(isPath);
        return true;
    }
}

void ManifestLexer::stopScan(bool isPath) {
    if (isPath)
        eatWhitespace();
    else
        position_ += lineEnd(position_);
}

/// Takes the escape at the position; false when it is none.
bool ManifestLexer::scanEscape(EvalString* result) {
    const char* body = position_ + 1;
    if (const std::size_t length = lineEnd(body)) {
        position_ = skipBlanks(body + length);
        return true;
    }
    if (*body == '$' || *body == ' ' || *body == ':') {
        result->addText({body, 1});
        position_ = body + 1;
        return true;
    }
    const bool braced = *body == '{';
    const char* name = braced ? body + 1 : body;
    const char* end = skip(name, braced ? VariableName : SimpleName);
    if (end == name || (braced && *end != '}')) return false;
    result->addVariable(between(name, end));
    position_ = braced ? end + 1 : end;
    return true;
}

std::string_view ManifestLexer::describeLastError() const {
    const bool onTab = lastToken_ != nullptr && *lastToken_ == '\t';
    return onTab ? "tabs are not allowed, use spaces" : "lexing error";
}

bool ManifestLexer::failAt(const char* place, std::string_view message, std::string* error) {
    lastToken_ = place;
    return this->error(message, error);
}

bool ManifestLexer::error(std::string_view message, std::string* error) const {
    constexpr std::size_t widestLine = 72;
    const char* place = lastToken_ != nullptr ? lastToken_ : input_.data();
    const std::string_view before = between(input_.data(), place);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t lineStart = before.rfind('\n') + 1;
    const std::size_t column = before.size() - lineStart;

    std::array<char, 1024> prefix;
    std::snprintf(prefix.data(), prefix.size(), "%s:%d: ", std::string(fileName_).c_str(),
                  static_cast<int>(line));
    *error = prefix.data();
    error->append(message).append("\n");
    if (column < 1 || column >= widestLine) return false;

    std::string_view context = input_.substr(lineStart);
    context = context.substr(0, context.find_first_of(std::string_view("\n\0", 2)));
    error->append(context.substr(0, widestLine));
    if (context.size() > widestLine) error->append("...");
    error->append("\n").append(column, ' ').append("^ near here");
    return false;
}

}  // namespace manifest
