#pragma once

#include "project/base/path.h"
#include "project/sorted_map.h"
#include "xml/element.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>

namespace project {

/// A node of the project tree. The tree is an XML tree: a solution file is parsed straight into these nodes.
///
/// A parent owns its children through the XML child list; `configurations` and the solution's tables only
/// point. So nodes come and go by the operations of the engine (`ProjectSystem`), never by deleting a child.
class ProjectElement final : public xml::XMLElement {
public:
    enum class Kind : std::uint32_t {
        Solution = 0,
        Configuration = 1,
        Project = 2,
        Folder = 3,
        File = 4,
        Unknown = 5
    };

    /// What a solution node has on top of the others.
    struct SolutionTables {
        QMap<QString, ProjectElement*> projectIndex;  ///< the projects visible from here, by qualified name
        QMap<QString, QStringList> inheritanceIndex;  ///< what each configuration inherits, in order
        QDateTime lastModified;                       ///< of the file, when it was last read or written
    };

    /// The kind follows from the tag; a tag outside the five is kept.
    explicit ProjectElement(const QString& tag);
    /// Copies the node alone: its kind and attributes, not what is below it.
    ProjectElement(const ProjectElement& other);
    ProjectElement& operator=(const ProjectElement&) = delete;
    ~ProjectElement() override;

    /// Nodes live in blocks of their own, which are kept for the next tree: a solution can have millions.
    static void* operator new(std::size_t size);
    static void operator delete(void* node, std::size_t size);

    /// A copy of the node with everything below it, all of it modified but the top; it belongs to the caller.
    std::unique_ptr<ProjectElement> deepCopy() const;

    /// The name to show: `Name`, else the last component of the file name, else "<NULL>".
    QString elementName();

    /// Brings `path`, `directory`, `resolvedFileName` and the flags behind them up to date.
    void resolvePaths(const QString& configuration);

    ProjectElement* parentElement() const;
    ProjectElement* firstChildElement() const;
    ProjectElement* nextSiblingElement() const;
    /// This node or the nearest above it of the kind, or null.
    ProjectElement* enclosing(Kind kind);
    ProjectElement* enclosingProject() { return enclosing(Kind::Project); }
    ProjectElement* enclosingSolution() { return enclosing(Kind::Solution); }

    bool isSolution() const { return kind == Kind::Solution; }
    bool isConfiguration() const { return kind == Kind::Configuration; }
    bool isProject() const { return kind == Kind::Project; }
    bool isFolder() const { return kind == Kind::Folder; }
    bool isFile() const { return kind == Kind::File; }

    SortedMap<ProjectElement*> configurations;  ///< the configuration children by name; not owned
    SortedMap<QString> attributes;              ///< the values stored on this very node; keys are ASCII
    QList<ProjectElement*> folders;             ///< the folder children in order; not owned
    Kind kind;
    bool modified = false;  ///< differs from what is stored
    bool canModify = true;  ///< cleared for what a link or a dynamic folder brought in
    bool isImport = false;  ///< a solution that another one links

    // Derived from the attributes; see resolvePaths.
    bool pathValid = false;
    bool insideProjectDirectory = false;
    bool fileNameHasMacros = false;
    bool fileNameIsRelative = false;
    Path path;                 ///< of the node's file; of a solution, its own file
    QString directory;         ///< of a project; of a file, the one against which its name is taken
    QString resolvedFileName;  ///< `file_name` with macros expanded, relative if it was

    QString fileType;                          ///< as recognised last
    std::unique_ptr<SolutionTables> solution;  ///< on solution nodes only
    void* viewItem = nullptr;                  ///< of a host's tree view, which owns it
};

/// `text`, a null one as an empty one: what is stored is there, whereas a null text says that nothing is.
inline QString storedText(const QString& text) {
    return text.isNull() ? QStringLiteral("") : text;
}

/// The node as a ProjectElement, or null when it is null or of another class.
ProjectElement* asProjectElement(xml::XMLNode* node);

/// The five keys that describe a node itself wherever it stands, ready to be shared.
namespace keys {
extern const QString name;      ///< "Name"
extern const QString fileName;  ///< "file_name"
extern const QString hidden;    ///< "hidden"
extern const QString target;    ///< "target"
extern const QString version;   ///< "version"
}  // namespace keys

/// "Common": the configuration that always exists and applies to every other.
extern const QString commonConfiguration;

}  // namespace project
