#pragma once

#include "manifest/token.h"

#include <string>
#include <string_view>

namespace manifest {

class EvalString;

/// Cuts the text of a manifest into tokens, paths and values, and makes the messages that point into it.
///
/// It works on a text that its caller owns and keeps, and that ends in a NUL byte; a NUL byte inside ends the
/// text there. Names, paths and values that it hands out are views of that text. Its operations answer false
/// with the error text set.
class ManifestLexer {
public:
    /// Begins at the start of `input`, whose last byte is NUL. `fileName` stands in messages.
    void start(std::string_view fileName, std::string_view input);

    Token readToken();

    /// True when the next token is the expected one, which is then consumed; else false, with nothing
    /// consumed.
    bool peekToken(Token expected);

    /// Goes back to the start of the last token.
    void unreadToken() { position_ = lastToken_; }

    /// The longest run of variable-name characters; false when there is none. A message raised right after it
    /// points at the token before.
    bool readIdentifier(std::string_view* name);

    /// A path of a list, appended to the empty `path`, which stays empty at the list's end.
    bool readPath(EvalString* path, std::string* error) { return scan(path, true, error); }

    /// A value, which goes to the end of the line, appended to the empty `value`.
    bool readValue(EvalString* value, std::string* error) { return scan(value, false, error); }

    /// The text for an `ERROR` token.
    std::string_view describeLastError() const;

    /// Puts the place of the last token in front of the message and its line with a caret behind it. Answers
    /// false.
    bool error(std::string_view message, std::string* error) const;

private:
    Token readMark();
    Token consume(std::size_t length, Token token);
    const char* skipComment(const char* mark) const;
    void eatWhitespace();
    bool scan(EvalString* result, bool isPath, std::string* error);
    void stopScan(bool isPath);
    bool scanEscape(EvalString* result);
    bool failAt(const char* place, std::string_view message, std::string* error);

    std::string_view fileName_;
    std::string_view input_;
    const char* position_ = nullptr;
    const char* lastToken_ = nullptr;
};

}  // namespace manifest
