#include "expressions/memorymap/memory_map.h"

#include "expressions/integer_value.h"
#include "expressions/simple_expression_parser.h"
#include "project/base/path.h"
#include "xml/directives.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <typeinfo>
#include <utility>
#include <vector>

namespace expressions {

namespace {

using Kind = MemoryMapElement::Kind;

/// How the numbers of a kind are read.
enum class Numbers {
    None,
    Range,     ///< both are expressions; the start is the base of what is inside
    Register,  ///< the start is an expression, the size a plain integer
    Field,     ///< like Register, and the start is never relative
};

struct KindRow {
    const char* tag;
    Kind kind;
    Numbers numbers;
};

constexpr KindRow kindRows[] = {
    {"MemorySegment", Kind::MemorySegment, Numbers::Range},
    {"Register", Kind::Register, Numbers::Register},
    {"ProgramSection", Kind::ProgramSection, Numbers::Range},
    {"Root", Kind::Root, Numbers::None},
    {"RegisterGroup", Kind::RegisterGroup, Numbers::Range},
    {"BitField", Kind::BitField, Numbers::Field},
    {"Enum", Kind::Enum, Numbers::Field},
    {"Processor", Kind::Processor, Numbers::None},
    {"Vector", Kind::Vector, Numbers::None},
};

Kind kindOf(const QByteArray& tag) {
    for (const KindRow& row : kindRows)
        if (tag == row.tag) return row.kind;
    return Kind::Other;
}

Numbers numbersOf(Kind kind) {
    for (const KindRow& row : kindRows)
        if (row.kind == kind) return row.numbers;
    return Numbers::None;
}

/// The integer that the text begins with: it ends at the first character that is neither digit nor letter.
std::uint32_t plainInteger(const QString& text) {
    const QString trimmed = text.trimmed();
    const bool hasSign = trimmed.startsWith(u'-') || trimmed.startsWith(u'+');
    const auto* const end = std::find_if_not(trimmed.begin() + (hasSign ? 1 : 0), trimmed.end(),
                                             [](QChar character) { return character.isLetterOrNumber(); });
    return static_cast<std::uint32_t>(integerValue(QStringView(trimmed.begin(), end)));
}

class NumberReader {
public:
    /// Evaluates the numbers of a tree. No recursion: a file can nest as deep as it likes.
    void read(MemoryMapElement& top) {
        std::vector<std::pair<MemoryMapElement*, std::uint32_t>> open{{&top, 0}};
        while (!open.empty()) {
            const auto [element, base] = open.back();
            open.pop_back();
            const std::uint32_t inner = readElement(*element, base);
            for (xml::XMLNode* node = element->firstChild(); node; node = node->nextSibling())
                if (MemoryMapElement* const child = asMemoryMapElement(node)) open.emplace_back(child, inner);
        }
    }

private:
    /// Answers the base for what is inside the element.
    std::uint32_t readElement(MemoryMapElement& element, std::uint32_t base) {
        const Numbers numbers = numbersOf(element.kind);
        if (numbers == Numbers::None) return base;
        if (element.hasAttribute("start")) {
            const QString text = element.text("start");
            const bool isRelative = numbers != Numbers::Field && text.startsWith(u'+');
            element.start = evaluate(text, 0) + (isRelative ? base : 0);
            if (numbers == Numbers::Range) base = element.start;
        }
        if (element.hasAttribute("size")) {
            const QString text = element.text("size");
            element.size = numbers == Numbers::Range ? evaluate(text, element.size) : plainInteger(text);
        }
        return base;
    }

    static std::uint32_t evaluate(const QString& text, std::uint32_t otherwise) {
        bool ok = false;
        const std::int64_t value = simpleExpressionParser().evaluateInteger(text, &ok);
        return ok ? static_cast<std::uint32_t>(value) : otherwise;
    }
};

}  // namespace

MemoryMapElement::MemoryMapElement(const QByteArray& tag, bool isReadOnly)
    : XMLElement(tag), kind(kindOf(tag)), readOnly(isReadOnly) {}

MemoryMapElement::~MemoryMapElement() = default;

MemoryMapElement* asMemoryMapElement(xml::XMLNode* node) {
    if (!node) return nullptr;
    const xml::XMLNode& known = *node;
    return typeid(known) == typeid(MemoryMapElement) ? static_cast<MemoryMapElement*>(node) : nullptr;
}

MemoryAccess accessOf(const MemoryMapElement& segment) {
    const QByteArray access = segment.attribute("access");
    if (access == "ReadOnly") return MemoryAccess::ReadOnly;
    if (access == "WriteOnly") return MemoryAccess::WriteOnly;
    return access == "None" ? MemoryAccess::None : MemoryAccess::ReadWrite;
}

xml::XMLElement* MemoryMap::createElement(QByteArray name) {
    return new MemoryMapElement(name, readOnly);
}

bool MemoryMap::load(const QString& fileName) {
    return loadFile(fullPath(fileName));
}

bool MemoryMap::loadFile(const QString& file) {
    return load(file, nullptr);
}

bool MemoryMap::load(QIODevice& device) {
    return load(QDir::current().filePath(QStringLiteral("-")), &device);
}

bool MemoryMap::load(const QString& file, QIODevice* device) {
    work = {};
    std::unique_ptr<MemoryMapElement> top = loadElement(file, device);
    if (!top) return false;
    readOnly = top->readOnly;
    doctype = QString::fromUtf8(XMLPP2::doctype);
    path = file;
    resolveImports(*top);
    NumberReader().read(*top);
    setRoot(std::move(top));
    return true;
}

QString MemoryMap::fullPath(const QString& fileName) const {
    const QString expanded = project::macroEngine ? project::macroEngine->expandGlobal(fileName) : fileName;
    if (!project::isAbsolutePath(expanded) && !path.isEmpty())
        return project::Path(path).dirPath(true) + u'/' + expanded;
    return project::Path(expanded).absFilePath();
}

/// The root of a file, read from the device unless that is null. It does not become the root of this
/// document.
std::unique_ptr<MemoryMapElement> MemoryMap::loadElement(const QString& file, QIODevice* device) {
    std::unique_ptr<xml::XMLNode> former = takeRoot();
    const bool wasReadOnly = std::exchange(readOnly, !QFileInfo(file).isWritable());
    const bool parsed = device ? XMLDocument::parse(*device) : parseRegularFile(file);
    if (parsed && preProcess) processConditionals(file, xml::readMacroList(macros), true);
    std::unique_ptr<xml::XMLNode> loaded = takeRoot();
    setRoot(std::move(former));
    readOnly = wasReadOnly;
    MemoryMapElement* const element = parsed ? asMemoryMapElement(loaded.get()) : nullptr;
    if (!element) return nullptr;
    element->lastModified = QFileInfo(file).lastModified();
    static_cast<void>(loaded.release());
    return std::unique_ptr<MemoryMapElement>(element);
}

void MemoryMap::resolveImports(MemoryMapElement& top) {
    for (xml::XMLNode* node = top.firstChild(); node;) {
        xml::XMLElement* const import = xml::asElement(node);
        node = node->nextSibling();
        if (!import || import->tagName() != "Import") continue;
        const QString file = fullPath(import->text("filename"));
        if (!countInclude(QFileInfo(file).size())) return;
        std::unique_ptr<MemoryMapElement> imported = loadElement(file, nullptr);
        if (!imported) continue;
        MemoryMapElement* const element = imported.release();
        top.replaceChild(import, element);
        element->importElement.reset(import);
    }
}

bool MemoryMap::isUpToDate() const {
    const auto isCurrent = [](const QString& file, const MemoryMapElement& element) {
        return QFileInfo(file).lastModified() == element.lastModified;
    };
    const MemoryMapElement* const top = rootElement();
    if (!top || !isCurrent(path, *top)) return false;
    for (xml::XMLNode* node = top->firstChild(); node; node = node->nextSibling()) {
        const MemoryMapElement* const child = asMemoryMapElement(node);
        if (!child || !child->importElement) continue;
        const QString fileName = child->importElement->text("filename");
        if (!isCurrent(fullPath(fileName), *child)) return false;
    }
    return true;
}

QList<MemoryMapElement*> MemoryMap::elements(Kind kind, bool prepend) const {
    QList<MemoryMapElement*> found;
    std::vector<xml::XMLNode*> open{root()};
    while (!open.empty()) {
        xml::XMLNode* const node = open.back();
        open.pop_back();
        if (!node) continue;
        if (node != root()) open.push_back(node->nextSibling());
        MemoryMapElement* const element = asMemoryMapElement(node);
        if (!element) continue;
        if (element->kind == kind) {
            found.append(element);
        } else {
            open.push_back(element->firstChild());
        }
    }
    if (prepend) std::reverse(found.begin(), found.end());
    return found;
}

}  // namespace expressions
