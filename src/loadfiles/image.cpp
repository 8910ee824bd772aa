#include "loadfiles/image.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace loadfiles {

namespace {

/// Runs of bytes by their first address, without overlaps.
class Image {
public:
    struct Piece {
        const std::uint8_t* bytes;
        std::uint64_t end;
    };
    using Pieces = std::map<std::uint64_t, Piece>;

    explicit Image(const LoadFileSections::List& sections) {
        for (const auto& section : sections) {
            if (section->size() == 0) continue;
            clear({section->address(), section->end()});
            pieces_.emplace(section->address(), Piece{section->data(false), section->end()});
        }
    }

    const Pieces& pieces() const { return pieces_; }

private:
    /// Leaves the piece that spans `address`, if any, in two that meet there.
    void cut(std::uint64_t address) {
        auto next = pieces_.lower_bound(address);
        if (next == pieces_.begin()) return;
        auto& [start, piece] = *std::prev(next);
        if (piece.end <= address) return;
        pieces_.emplace_hint(next, address, Piece{piece.bytes + (address - start), piece.end});
        piece.end = address;
    }

    void clear(AddressRange range) {
        cut(range.start);
        cut(range.end);
        pieces_.erase(pieces_.lower_bound(range.start), pieces_.lower_bound(range.end));
    }

    Pieces pieces_;
};

/// Where a walk over the pieces of an image stands.
class Cursor {
public:
    explicit Cursor(const Image& image) : piece_(image.pieces().begin()), last_(image.pieces().end()) {
        enter();
    }

    static constexpr std::uint64_t nowhere = std::numeric_limits<std::uint64_t>::max();

    /// The next address that has a byte; `nowhere` behind the last one.
    std::uint64_t address() const { return address_; }
    /// The end of the run of bytes there.
    std::uint64_t end() const { return piece_->second.end; }
    const std::uint8_t* bytes() const { return piece_->second.bytes + (address_ - piece_->first); }

    void moveTo(std::uint64_t address) {
        address_ = address;
        if (address_ < end()) return;
        ++piece_;
        enter();
    }

private:
    void enter() { address_ = piece_ == last_ ? nowhere : piece_->first; }

    Image::Pieces::const_iterator piece_;
    Image::Pieces::const_iterator last_;
    std::uint64_t address_;
};

/// Joins what it is told into ranges as long as can be.
class Reporter {
public:
    explicit Reporter(const std::function<void(Difference, AddressRange)>& report) : report_(report) {}
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;

    void add(Difference difference, AddressRange range) {
        if (difference == difference_ && range.start == range_.end) {
            range_.end = range.end;
            return;
        }
        finish();
        difference_ = difference;
        range_ = range;
    }

    void finish() {
        if (range_.size() > 0) report_(difference_, range_);
    }

private:
    const std::function<void(Difference, AddressRange)>& report_;
    Difference difference_{};
    AddressRange range_{};
};

void compareBytes(std::uint64_t start, const std::uint8_t* first, const std::uint8_t* second,
                  std::size_t size, Reporter& reporter) {
    for (std::size_t i = 0; i < size;) {
        i = static_cast<std::size_t>(std::mismatch(first + i, first + size, second + i).first - first);
        const std::size_t differing = i;
        while (i < size && first[i] != second[i]) ++i;
        if (i > differing) reporter.add(Difference::Bytes, {start + differing, start + i});
    }
}

/// Takes the run of bytes that stands before the next one of the other image.
void reportAlone(Difference difference, Cursor& cursor, const Cursor& other, Reporter& reporter) {
    const AddressRange range{cursor.address(), std::min(cursor.end(), other.address())};
    reporter.add(difference, range);
    cursor.moveTo(range.end);
}

}  // namespace

AddressRange extentOf(const LoadFileSections::List& sections) {
    if (sections.empty()) return {};
    AddressRange extent{std::numeric_limits<std::uint64_t>::max(), 0};
    for (const auto& section : sections) {
        extent.start = std::min<std::uint64_t>(extent.start, section->address());
        extent.end = std::max(extent.end, section->end());
    }
    return extent;
}

AddressRange largestGap(const LoadFileSections::List& sections) {
    std::vector<AddressRange> ranges;
    ranges.reserve(sections.size());
    for (const auto& section : sections) ranges.push_back({section->address(), section->end()});
    std::ranges::sort(ranges, {}, &AddressRange::start);
    AddressRange largest{};
    std::uint64_t end = ranges.empty() ? 0 : ranges.front().start;
    for (const AddressRange& range : ranges) {
        if (range.start > end && range.start - end > largest.size()) largest = {end, range.start};
        end = std::max(end, range.end);
    }
    return largest;
}

void compareImages(const LoadFileSections::List& first, const LoadFileSections::List& second,
                   const std::function<void(Difference, AddressRange)>& report) {
    const Image firstImage(first);
    const Image secondImage(second);
    Cursor a(firstImage);
    Cursor b(secondImage);
    Reporter reporter(report);
    while (a.address() != Cursor::nowhere || b.address() != Cursor::nowhere) {
        if (a.address() < b.address()) {
            reportAlone(Difference::OnlyInFirst, a, b, reporter);
        } else if (b.address() < a.address()) {
            reportAlone(Difference::OnlyInSecond, b, a, reporter);
        } else {
            const std::uint64_t start = a.address();
            const std::uint64_t end = std::min(a.end(), b.end());
            compareBytes(start, a.bytes(), b.bytes(), end - start, reporter);
            a.moveTo(end);
            b.moveTo(end);
        }
    }
    reporter.finish();
}

}  // namespace loadfiles
