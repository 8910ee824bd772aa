// The readers of the four text formats: any bytes end in an error or in an image, and an image that is
// written in the same format reads back the same.
#include "loadfiles/format.h"
#include "loadfiles/image.h"
#include "support/hexception.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace loadfiles;

/// A file in memory that has a path.
class MemoryFile {
public:
    MemoryFile()
        : descriptor_(::memfd_create("image", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    const std::string& path() const { return path_; }

    void fill(const std::uint8_t* data, std::size_t size) const {
        if (::ftruncate(descriptor_, 0) != 0 ||
            ::pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size))
            __builtin_trap();
    }

private:
    int descriptor_;
    std::string path_;
};

void writeSections(LoadFileInterface& file, CodeBuffer& buffer) {
    for (const auto& section : file.sections()) {
        buffer.setAddress(section->address());
        buffer.putBytes(section->bytes());
    }
    buffer.finish(file.entryPoint());
    if (!buffer.flush()) __builtin_trap();
}

bool staysInAddressSpace(LoadFileInterface& file) {
    return extentOf(file.sections()).end <= std::uint64_t{1} << 32;
}

void check(Format format, const MemoryFile& input) {
    static const MemoryFile output;
    std::unique_ptr<LoadFileInterface> file;
    try {
        file = readLoadFile(format, input.path());
    } catch (const support::HException& fault) {
        if (fault.message().find(" : line ") == std::string::npos) __builtin_trap();
        return;
    }
    if (!staysInAddressSpace(*file)) return;
    writeSections(*file, *makeCodeBuffer(format, output.path()));
    const auto again = readLoadFile(format, output.path());
    compareImages(file->sections(), again->sections(), [](Difference, AddressRange) { __builtin_trap(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile input;
    input.fill(data, size);
    for (const Format format : {Format::SRecord, Format::IntelHex, Format::Hex, Format::TIHex})
        check(format, input);
    return 0;
}
