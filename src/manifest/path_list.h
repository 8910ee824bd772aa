#pragma once

#include "manifest/eval_string.h"

#include <cstddef>
#include <vector>

namespace manifest {

/// The paths of one statement as they are read. Clearing it keeps the paths' room for the next statement.
class PathList {
public:
    std::size_t size() const { return size_; }
    const EvalString& operator[](std::size_t index) const { return paths_[index]; }

    void clear() { size_ = 0; }

    /// A new empty path at the end.
    EvalString& add() {
        if (size_ == paths_.size()) paths_.emplace_back();
        paths_[size_].clear();
        return paths_[size_++];
    }

    void removeLast() { --size_; }

private:
    std::vector<EvalString> paths_;
    std::size_t size_ = 0;
};

}  // namespace manifest
