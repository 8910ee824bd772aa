#pragma once

#include "xml/node.h"

#include <memory>
#include <utility>

namespace xml {

/// Sibling nodes that have no parent for the time; the chain owns them. Every operation but destruction costs
/// the same, however long it is.
class OwnedChain {
public:
    OwnedChain() = default;
    /// Takes over the children that `XMLNode::takeChildren` gave.
    explicit OwnedChain(XMLNode* first) : first_(first), last_(first) {
        while (last_ && last_->nextSibling()) last_ = last_->nextSibling();
    }
    OwnedChain(OwnedChain&& other) noexcept
        : first_(std::exchange(other.first_, nullptr)), last_(std::exchange(other.last_, nullptr)) {}
    OwnedChain& operator=(OwnedChain&& other) noexcept {
        std::swap(first_, other.first_);
        std::swap(last_, other.last_);
        return *this;
    }
    ~OwnedChain() {
        while (!isEmpty()) takeFirst();
    }

    bool isEmpty() const { return !first_; }

    std::unique_ptr<XMLNode> takeFirst() {
        std::unique_ptr<XMLNode> node(std::exchange(first_, first_->nextSibling()));
        node->setNextSibling(nullptr);
        if (!first_) last_ = nullptr;
        return node;
    }

    void append(std::unique_ptr<XMLNode> node) {
        XMLNode* const added = node.release();
        if (last_) {
            last_->setNextSibling(added);
        } else {
            first_ = added;
        }
        last_ = added;
    }

    /// Puts all of `other` in front.
    void prepend(OwnedChain&& other) {
        if (other.isEmpty()) return;
        other.last_->setNextSibling(first_);
        if (!first_) last_ = other.last_;
        first_ = std::exchange(other.first_, nullptr);
        other.last_ = nullptr;
    }

private:
    XMLNode* first_ = nullptr;
    XMLNode* last_ = nullptr;
};

}  // namespace xml
