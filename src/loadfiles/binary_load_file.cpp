#include "loadfiles/binary_load_file.h"

#include "loadfiles/input_file.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace loadfiles {

namespace {

constexpr std::size_t largestSize = std::numeric_limits<std::uint32_t>::max();

/// Reads to the end of the file, whether or not it knows its size.
void readWhole(InputFile& file, ByteBuffer& bytes) {
    constexpr std::size_t smallestBlock = 65'536;
    const std::size_t hint = file.sizeHint();
    if (hint > largestSize) file.failToRead();
    std::size_t size = 0;
    for (std::size_t room = std::max(hint + 1, smallestBlock);;
         room = size + std::max(size / 2, smallestBlock)) {
        bytes.resize(room);
        size += file.read({reinterpret_cast<char*>(bytes.data()) + size, room - size});
        if (size > largestSize) file.failToRead();
        if (size < room) break;
    }
    if (size < hint) file.failToRead();
    bytes.resize(size);
}

}  // namespace

BinaryLoadFile::BinaryLoadFile(const std::string& path) {
    InputFile file(path);
    readWhole(file, bytes_);
}

void BinaryLoadFile::setLoadAddress(std::uint32_t address) {
    if (address == loadAddress_) return;
    sections_.clear();
    areSectionsRead_ = false;
    loadAddress_ = address;
}

bool BinaryLoadFile::readSections() {
    sections_.add(std::make_unique<StandardLoadFileSection>(
        "data", loadAddress_, static_cast<std::uint32_t>(bytes_.size()), bytes_.data()));
    return true;
}

}  // namespace loadfiles
