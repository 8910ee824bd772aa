#pragma once

#include "loadfiles/byte_buffer.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace loadfiles {

/// A run of bytes at a target address. Beside the bytes of the file it can hold a working copy that a user
/// may change.
class LoadFileSectionInterface {
public:
    virtual ~LoadFileSectionInterface() = default;
    /// A text of bytes, which may be empty; it lives as long as the section.
    virtual const char* name() const = 0;
    /// The target address of the first byte.
    virtual std::uint32_t address() const = 0;
    /// The number of bytes. The last one may lie beyond the end of the address space.
    virtual std::uint32_t size() const = 0;
    /// The bytes of the file, or with `preferWorkingCopy` those of the working copy when there is one.
    virtual const std::uint8_t* data(bool preferWorkingCopy) const = 0;
    /// The working copy, made from the bytes of the file at the first call. The section owns it.
    virtual std::uint8_t* makeWorkingCopy() = 0;
    virtual void dropWorkingCopy() = 0;

    /// The address behind the last byte, which may be that behind the address space.
    std::uint64_t end() const { return std::uint64_t{address()} + size(); }
    std::span<const std::uint8_t> bytes() const { return {data(false), size()}; }
};

/// A section over bytes that somebody else owns and that outlive it.
class StandardLoadFileSection : public LoadFileSectionInterface {
public:
    StandardLoadFileSection(std::string name, std::uint32_t address, std::uint32_t size,
                            const std::uint8_t* data);

    const char* name() const override { return name_.c_str(); }
    std::uint32_t address() const override { return address_; }
    std::uint32_t size() const override { return size_; }
    const std::uint8_t* data(bool preferWorkingCopy) const override;
    std::uint8_t* makeWorkingCopy() override;
    void dropWorkingCopy() override { workingCopy_.reset(); }

protected:
    void setBytes(const std::uint8_t* data, std::uint32_t size);

private:
    std::string name_;
    std::uint32_t address_;
    std::uint32_t size_;
    const std::uint8_t* data_;
    std::unique_ptr<std::uint8_t[]> workingCopy_;
};

/// A section without a name that owns its bytes and grows while a text is read.
class ExpandingLoadFileSection : public StandardLoadFileSection {
public:
    explicit ExpandingLoadFileSection(std::uint32_t address);

    /// Throws `HException` when the size would pass 32 bits.
    void append(std::span<const std::uint8_t> bytes);

private:
    ByteBuffer bytes_;
};

/// The sections of one load file, in two lists of which it owns what the first one holds.
class LoadFileSections {
public:
    using List = std::vector<std::unique_ptr<LoadFileSectionInterface>>;

    List& list() { return list_; }
    void add(std::unique_ptr<LoadFileSectionInterface> section) { list_.push_back(std::move(section)); }
    /// Appends to the last section when that ends at `address`, else to a new one; no bytes leave all as it
    /// is.
    void addBytes(std::uint32_t address, std::span<const std::uint8_t> bytes);
    /// Sorts both lists by ascending address; sections at the same address keep their order.
    void sort();
    /// Destroys the sections.
    void clear();

private:
    List list_;
    std::vector<LoadFileSectionInterface*> borrowed_;  ///< no format fills it
    ExpandingLoadFileSection* growing_ = nullptr;      ///< the section that the last bytes went to
};

}  // namespace loadfiles
