#pragma once

#include <cstdint>

namespace project {

/// Counts the work of expanding templates, so that small files cannot ask for endless work.
class TemplateWork {
public:
    /// Units of work for one load: one looks at a node, a pass over an element takes `unitsOfPass`.
    static constexpr std::int64_t maxUnits = 200'000'000;
    static constexpr std::int64_t unitsOfPass = 20;

    void add(std::int64_t units) { units_ += units; }
    bool isTooMuch() const { return units_ > maxUnits; }

private:
    std::int64_t units_ = 0;
};

}  // namespace project
