#pragma once

#include "project/base/macro_engine.h"

#include <QDomDocument>
#include <QString>

namespace xml {

/// The conditional pre-processor for documents that are read into the Qt DOM. It has fewer directives than
/// `XMLPP2`, and one table of macros for the whole document: a definition is seen by all that follows it.
class XmlPP {
public:
    /// Elements nest so deep: the DOM itself follows them by recursion.
    static constexpr int maxElementDepth = 5000;
    static constexpr int maxIncludeDepth = 100;
    static constexpr int maxIncludes = 10000;
    static constexpr qint64 maxIncludedBytes = qint64{64} << 20;
    static constexpr qsizetype maxExpandedLength = qsizetype{64} << 20;

    /// The table starts with the user's macros.
    XmlPP();
    XmlPP(const XmlPP&) = delete;
    XmlPP& operator=(const XmlPP&) = delete;
    virtual ~XmlPP() = default;

    /// Reads the document from a file. Throws HException, with line and column for text that is not well
    /// formed.
    void load(const QString& path);

    /// Rewrites the document in place. `path` is the file that it was read from, against which it includes
    /// others. With `expand`, the attributes of every element are expanded. No problem stops it.
    void processConditionals(const QString& path, bool expand);

    /// By default a line in the log.
    virtual void warning(const QString& text);

    QDomDocument document;
    project::MacroTable macros;
};

}  // namespace xml
