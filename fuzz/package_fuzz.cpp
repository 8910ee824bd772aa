// Archives: any bytes end in an error, which leaves an empty archive, or in an archive whose entries can be
// read or fail by name; and what could be read whole is saved and read back the same.
#include "memory_file.h"
#include "package/package_archive.h"
#include "support/hexception.h"

#include <optional>

namespace {

using namespace package;

/// Larger claims are tried by the tests.
constexpr std::uint32_t largestFile = 1U << 20;

std::optional<QByteArray> contents(PackageArchive& archive, const PackageArchiveFile& file) {
    if (file.size() > largestFile) return {};
    try {
        return archive.readFile(&file);
    } catch (const support::HException&) {
        return {};
    }
}

/// False for a name that cannot be written: what is no UTF-8 grows when it is read.
bool saves(PackageArchive& archive, const fuzz::MemoryFile& output) {
    try {
        archive.save(QString::fromStdString(output.path()), 1);
        return true;
    } catch (const support::HException& fault) {
        if (fault.message() != "filename too long") __builtin_trap();
        return false;
    }
}

void checkAgain(PackageArchive& archive, const fuzz::MemoryFile& output) {
    if (!saves(archive, output)) return;
    PackageArchive again(QString::fromStdString(output.path()));
    if (again.files().size() != archive.files().size()) __builtin_trap();
    for (std::size_t i = 0; i < again.files().size(); ++i) {
        const PackageArchiveFile& before = *archive.files()[i];
        const PackageArchiveFile& after = *again.files()[i];
        if (before.name() != after.name() || before.modified() != after.modified() ||
            archive.readFile(&before) != again.readFile(&after))
            __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile input;
    static const fuzz::MemoryFile output;
    input.fill(data, size);
    PackageArchive archive;
    try {
        archive.load(QString::fromStdString(input.path()));
    } catch (const support::HException&) {
        if (!archive.files().empty()) __builtin_trap();
        return 0;
    }
    bool isWhole = true;
    for (const auto& file : archive.files()) isWhole = contents(archive, *file).has_value() && isWhole;
    if (isWhole) checkAgain(archive, output);
    return 0;
}
