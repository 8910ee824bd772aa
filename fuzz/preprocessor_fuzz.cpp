// The conditional pre-processor: any document is walked to its end, within its bounds, by both forms.
#include "project/base/macro_engine.h"
#include "support/hexception.h"
#include "xml/dom_preprocessor.h"
#include "xml/preprocessor.h"

#include <cstddef>
#include <cstdint>

namespace {

class Document : public xml::XMLPP2 {
public:
    void warning(const QString&) override {}
};

class DomDocument : public xml::XmlPP {
public:
    void warning(const QString&) override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static project::MacroEngine engine;
    project::macroEngine = &engine;
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const project::MacroTable macros{{QStringLiteral("A"), QStringLiteral("x")},
                                     {QStringLiteral("B"), QStringLiteral("$(A)")}};
    // Includes find nothing here; loops of a million copies would only make a run slow.
    const QString path = QStringLiteral("/nonexistent/file.xml");
    const bool isSlow = text.contains("xmlput") || text.contains("<for");
    Document document;
    if ((!isSlow || size < 200) && document.parseText(text) && document.root())
        document.processConditionals(path, macros, size % 2 == 0);
    DomDocument dom;
    dom.macros = macros;
    if (dom.document.setContent(text)) dom.processConditionals(path, size % 2 == 0);
    return 0;
}
