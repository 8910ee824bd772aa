#pragma once

#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace expressions {

class TextForm;

/// What expressions and types have in common. A tree of them may be as deep as its text is long, so nothing
/// here recurses over it: a node names its parts, and the walk is done in one place.
class SyntaxNode {
public:
    SyntaxNode() = default;
    SyntaxNode(const SyntaxNode&) = delete;
    SyntaxNode& operator=(const SyntaxNode&) = delete;
    virtual ~SyntaxNode() = default;

    /// A text for diagnostics.
    virtual QString toString() const;

protected:
    /// Writes this node's own text, its parts as nodes.
    virtual void write(TextForm& form) const = 0;

private:
    friend struct NodeDeleter;
    SyntaxNode* nextToDelete_ = nullptr;
};

/// The text of one node: pieces of text and the parts that stand between them.
class TextForm {
public:
    TextForm& operator<<(const QString& text);
    TextForm& operator<<(const char* text);
    TextForm& operator<<(const SyntaxNode& part);

private:
    friend class SyntaxNode;

    struct Piece {
        QString text;
        const SyntaxNode* node;
    };

    std::vector<Piece> pieces_;
};

/// Deletes nodes one after the other: a node that dies with its owner waits until the owner is gone.
struct NodeDeleter {
    void operator()(SyntaxNode* node) const noexcept;
};

/// The owner of a node. Deleting a tree through it takes constant stack.
template <class Node>
using NodePtr = std::unique_ptr<Node, NodeDeleter>;

template <class Node, class... Arguments>
NodePtr<Node> makeNode(Arguments&&... arguments) {
    return NodePtr<Node>(new Node(std::forward<Arguments>(arguments)...));
}

}  // namespace expressions
