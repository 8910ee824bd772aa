#pragma once

#include <QByteArrayView>

#include <functional>
#include <utility>

namespace package {

/// Gives the next bytes, which last until it is asked again; none at the end. May throw.
using PieceSource = std::function<QByteArrayView()>;

/// The contents of a file on their way, in pieces, so that a large file needs no more memory than a small
/// one. The first piece has been read before anything is done with it: what cannot be read at all leaves no
/// trace.
class Contents {
public:
    explicit Contents(PieceSource source) : source_(std::move(source)), piece_(source_()) {}

    bool isAtEnd() const { return piece_.isEmpty(); }
    /// Empty at the end.
    QByteArrayView piece() const { return piece_; }
    void advance() { piece_ = source_(); }

private:
    PieceSource source_;
    QByteArrayView piece_;
};

/// Bytes that outlive it, in one piece.
inline PieceSource wholePiece(QByteArrayView bytes) {
    return [bytes]() mutable { return std::exchange(bytes, {}); };
}

}  // namespace package
