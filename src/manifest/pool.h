#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace manifest {

/// A named bound on how many edges run side by side; a depth of 0 means no bound.
class Pool {
public:
    Pool(std::string name, std::int32_t depth) : name_(std::move(name)), depth_(depth) {}

    const std::string& name() const { return name_; }
    std::int32_t depth() const { return depth_; }

private:
    std::string name_;
    std::int32_t depth_;
};

}  // namespace manifest
