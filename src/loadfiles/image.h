#pragma once

#include "loadfiles/section.h"

#include <cstdint>
#include <functional>

/// Questions about the sections of a load file as one image. Where sections overlap, the later one of the
/// list wins. Ends are addresses behind the last byte and may lie beyond the address space.
namespace loadfiles {

struct AddressRange {
    std::uint64_t start;
    std::uint64_t end;

    std::uint64_t size() const { return end - start; }
    friend bool operator==(const AddressRange&, const AddressRange&) = default;
};

/// From the lowest address to the highest end; empty without a section.
AddressRange extentOf(const LoadFileSections::List& sections);

/// The largest range inside the extent that no section covers, the lowest of equals; empty when there is
/// none.
AddressRange largestGap(const LoadFileSections::List& sections);

enum class Difference { Bytes, OnlyInFirst, OnlyInSecond };

/// Tells the ranges in which two images differ by ascending address, each as long as it can be. Time grows
/// with the bytes and, as n log n, with the sections.
void compareImages(const LoadFileSections::List& first, const LoadFileSections::List& second,
                   const std::function<void(Difference, AddressRange)>& report);

}  // namespace loadfiles
