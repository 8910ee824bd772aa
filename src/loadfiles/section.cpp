#include "loadfiles/section.h"

#include "support/hexception.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace loadfiles {

StandardLoadFileSection::StandardLoadFileSection(std::string name, std::uint32_t address, std::uint32_t size,
                                                 const std::uint8_t* data)
    : name_(std::move(name)), address_(address), size_(size), data_(data) {}

const std::uint8_t* StandardLoadFileSection::data(bool preferWorkingCopy) const {
    return preferWorkingCopy && workingCopy_ ? workingCopy_.get() : data_;
}

std::uint8_t* StandardLoadFileSection::makeWorkingCopy() {
    if (!workingCopy_) {
        workingCopy_ = std::make_unique_for_overwrite<std::uint8_t[]>(size_);
        std::copy_n(data_, size_, workingCopy_.get());
    }
    return workingCopy_.get();
}

void StandardLoadFileSection::setBytes(const std::uint8_t* data, std::uint32_t size) {
    data_ = data;
    size_ = size;
}

ExpandingLoadFileSection::ExpandingLoadFileSection(std::uint32_t address)
    : StandardLoadFileSection(std::string(), address, 0, nullptr) {}

void ExpandingLoadFileSection::append(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max() - bytes_.size())
        throw support::HException("section exceeds 4 GiB");
    bytes_.append(bytes);
    setBytes(bytes_.data(), static_cast<std::uint32_t>(bytes_.size()));
}

void LoadFileSections::addBytes(std::uint32_t address, std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return;
    if (growing_ == nullptr || growing_->end() != address) {
        auto section = std::make_unique<ExpandingLoadFileSection>(address);
        growing_ = section.get();
        add(std::move(section));
    }
    growing_->append(bytes);
}

void LoadFileSections::sort() {
    const auto byAddress = [](const auto& a, const auto& b) { return a->address() < b->address(); };
    std::stable_sort(list_.begin(), list_.end(), byAddress);
    std::stable_sort(borrowed_.begin(), borrowed_.end(), byAddress);
}

void LoadFileSections::clear() {
    growing_ = nullptr;
    list_.clear();
}

}  // namespace loadfiles
