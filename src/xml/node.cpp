#include "xml/node.h"

#include <utility>

namespace xml {

XMLNode::~XMLNode() {
    // Grandchildren move up behind the children, so that no destructor finds more than its own node.
    while (XMLNode* child = firstChild_) {
        if (child->firstChild_) {
            lastChild_->nextSibling_ = child->firstChild_;
            lastChild_ = child->lastChild_;
            child->firstChild_ = nullptr;
        }
        firstChild_ = child->nextSibling_;
        delete child;
    }
}

void XMLNode::appendChild(XMLNode* child) {
    child->parent_ = this;
    child->nextSibling_ = nullptr;
    (lastChild_ ? lastChild_->nextSibling_ : firstChild_) = child;
    lastChild_ = child;
}

XMLNode* XMLNode::prependChild(XMLNode* child) {
    XMLNode* const former = firstChild_;
    child->parent_ = this;
    child->nextSibling_ = former;
    firstChild_ = child;
    if (!former) lastChild_ = child;
    return former;
}

XMLNode* XMLNode::previousSiblingOf(const XMLNode* child) const {
    XMLNode* previous = nullptr;
    for (XMLNode* node = firstChild_; node && node != child; node = node->nextSibling_) previous = node;
    return previous;
}

void XMLNode::removeChild(XMLNode* child) {
    XMLNode* const previous = previousSiblingOf(child);
    XMLNode*& link = previous ? previous->nextSibling_ : firstChild_;
    if (!child || link != child) return;
    link = child->nextSibling_;
    if (lastChild_ == child) lastChild_ = previous;
}

void XMLNode::replaceChild(XMLNode* oldChild, XMLNode* newChild) {
    XMLNode* const previous = previousSiblingOf(oldChild);
    newChild->parent_ = oldChild->parent_;
    newChild->nextSibling_ = oldChild->nextSibling_;
    (previous ? previous->nextSibling_ : firstChild_) = newChild;
    if (lastChild_ == oldChild) lastChild_ = newChild;
}

void XMLNode::insertChildrenAfter(XMLNode* refChild, XMLNode* firstOfChain) {
    XMLNode* lastOfChain = firstOfChain;
    for (XMLNode* node = firstOfChain; node; node = node->nextSibling_) {
        node->parent_ = this;
        lastOfChain = node;
    }
    if (!firstChild_) {
        firstChild_ = firstOfChain;
        lastChild_ = lastOfChain;
    } else if (firstOfChain) {
        lastOfChain->nextSibling_ = refChild->nextSibling_;
        refChild->nextSibling_ = firstOfChain;
        if (lastChild_ == refChild) lastChild_ = lastOfChain;
    }
}

XMLNode* XMLNode::takeChildren() {
    lastChild_ = nullptr;
    return std::exchange(firstChild_, nullptr);
}

}  // namespace xml
