#include "manifest/canonical_path.h"

#include "manifest/message.h"

#include <array>
#include <cstring>
#include <utility>

namespace manifest {

namespace {

bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

/// Copies components to a buffer that is at least one byte longer than the written path.
class Canonicalizer {
public:
    Canonicalizer(std::string_view written, char* output)
        : written_(written), output_(output), end_(output) {}

    /// The result's length. Each component is copied with a separator behind it, so the last byte is no part
    /// of the result; a path of separators alone thus loses one.
    std::size_t run() {
        std::size_t i = copyLeadingSeparators();
        while (i < written_.size()) {
            const std::size_t start = i;
            while (i < written_.size() && !isSeparator(written_[i])) ++i;
            takeComponent(start, i - start);
            ++i;
        }
        if (end_ == output_) {
            *output_ = '.';
            return 1;
        }
        return static_cast<std::size_t>(end_ - output_) - 1;
    }

private:
    std::size_t copyLeadingSeparators() {
        std::size_t count = 0;
        while (count < 2 && count < written_.size() && isSeparator(written_[count])) {
            *end_++ = written_[count++];
        }
        return count;
    }

    void takeComponent(std::size_t start, std::size_t size) {
        const std::string_view component = written_.substr(start, size);
        if (component.empty() || component == ".") return;
        if (component == "..") {
            if (depth_ > 0)
                end_ = starts_[--depth_];
            else
                copyWithSeparator(start, size);
            return;
        }
        if (depth_ == starts_.size())
            fatal("path has too many components : %s", std::string(written_).c_str());
        starts_[depth_++] = end_;
        copyWithSeparator(start, size);
    }

    void copyWithSeparator(std::size_t start, std::size_t size) {
        std::memcpy(end_, written_.data() + start, size);
        end_ += size;
        *end_++ = start + size < written_.size() ? written_[start + size] : '/';
    }

    std::string_view written_;
    char* output_;
    char* end_;
    std::array<char*, maxPathComponents> starts_;
    std::size_t depth_ = 0;
};

std::uint64_t turnBackslashes(std::string* path) {
    std::uint64_t bits = 0;
    unsigned index = 0;
    for (char& c : *path) {
        if (!isSeparator(c)) continue;
        if (c == '\\' && index < 64) bits |= std::uint64_t{1} << index;
        c = '/';
        ++index;
    }
    return bits;
}

}  // namespace

bool canonicalizePath(std::string_view written, std::string* canonical, std::uint64_t* slashBits,
                      std::string* error) {
    if (written.empty()) {
        *error = "empty path";
        return false;
    }
    canonical->resize(written.size() + 1);
    canonical->resize(Canonicalizer(written, canonical->data()).run());
    const bool anyBackslash = written.find('\\') != std::string_view::npos;
    *slashBits = anyBackslash ? turnBackslashes(canonical) : 0;
    return true;
}

bool canonicalizePath(std::string* path, std::uint64_t* slashBits, std::string* error) {
    const std::string written = std::exchange(*path, {});
    return canonicalizePath(written, path, slashBits, error);
}

}  // namespace manifest
