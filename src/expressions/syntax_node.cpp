#include "expressions/syntax_node.h"

namespace expressions {

QString SyntaxNode::toString() const {
    QString text;
    TextForm form;
    std::vector<TextForm::Piece> pending{{QString(), this}};
    while (!pending.empty()) {
        const TextForm::Piece piece = std::move(pending.back());
        pending.pop_back();
        text += piece.text;
        if (!piece.node) continue;
        form.pieces_.clear();
        piece.node->write(form);
        pending.insert(pending.end(), form.pieces_.rbegin(), form.pieces_.rend());
    }
    return text;
}

TextForm& TextForm::operator<<(const QString& text) {
    pieces_.push_back({text, nullptr});
    return *this;
}

TextForm& TextForm::operator<<(const char* text) {
    return *this << QString::fromLatin1(text);
}

TextForm& TextForm::operator<<(const SyntaxNode& part) {
    pieces_.push_back({QString(), &part});
    return *this;
}

void NodeDeleter::operator()(SyntaxNode* node) const noexcept {
    thread_local SyntaxNode* waiting = nullptr;
    thread_local bool isDeleting = false;
    node->nextToDelete_ = std::exchange(waiting, node);
    if (isDeleting) return;
    isDeleting = true;
    while (waiting) delete std::exchange(waiting, waiting->nextToDelete_);
    isDeleting = false;
}

}  // namespace expressions
