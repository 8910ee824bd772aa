#pragma once

#include <cstdint>

namespace project {

/// What one load of a solution has asked for, and how much that may be: small files cannot ask for endless
/// work. Each operation counts something more, and answers whether the load may go on.
class LoadWork {
public:
    /// A load reads so many solution and template files with so many bytes together,
    static constexpr int maxFiles = 10'000;
    static constexpr std::int64_t maxBytes = std::int64_t{2} << 30;
    /// the names of its projects, as they are seen from all solutions around them, have so many characters,
    static constexpr std::int64_t maxNamesLength = std::int64_t{256} << 20;
    /// its dynamic folders look at so many files and directories,
    static constexpr int maxScannedEntries = 5'000'000;
    /// and the expansion of its templates takes so many units of work, some 0.1 microseconds each.
    static constexpr std::int64_t maxTemplateUnits = 50'000'000;

    bool addFile(std::int64_t bytes) {
        bytes_ += bytes;
        return ++files_ <= maxFiles && bytes_ <= maxBytes;
    }
    bool addNames(std::int64_t length) { return (namesLength_ += length) <= maxNamesLength; }
    bool addScannedEntry() { return ++scannedEntries_ <= maxScannedEntries; }
    bool addTemplateUnits(std::int64_t units) { return (templateUnits_ += units) <= maxTemplateUnits; }

private:
    int files_ = 0;
    std::int64_t bytes_ = 0;
    std::int64_t namesLength_ = 0;
    int scannedEntries_ = 0;
    std::int64_t templateUnits_ = 0;
};

}  // namespace project
