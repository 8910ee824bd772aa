#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

class Env;
class StringPool;

/// A path or value whose variables are not known yet: pieces of literal text and variable references, no two
/// literals side by side. It is a view of the text it was read from, which must outlive it, but for literals
/// that had to be joined; `persistedIn` gives a copy that depends on a pool alone. A cleared object keeps its
/// room, so a reader that uses one again and again does not allocate.
class EvalString {
public:
    EvalString() = default;
    EvalString(EvalString&&) noexcept = default;
    EvalString& operator=(EvalString&&) noexcept = default;

    void addText(std::string_view text);
    void addVariable(std::string_view name);
    void clear();
    bool empty() const { return pieces_.empty(); }

    /// The pieces in order, each variable replaced by what `env` finds for it; an unknown one yields nothing.
    /// A value longer than `maxExpandedBytes` is fatal.
    std::string evaluate(Env& env) const;

    /// The same without a copy where it can be: a single piece is answered as it stands, and only several are
    /// put together in `buffer`, which is overwritten.
    std::string_view evaluate(Env& env, std::string* buffer) const;

    /// How many pieces there are, a measure of the work that `evaluate` does.
    std::size_t size() const { return pieces_.size(); }

    /// A copy whose texts live as long as the pool.
    EvalString persistedIn(StringPool& pool) const;

private:
    enum class Kind { Text, Variable };

    struct Piece {
        std::string_view text;
        Kind kind;
    };

    std::vector<Piece> pieces_;
    /// Literals that are not one run of the source. Empty and unallocated for nearly every value.
    std::unique_ptr<std::deque<std::string>> joined_;
};

}  // namespace manifest
