#pragma once

#include "xml/preprocessor.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <cstdint>
#include <memory>

/// Memory map files: XML files that tell what lies where in a target. Their numbers are expressions.
namespace expressions {

/// An element of a memory map: a range of memory, a register, a field of one.
class MemoryMapElement final : public xml::XMLElement {
public:
    enum class Kind : std::uint32_t {
        MemorySegment = 0,
        Register = 1,
        ProgramSection = 2,
        Root = 3,
        RegisterGroup = 4,
        BitField = 5,
        Enum = 6,
        Processor = 7,
        Vector = 8,
        Other = 9
    };

    /// The kind follows from the tag.
    MemoryMapElement(const QByteArray& tag, bool isReadOnly);
    ~MemoryMapElement() override;

    Kind kind;
    std::uint32_t start = 0;  ///< of a field, the number of its lowest bit
    std::uint32_t size = 0;
    /// Of the root of an imported file, the `Import` element that it took the place of.
    std::unique_ptr<xml::XMLElement> importElement;
    QDateTime lastModified;  ///< of the file, on a root
    bool readOnly;           ///< the file cannot be written
};

/// The node as an element of a memory map, or null.
MemoryMapElement* asMemoryMapElement(xml::XMLNode* node);

/// "ReadWrite", "ReadOnly", "WriteOnly" or "None": what may be done with a segment.
enum class MemoryAccess : std::uint32_t { ReadWrite = 0, ReadOnly = 1, WriteOnly = 2, None = 3 };
MemoryAccess accessOf(const MemoryMapElement& segment);

/// A memory map file with what it imports. Numbers that cannot be read are no errors: a start is then 0, a
/// size what it was. A map imports as many files as other documents include; beyond that the `Import`
/// elements stay. The document owns its elements.
class MemoryMap : public xml::XMLPP2 {
public:
    /// With `preProcesses`, the file goes through the conditional pre-processor, which knows the macros of
    /// the "name=value" list.
    explicit MemoryMap(bool preProcesses = true, const QString& macroList = QString())
        : preProcess(preProcesses), macros(macroList) {}

    /// Reads the file of that name, in which macros are expanded. False when it cannot be read or has no
    /// root, and then root and path are as before.
    bool load(const QString& fileName);
    /// The same for an absolute path as it is.
    bool loadFile(const QString& path);
    /// The same from an open device; imports are taken against the working directory.
    bool load(QIODevice& device);
    /// Whether this file and those that it imports still are what was read.
    bool isUpToDate() const;

    MemoryMapElement* rootElement() const { return asMemoryMapElement(root()); }
    /// The elements of a kind in tree order, or with `prepend` in its reverse. What is below one of them is
    /// not searched.
    QList<MemoryMapElement*> elements(MemoryMapElement::Kind kind, bool prepend = false) const;
    QList<MemoryMapElement*> memorySegments(bool prepend) const {
        return elements(MemoryMapElement::Kind::MemorySegment, prepend);
    }

    xml::XMLElement* createElement(QByteArray name) override;
    void warning(const QString& text) override { xml::logWarning(text); }

    bool preProcess;
    bool readOnly = false;  ///< the file cannot be written
    QString macros;
    QString path;     ///< of the file, absolute
    QString doctype;  ///< of this file; that of the base class is of the one read last

private:
    bool load(const QString& file, QIODevice* device);
    std::unique_ptr<MemoryMapElement> loadElement(const QString& file, QIODevice* device);
    QString fullPath(const QString& fileName) const;
    void resolveImports(MemoryMapElement& top);
};

}  // namespace expressions
