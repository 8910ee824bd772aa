#include "loadfiles/load_file.h"

#include "loadfiles/image.h"
#include "support/hexception.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace loadfiles {

namespace {

/// A section that owns the bytes of all the sections it was made from.
class ContiguousSection : public StandardLoadFileSection {
public:
    ContiguousSection(std::uint32_t address, std::uint32_t size, std::uint8_t fillByte)
        : StandardLoadFileSection("Contiguous section", address, size, nullptr) {
        bytes_.resize(size);
        std::fill_n(bytes_.data(), size, fillByte);
        setBytes(bytes_.data(), size);
    }

    void copy(const LoadFileSectionInterface& section) {
        std::ranges::copy(section.bytes(), bytes_.data() + (section.address() - address()));
    }

private:
    ByteBuffer bytes_;
};

}  // namespace

const LoadFileSections::List& LoadFileInterface::sections() {
    if (!areSectionsRead_ && readsOnDemand_) {
        if (!readSections()) throw support::HException("cannot read sections from load file");
        areSectionsRead_ = true;
    }
    return sections_.list();
}

void StandardLoadFile::setEntryPoint(std::uint32_t address) {
    entryPoint_ = address;
    hasEntryPoint_ = true;
}

void StandardLoadFile::makeContiguous(std::uint8_t fillByte) {
    if (sections().empty()) return;
    const AddressRange extent = extentOf(sections());
    if (extent.size() > std::numeric_limits<std::uint32_t>::max())
        throw support::HException("sections span more than 4 GiB");
    auto whole = std::make_unique<ContiguousSection>(static_cast<std::uint32_t>(extent.start),
                                                     static_cast<std::uint32_t>(extent.size()), fillByte);
    for (const auto& section : sections()) whole->copy(*section);
    sections_.clear();
    sections_.add(std::move(whole));
}

}  // namespace loadfiles
