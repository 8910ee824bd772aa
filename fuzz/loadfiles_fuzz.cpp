// The readers of the four text formats: any bytes end in an error or in an image, and an image that is
// written in the same format reads back the same.
#include "loadfiles/format.h"
#include "loadfiles/image.h"
#include "memory_file.h"
#include "support/hexception.h"

namespace {

using namespace loadfiles;
using fuzz::MemoryFile;

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
