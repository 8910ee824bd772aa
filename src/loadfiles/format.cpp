#include "loadfiles/format.h"

#include "loadfiles/binary_load_file.h"
#include "loadfiles/hex_buffer.h"
#include "loadfiles/hex_load_file.h"
#include "loadfiles/intel_hex_buffer.h"
#include "loadfiles/intel_hex_load_file.h"
#include "loadfiles/srecord_buffer.h"
#include "loadfiles/srecord_load_file.h"
#include "loadfiles/ti_hex_buffer.h"
#include "loadfiles/ti_hex_load_file.h"

#include <algorithm>
#include <cctype>

namespace loadfiles {

namespace {

template <class File>
std::unique_ptr<LoadFileInterface> read(const std::string& path) {
    return std::make_unique<File>(path);
}

template <class Buffer>
std::unique_ptr<CodeBuffer> make(const std::string& path) {
    return std::make_unique<Buffer>(path);
}

std::unique_ptr<CodeBuffer> makeNone(const std::string&) {
    return nullptr;
}

struct FormatRow {
    Format format;
    std::string_view word;
    std::unique_ptr<LoadFileInterface> (*read)(const std::string& path);
    std::unique_ptr<CodeBuffer> (*make)(const std::string& path);
};

/// In the order of the enumeration.
constexpr FormatRow formats[] = {
    {Format::Binary, "bin", read<BinaryLoadFile>, makeNone},
    {Format::SRecord, "srec", read<SRecordLoadFile>, make<SRecordBuffer>},
    {Format::IntelHex, "hex", read<IntelHexLoadFile>, make<IntelHexBuffer>},
    {Format::Hex, "lst", read<HexLoadFile>, make<HexBuffer>},
    {Format::TIHex, "txt", read<TIHexLoadFile>, make<TIHexBuffer>},
};

const FormatRow& row(Format format) {
    return formats[static_cast<int>(format)];
}

struct ExtensionRow {
    std::string_view extension;
    Format format;
};

constexpr ExtensionRow extensions[] = {
    {"bin", Format::Binary},   {"srec", Format::SRecord},  {"s19", Format::SRecord},
    {"s28", Format::SRecord},  {"s37", Format::SRecord},   {"mot", Format::SRecord},
    {"hex", Format::IntelHex}, {"ihex", Format::IntelHex}, {"ihx", Format::IntelHex},
    {"lst", Format::Hex},      {"txt", Format::TIHex},
};

}  // namespace

std::optional<Format> formatOfWord(std::string_view word) {
    for (const FormatRow& candidate : formats)
        if (candidate.word == word) return candidate.format;
    return std::nullopt;
}

std::optional<Format> formatOfPath(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return std::nullopt;
    std::string extension(name.substr(dot + 1));
    std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const ExtensionRow& candidate : extensions)
        if (candidate.extension == extension) return candidate.format;
    return std::nullopt;
}

std::unique_ptr<LoadFileInterface> readLoadFile(Format format, const std::string& path) {
    return row(format).read(path);
}

std::unique_ptr<CodeBuffer> makeCodeBuffer(Format format, const std::string& path) {
    return row(format).make(path);
}

}  // namespace loadfiles
