#pragma once

#include "loadfiles/section.h"

#include <cstdint>

namespace loadfiles {

/// An image on disk that is to go into target memory: a list of sections and perhaps an entry point.
///
/// A caller constructs the class of the file's format with a path, calls `setLoadAddress` when `hasAddresses`
/// is false, and goes through `sections()`, which stay the file's own. Every failure is an `HException`; a
/// constructor that throws leaves nothing behind. Paths are bytes as the system takes them.
class LoadFileInterface {
public:
    virtual ~LoadFileInterface() = default;
    virtual bool hasEntryPoint() const = 0;
    virtual void setEntryPoint(std::uint32_t address) = 0;
    virtual std::uint32_t entryPoint() const = 0;
    /// Whether the format tells where its bytes go.
    virtual bool hasAddresses() const = 0;
    /// Places a file without addresses; no effect on the others. Another address than the one in force
    /// destroys the sections, and the next `sections()` makes them anew.
    virtual void setLoadAddress(std::uint32_t address) = 0;
    /// Replaces the sections by one named "Contiguous section", from the lowest address to the highest end,
    /// with `fillByte` in the gaps; where sections overlap, the later one of the list wins. Without a section
    /// it does nothing. Throws when the span does not fit in 32 bits.
    virtual void makeContiguous(std::uint8_t fillByte) = 0;
    /// Sorts the sections by ascending address.
    virtual void sortSections() = 0;
    /// A question that no format here has an answer to: always false.
    virtual bool reservedFlag() const = 0;
    /// A text that no format here has: always null.
    virtual const char* reservedText() const = 0;
    /// Sees to it that the sections are there; false when they cannot be had.
    virtual bool readSections() = 0;

    /// The sections in the order of the file, read now if they are not there yet.
    const LoadFileSections::List& sections();

protected:
    LoadFileSections sections_;
    bool areSectionsRead_ = false;
    bool readsOnDemand_ = true;
    std::uint32_t entryPoint_ = 0;
    bool hasEntryPoint_ = false;
};

/// What the formats have in common. Those with addresses are read in full by their constructors.
class StandardLoadFile : public LoadFileInterface {
public:
    bool hasEntryPoint() const override { return hasEntryPoint_; }
    void setEntryPoint(std::uint32_t address) override;
    std::uint32_t entryPoint() const override { return entryPoint_; }
    bool hasAddresses() const override { return true; }
    void setLoadAddress(std::uint32_t) override {}
    void makeContiguous(std::uint8_t fillByte) override;
    void sortSections() override { sections_.sort(); }
    bool reservedFlag() const override { return false; }
    const char* reservedText() const override { return nullptr; }
    bool readSections() override { return true; }
};

}  // namespace loadfiles
