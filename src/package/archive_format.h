#pragma once

#include <QtEndian>

#include <cstdint>

/// The numbers of the archive format. All fields are little-endian but the size bound.
///
/// Version 1: `compressedMagic`, 1, the size bound; then one zlib stream of `plainMagic`, the count, the
/// table of contents in entries of a fixed size, and the contents. A plain file is that stream, not
/// compressed. Version 2: `magic2`, version and compression in 16 bits, 0 in 16 bits; then one zlib or bzip2
/// stream of the count and zeros, the table, in which each name stands behind its entry, and the contents.
/// Contents follow each other in table order. Offsets count from the first byte of the stream.
namespace package::format {

constexpr std::uint32_t compressedMagic = 0xB231F47A;
constexpr std::uint32_t plainMagic = 0x4152C3C8;
constexpr std::uint32_t magic2 = 0x71F5C6B1;

constexpr std::uint32_t compressionShift = 12;
constexpr std::uint32_t versionMask = 0xFFF;

/// What is read to recognise a file, of either version.
constexpr int recognisedSize = 8;

namespace v1 {
constexpr int fileHeaderSize = 12;
constexpr int headerSize = 8;
constexpr int entrySize = 1040;
constexpr int nameSize = 1024;  ///< with the NUL that ends it
constexpr int offsetField = 1024;
constexpr int sizeField = 1028;
constexpr int readOnlyField = 1032;
constexpr int timeField = 1036;
}  // namespace v1

namespace v2 {
constexpr int fileHeaderSize = 8;
constexpr int headerSize = 20;
constexpr int entrySize = 18;
constexpr int maxNameSize = 65535;
constexpr int offsetField = 2;
constexpr int sizeField = 6;
constexpr int modeField = 10;
constexpr int timeField = 14;
}  // namespace v2

/// Of `st_mode`: what an entry keeps, and what a new file takes from where it is created.
constexpr std::uint32_t keptMode = 0xE1FF;
constexpr std::uint32_t createdMode = 0x1E00;

/// A table beyond these is taken for damaged, and not written: a short stream can decompress to any number of
/// entries.
constexpr std::uint32_t maxFiles = 1U << 21;
constexpr std::int64_t maxNameBytes = std::int64_t{1} << 28;  ///< of all names together

inline std::uint16_t get16(const char* bytes) {
    return qFromLittleEndian<std::uint16_t>(bytes);
}
inline std::uint32_t get32(const char* bytes) {
    return qFromLittleEndian<std::uint32_t>(bytes);
}
inline void put16(std::uint16_t value, char* bytes) {
    qToLittleEndian(value, bytes);
}
inline void put32(std::uint32_t value, char* bytes) {
    qToLittleEndian(value, bytes);
}

}  // namespace package::format
