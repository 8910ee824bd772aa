#include "xml/parser.h"

#include "xml/decode.h"
#include "xml/document.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace xml {

namespace {

enum CharacterClass : unsigned char { Blank = 1, Name = 2, NameStart = 4 };

constexpr std::array<unsigned char, 256> characterClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (const unsigned char blank : {' ', '\t', '\n', '\v', '\f', '\r'}) classes[blank] = Blank;
    for (unsigned char letter = 'a'; letter <= 'z'; ++letter) classes[letter] = Name | NameStart;
    for (unsigned char letter = 'A'; letter <= 'Z'; ++letter) classes[letter] = Name | NameStart;
    for (unsigned char digit = '0'; digit <= '9'; ++digit) classes[digit] = Name;
    for (const unsigned char mark : {'_', ':', '-'}) classes[mark] = Name | NameStart;
    return classes;
}();

bool is(CharacterClass wanted, char byte) {
    return (characterClasses[static_cast<unsigned char>(byte)] & wanted) != 0;
}

bool isQuote(char byte) {
    return byte == '"' || byte == '\'';
}

std::string_view upToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

}  // namespace

Parser::Parser(XMLDocument& document, std::string_view text)
    : document_(document), cursor_(text.data()), end_(cursor_ + upToNul(text).size()), countedTo_(cursor_) {}

Parser::~Parser() = default;

std::uint32_t Parser::line() {
    // A newline counts once the cursor stands on it.
    const char* const passed = std::min(cursor_ + 1, end_);
    if (passed > countedTo_) {
        line_ += static_cast<std::uint32_t>(std::count(countedTo_, passed, '\n'));
        countedTo_ = passed;
    }
    return line_;
}

Parser::Error Parser::parse() {
    skipBlanks();
    if (current() != '<') return Error::None;
    while (markup() == Next::Text) {
        textNode();
        if (atEnd()) break;
    }
    return error_;
}

void Parser::skipBlanks() {
    while (is(Blank, current())) ++cursor_;
}

std::string_view Parser::readToken() {
    const char* const start = cursor_;
    while (is(Name, current())) ++cursor_;
    const std::string_view token(start, static_cast<std::size_t>(cursor_ - start));
    skipBlanks();
    return token;
}

/// Reads a value with the quotes around it, to the end of the text if the second is missing.
std::optional<std::string_view> Parser::readQuoted() {
    if (!isQuote(current())) return std::nullopt;
    const char quote = current();
    advance();
    const char* const start = cursor_;
    const void* const close = std::memchr(start, quote, static_cast<std::size_t>(end_ - start));
    cursor_ = close ? static_cast<const char*>(close) : end_;
    const std::string_view value(start, static_cast<std::size_t>(cursor_ - start));
    advance();
    skipBlanks();
    return value;
}

QByteArray Parser::shared(std::string_view name) {
    const QByteArrayView view(name.data(), static_cast<qsizetype>(name.size()));
    const auto known = names_.constFind(view);
    if (known != names_.constEnd()) return *known;
    const QByteArray copy = view.toByteArray();
    return *names_.insert(copy, copy);
}

Parser::Next Parser::markup() {
    const std::uint32_t nodeLine = line();
    advance();
    switch (current()) {
        case '?':
            advance();
            return declaration();
        case '!':
            advance();
            return markupDeclaration(nodeLine);
        case '/':
            return tagEnd();
        default:
            return startTag(nodeLine);
    }
}

Parser::Next Parser::startTag(std::uint32_t nodeLine) {
    open_.emplace_back(document_.createElement(shared(readToken())));
    open_.back()->setLine(nodeLine);
    if (!readAttributes()) {
        error_ = Error::BadName;
        return Next::Stop;
    }
    if (current() == '/') return tagEnd();
    advance();
    return Next::Text;
}

/// False on a byte that can begin no attribute.
bool Parser::readAttributes() {
    while (!atEnd() && current() != '/' && current() != '>') {
        if (!is(NameStart, current())) return false;
        const std::string_view name = readToken();
        if (current() != '=') continue;
        advance();
        skipBlanks();
        // A bare value is dropped with its name, and is read as a name itself.
        if (const auto value = readQuoted()) open_.back()->setAttribute(shared(name), decodedValue(*value));
    }
    return true;
}

Parser::Next Parser::tagEnd() {
    advance();
    if (current() != '>') {
        const std::string_view token = readToken();
        if (!open_.empty() && !open_.back()->tagName().startsWith(
                                  QByteArrayView(token.data(), static_cast<qsizetype>(token.size())))) {
            error_ = Error::EndTagMismatch;
            return Next::Stop;
        }
    }
    if (current() != '>') return Next::Text;
    if (!open_.empty()) {
        std::unique_ptr<XMLElement> element = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            root_ = std::move(element);
        } else {
            open_.back()->appendChild(element.release());
        }
    }
    advance();
    return Next::Text;
}

Parser::Next Parser::declaration() {
    if (!std::string_view("xml").starts_with(readToken())) return Next::Text;
    while (!atEnd() && current() != '?') {
        const std::string_view name = readToken();
        if (current() != '=') {
            if (name.empty() && !is(Name, current())) advance();  // a byte that belongs nowhere
            continue;
        }
        advance();
        skipBlanks();
        const auto value = readQuoted();
        if (!value) {
            root_.reset();
            return Next::Stop;
        }
        if (name == "version")
            document_.version = QByteArray(value->data(), static_cast<qsizetype>(value->size()));
        if (name == "encoding")
            document_.encoding = QByteArray(value->data(), static_cast<qsizetype>(value->size()));
    }
    advance();
    if (current() == '>') advance();
    return Next::Text;
}

Parser::Next Parser::markupDeclaration(std::uint32_t nodeLine) {
    if (current() == '-') return comment(nodeLine);
    const std::string_view token = readToken();
    if (token.empty()) return cdataSection(nodeLine);
    if (!std::string_view("DOCTYPE").starts_with(token)) return Next::Text;
    const std::string_view name = readToken();
    if (current() != '>') return Next::Text;
    document_.doctype = QByteArray(name.data(), static_cast<qsizetype>(name.size()));
    advance();
    return Next::Text;
}

Parser::Next Parser::comment(std::uint32_t nodeLine) {
    advance();
    if (current() != '-') return Next::Text;
    advance();
    const auto text = readUpTo('-');
    if (!text) return Next::Text;
    if (document_.keepText())
        attach(std::make_unique<XMLComment>(QByteArray(text->data(), static_cast<qsizetype>(text->size()))),
               nodeLine);
    advance();
    return Next::Text;
}

Parser::Next Parser::cdataSection(std::uint32_t nodeLine) {
    advance();
    readToken();
    advance();
    const auto text = readUpTo(']');
    if (!text) return Next::Text;
    attach(std::make_unique<XMLCDATASection>(QByteArray(text->data(), static_cast<qsizetype>(text->size()))),
           nodeLine);
    advance();
    return Next::Text;
}

std::optional<std::string_view> Parser::readUpTo(char mark) {
    const char* const start = cursor_;
    while (true) {
        cursor_ = std::find(cursor_, end_, mark);
        if (atEnd()) return std::nullopt;
        const std::string_view text(start, static_cast<std::size_t>(cursor_ - start));
        advance();
        if (current() != mark) continue;
        advance();
        if (current() == '>') return text;
    }
}

void Parser::textNode() {
    const std::uint32_t textLine = document_.keepText() ? line() : 0;
    const char* const start = cursor_;
    const void* const next = std::memchr(start, '<', static_cast<std::size_t>(end_ - start));
    cursor_ = next ? static_cast<const char*>(next) : end_;
    if (document_.keepText() && !open_.empty())
        attach(std::make_unique<XMLData>(decodedText({start, static_cast<std::size_t>(cursor_ - start)})),
               textLine);
}

void Parser::attach(std::unique_ptr<XMLNode> node, std::uint32_t nodeLine) {
    if (open_.empty()) return;
    node->setLine(nodeLine);
    open_.back()->appendChild(node.release());
}

}  // namespace xml
