#pragma once

#include "project/base/macro_engine.h"
#include "xml/document.h"

#include <QString>

#include <map>
#include <memory>

namespace xml {

/// A document whose tree is rewritten before anything reads it: elements that are directives (`if`,
/// `include`, `for` and their like) are replaced by what they yield, and attributes have macros expanded.
/// Documents of this class drop comments and character data as they are parsed.
///
/// Nothing stops the pass: every problem calls `warning` and the walk goes on. What a hostile document can
/// ask for is bounded; beyond a bound a directive warns and yields nothing more.
class XMLPP2 : public QXMLDocument {
public:
    /// Files that include each other nest so deep,
    static constexpr int maxIncludeDepth = 100;
    /// a document includes so many files with so many bytes together,
    static constexpr int maxIncludes = 10000;
    static constexpr qint64 maxIncludedBytes = qint64{64} << 20;
    /// `for`, `foreach` and `xmlput` copy so many elements,
    static constexpr int maxCopies = 1000000;
    /// bodies put by `xmlput` nest so deep,
    static constexpr int maxPutDepth = 100;
    /// tables of macros that are copied hold so many entries,
    static constexpr qsizetype maxMacrosCopied = 20000000;
    /// and expansions yield so many characters.
    static constexpr qsizetype maxExpandedLength = qsizetype{256} << 20;

    XMLPP2() = default;

    /// Rewrites the tree below the root in place; the root itself may change through an include. `path` is
    /// the file that the document was read from, against which it includes others. With `expand`, the
    /// attributes of every element are expanded.
    void processConditionals(const QString& path, const project::MacroTable& macros, bool expand);

    virtual void warning(const QString& text) = 0;

    /// A subtree that `xmldef` stored, and how many elements it has.
    struct Definition {
        std::unique_ptr<XMLElement> element;
        qsizetype elements = 0;
    };
    std::map<QString, Definition> definitions;
};

}  // namespace xml
