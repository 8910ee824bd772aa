#pragma once

#include "xml/element.h"

#include <QByteArray>
#include <QHash>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace xml {

class XMLDocument;

/// Reads the system's subset of XML in one pass: no validation, no namespaces, no encodings, no entities but
/// the five of the language and one-byte numeric references. Malformed text mostly ends in an empty tree and
/// no error.
class Parser {
public:
    enum class Error { None, BadName, EndTagMismatch };

    /// `text` is read up to its first NUL and outlives the parser. `document` makes the elements and takes
    /// what the header declares.
    Parser(XMLDocument& document, std::string_view text);
    ~Parser();

    Error parse();
    /// The last top-level element that closed, or null.
    std::unique_ptr<XMLNode> takeRoot() { return std::move(root_); }
    /// The line where the parser stands, counted from 0.
    std::uint32_t line();

private:
    enum class Next { Text, Stop };  ///< what follows a piece of markup

    char current() const { return cursor_ < end_ ? *cursor_ : '\0'; }
    bool atEnd() const { return cursor_ == end_; }
    void advance() { cursor_ += cursor_ < end_ ? 1 : 0; }
    void skipBlanks();
    std::string_view readToken();
    std::optional<std::string_view> readQuoted();
    QByteArray shared(std::string_view name);

    Next markup();
    Next startTag(std::uint32_t line);
    bool readAttributes();
    Next tagEnd();
    Next declaration();
    Next markupDeclaration(std::uint32_t line);
    Next comment(std::uint32_t line);
    Next cdataSection(std::uint32_t line);
    void textNode();
    /// The text up to the closing `mark`, `mark`, ">", the cursor being left on the ">"; nothing without
    /// these.
    std::optional<std::string_view> readUpTo(char mark);
    void attach(std::unique_ptr<XMLNode> node, std::uint32_t line);

    XMLDocument& document_;
    const char* cursor_;
    const char* const end_;
    const char* countedTo_;  ///< the newlines in front of it are in line_
    std::uint32_t line_ = 0;
    Error error_ = Error::None;
    std::vector<std::unique_ptr<XMLElement>> open_;  ///< begun and not closed; attached to no parent yet
    std::unique_ptr<XMLNode> root_;
    QHash<QByteArrayView, QByteArray> names_;  ///< so that equal names share their bytes
};

}  // namespace xml
