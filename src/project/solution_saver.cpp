#include "project/solution_saver.h"

#include "project/base/replacing_file.h"
#include "project/project_system.h"
#include "project/solution_document.h"
#include "project/tree_walk.h"
#include "xml/document.h"
#include "xml/writer.h"

#include <QFileInfo>
#include <QStringEncoder>

#include <algorithm>
#include <vector>

namespace project {

namespace {

const QString canModifyKey = QStringLiteral("can_modify_solution");
constexpr int indent = 2;
constexpr int wrapColumn = 75;

/// The attributes of one element as UTF-8, kept in one buffer that serves all elements of a file in turn.
class EncodedAttributes {
public:
    void clear() {
        spans_.clear();
        bytes_.resize(0);  // keeps the memory
    }

    void add(QStringView key, QStringView value) {
        const qsizetype keySize = append(key);
        spans_.push_back({keySize, append(value)});
    }

    /// Valid until the next change.
    xml::XMLWriter::Attributes views() {
        views_.clear();
        const char* place = bytes_.constData();
        for (const Span& span : spans_) {
            const char* const value = place + span.keySize;
            views_.push_back({QByteArrayView(place, span.keySize), QByteArrayView(value, span.valueSize)});
            place = value + span.valueSize;
        }
        return views_;
    }

private:
    struct Span {
        qsizetype keySize;
        qsizetype valueSize;
    };

    qsizetype append(QStringView text) {
        const qsizetype before = bytes_.size();
        bytes_.resize(before + encoder_.requiredSpace(text.size()));
        const char* const end = encoder_.appendToBuffer(bytes_.data() + before, text);
        bytes_.truncate(end - bytes_.constData());
        return bytes_.size() - before;
    }

    QStringEncoder encoder_{QStringEncoder::Utf8, QStringEncoder::Flag::Stateless};
    QByteArray bytes_;
    std::vector<Span> spans_;
    std::vector<xml::XMLWriter::Attribute> views_;
};

/// Writes a tree without recursion: the nodes that are open are a stack of their own.
class TreeWriter {
public:
    TreeWriter(xml::XMLWriter& writer, bool sorted) : writer_(writer), sorted_(sorted) {}

    void write(ProjectElement& root) {
        start(root, sorted_, true);
        while (!open_.empty()) {
            Level& level = open_.back();
            if (level.next < level.children.size()) {
                start(*level.children[level.next++], level.sorted, false);
            } else {
                writer_.closeElement(level.node->tagName());
                open_.pop_back();
            }
        }
    }

private:
    struct Level {
        ProjectElement* node;
        std::vector<ProjectElement*> children;
        std::size_t next;
        bool sorted;
    };

    /// Writes the node's beginning, and opens a level where children follow.
    void start(ProjectElement& node, bool sorted, bool isRoot) {
        attributes_.clear();
        if (node.isSolution() && node.isImport && !isRoot) {
            attributes_.add(keys::fileName, node.attributes.value(keys::fileName));
            if (!node.canModify) attributes_.add(canModifyKey, u"No");
            writer_.emptyElement("import", attributes_.views());
            return;
        }
        const bool dynamic = node.isFolder() && node.attributes.contains(u"path");
        if (!dynamic) dropDerivedNames(node);
        for (const auto& [key, value] : node.attributes)
            if (!(isRoot && node.isImport && key == keys::fileName)) attributes_.add(key, value);
        std::vector<ProjectElement*> children = dynamic ? configurationsOf(node) : childrenOf(node, sorted);
        if (children.empty()) {
            writer_.emptyElement(node.tagName(), attributes_.views());
        } else {
            writer_.openElement(node.tagName(), attributes_.views());
            open_.push_back({&node, std::move(children), 0, sorted && !dynamic});
        }
    }

    static void dropDerivedNames(ProjectElement& node) {
        const QString* const name = node.attributes.find(keys::name);
        if (name && name->isEmpty()) {
            node.attributes.remove(keys::name);
            node.modified = true;
        }
        if (node.isFolder() && node.attributes.remove(keys::fileName)) node.modified = true;
    }

    static std::vector<ProjectElement*> configurationsOf(const ProjectElement& node) {
        std::vector<ProjectElement*> children = childrenOf(node, false);
        std::erase_if(children, [](const ProjectElement* child) { return !child->isConfiguration(); });
        return children;
    }

    static std::vector<ProjectElement*> childrenOf(const ProjectElement& node, bool sorted) {
        std::vector<ProjectElement*> children;
        for (ProjectElement* child = node.firstChildElement(); child; child = child->nextSiblingElement())
            children.push_back(child);
        if (sorted && children.size() > 1) sort(children);
        return children;
    }

    static void sort(std::vector<ProjectElement*>& children) {
        struct Key {
            int group;
            QString name;
            ProjectElement* child;
        };
        std::vector<Key> order;
        order.reserve(children.size());
        for (ProjectElement* child : children)
            order.push_back({groupOf(*child), child->elementName(), child});
        std::stable_sort(order.begin(), order.end(), [](const Key& a, const Key& b) {
            return a.group != b.group ? a.group < b.group : a.name < b.name;
        });
        for (std::size_t i = 0; i < order.size(); ++i) children[i] = order[i].child;
    }

    static int groupOf(const ProjectElement& node) {
        switch (node.kind) {
            case ProjectElement::Kind::Configuration:
                return 0;
            case ProjectElement::Kind::Folder:
                return 1;
            case ProjectElement::Kind::File:
                return 2;
            default:
                return 3;
        }
    }

    xml::XMLWriter& writer_;
    const bool sorted_;
    std::vector<Level> open_;
    EncodedAttributes attributes_;
};

/// Clears `modified` from the node down, not entering what is linked: a link has its own file.
void markSaved(ProjectElement& solution) {
    forEachElement(solution, [&](ProjectElement& node) {
        const bool linked = node.isSolution() && node.isImport && &node != &solution;
        if (!linked) node.modified = false;
        return !linked;
    });
}

}  // namespace

bool writeSolutionFile(ProjectElement& solution, const QString& filePath, bool sorted,
                       QByteArray& errorText) {
    ReplacingFile file(filePath);
    if (file.open()) {
        {
            xml::XMLWriter writer(file.device(), indent, wrapColumn);
            writer.doctype(solutionDoctype);
            TreeWriter(writer, sorted).write(solution);
        }
        if (file.commit()) return true;
    }
    xml::QXMLDocument document;
    document.setError("couldn't write " + filePath.toUtf8());
    errorText = document.errorText();
    return false;
}

bool ProjectSystem::saveSolution(ProjectElement* solution, bool sorted) {
    if (solution->isImport) solution->modified = solution->canModify = true;
    if (!solution->attributes.contains(keys::target)) {
        solution->attributes.insert(keys::target, QString::number(targetNumber()));
        solution->modified = true;
    }
    solution->resolvePaths(commonConfiguration);
    const QString filePath = solution->path.filePath();
    if (!writeSolutionFile(*solution, filePath, sorted, saveErrorText_)) return false;
    solution->solution->lastModified = solution->path.lastModified();
    markSaved(*solution);
    Q_EMIT fileSaved(solution->path);
    return true;
}

void ProjectSystem::saveAllSolutions(ProjectFileSaveErrorHandler* handler) {
    const auto needsSave = [this](ProjectElement& solution) {
        if (solution.modified) return true;
        for (ProjectElement* child = solution.firstChildElement(); child; child = child->nextSiblingElement())
            if (!child->isSolution() && isModified(child, false)) return true;
        return false;
    };
    for (ProjectElement* solution : std::as_const(solutionIndex_)) {
        if (!needsSave(*solution) || saveSolution(solution, false)) continue;
        if (!handler || !handler->retry(solution) || !saveSolution(solution, false))
            throw SolutionSaveError(solution);
    }
}

bool ProjectSystem::isModified(ProjectElement* top, bool includeLinks) const {
    bool modified = false;
    forEachElement(*top, [&](ProjectElement& node) {
        const bool counts = includeLinks || &node == top || !(node.isSolution() && node.isImport);
        modified = modified || (counts && node.modified);
        return counts && !modified;
    });
    return modified;
}

}  // namespace project
