#include "manifest/eval_string.h"

#include "manifest/env.h"
#include "manifest/limits.h"
#include "manifest/message.h"
#include "manifest/string_pool.h"

#include <utility>

namespace manifest {

void EvalString::addText(std::string_view text) {
    if (text.empty()) return;
    if (pieces_.empty() || pieces_.back().kind != Kind::Text) {
        pieces_.push_back({text, Kind::Text});
        return;
    }
    Piece& last = pieces_.back();
    if (!joined_) joined_ = std::make_unique<std::deque<std::string>>();
    if (joined_->empty() || joined_->back().data() != last.text.data()) joined_->emplace_back(last.text);
    last.text = joined_->back().append(text);
}

void EvalString::addVariable(std::string_view name) {
    pieces_.push_back({name, Kind::Variable});
}

void EvalString::clear() {
    pieces_.clear();
    if (joined_) joined_.reset();
}

std::string EvalString::evaluate(Env& env) const {
    std::string buffer;
    const std::string_view value = evaluate(env, &buffer);
    return value.data() == buffer.data() ? std::move(buffer) : std::string(value);
}

std::string_view EvalString::evaluate(Env& env, std::string* buffer) const {
    const auto valueOf = [&env](const Piece& piece) {
        return piece.kind == Kind::Text ? piece.text : env.lookupVariable(piece.text);
    };
    if (pieces_.size() == 1) return valueOf(pieces_.front());
    buffer->clear();
    for (const Piece& piece : pieces_) {
        const std::string_view text = valueOf(piece);
        if (text.size() > maxExpandedBytes - buffer->size())
            fatal("expanded value is longer than %zu bytes", maxExpandedBytes);
        buffer->append(text);
    }
    return *buffer;
}

EvalString EvalString::persistedIn(StringPool& pool) const {
    EvalString copy;
    copy.pieces_.reserve(pieces_.size());
    for (const Piece& piece : pieces_) copy.pieces_.push_back({pool.intern(piece.text).view(), piece.kind});
    return copy;
}

}  // namespace manifest
