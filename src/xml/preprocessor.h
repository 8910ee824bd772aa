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
/// ask for is bounded, in all passes over it together; beyond a bound a directive warns and yields nothing
/// more.
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

    /// Counts a file of that many bytes that is to become part of the document. False when it must not.
    bool countInclude(qint64 bytes) {
        work.includedBytes += bytes;
        return ++work.includes <= maxIncludes && work.includedBytes <= maxIncludedBytes;
    }

    /// What the document has asked for so far.
    struct Work {
        int includes = 0;
        qint64 includedBytes = 0;
        qsizetype copiesLeft = maxCopies;
        qsizetype macrosCopied = 0;
        qsizetype expandedLength = 0;
    };
    Work work;
};

/// What `warning` does in documents that have nobody to tell: writes the text to the process log as a warning
/// when the log mask has LogInternalErrors set.
void logWarning(const QString& text);

}  // namespace xml
