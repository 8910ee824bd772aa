#pragma once

#include "loadfiles/load_file.h"

#include <string>

namespace loadfiles {

/// Raw bytes: one section named "data" at the load address, which is 0 until it is set.
class BinaryLoadFile : public StandardLoadFile {
public:
    /// Throws "cannot open PATH", or "cannot read PATH" also for a file of more than 4 GiB less one byte.
    explicit BinaryLoadFile(const std::string& path);

    bool hasAddresses() const override { return false; }
    void setLoadAddress(std::uint32_t address) override;
    bool readSections() override;

private:
    ByteBuffer bytes_;
    std::uint32_t loadAddress_ = 0;
};

}  // namespace loadfiles
