// How an archive is recognised and its table of contents read.
#include "package/archive_data.h"
#include "package/archive_format.h"
#include "support/hexception.h"

#include <QFile>

#include <array>
#include <cstring>

namespace package {

using support::HException;

namespace {

using Source = PackageArchiveFile::Source;

[[noreturn]] void failTable() {
    throw HException("bad table of contents");
}

/// Reads the table of contents, and sees that the contents stand behind it and follow each other.
class TableReader {
public:
    explicit TableReader(ArchiveStream& input) : input_(input) {}

    template <typename Append>
    void readTable(Append append) {
        const std::uint32_t count = readCount();
        if (count > format::maxFiles) failTable();
        for (std::uint32_t i = 0; i < count; ++i) {
            PackageArchiveFile::Data entry = input_.version == 1 ? readEntry1() : readEntry2();
            place(entry);
            append(std::move(entry));
        }
        const bool overlaps = count > 0 && contentsStart_ < tableEnd_;
        if (overlaps || (input_.end == 0 && !input_.isAtEnd())) failTable();
    }

private:
    std::uint32_t readCount() {
        if (input_.version == 1) {
            tableEnd_ = format::v1::headerSize;
            return input_.count;
        }
        tableEnd_ = format::v2::headerSize;
        std::array<char, format::v2::headerSize> header;
        if (!read(header.data(), header.size())) throw HException("bad header");
        return format::get32(header.data());
    }

    void place(const PackageArchiveFile::Data& entry) {
        if (contentsStart_ < 0) contentsStart_ = entry.offset;
        if (entry.offset < contentsEnd_) failTable();
        contentsEnd_ = std::int64_t{entry.offset} + entry.size;
        if (entry.size > 0) input_.end = contentsEnd_;
        nameBytes_ += entry.name.toUtf8().size();
        if (nameBytes_ > format::maxNameBytes) failTable();
    }

    bool read(char* buffer, std::size_t size) {
        return input_.stream->read(buffer, static_cast<std::int64_t>(size)) ==
               static_cast<std::int64_t>(size);
    }

    PackageArchiveFile::Data readEntry1() {
        namespace v1 = format::v1;
        std::array<char, v1::entrySize> bytes;
        if (!read(bytes.data(), bytes.size())) failTable();
        tableEnd_ += v1::entrySize;
        const void* const nul = std::memchr(bytes.data(), 0, v1::nameSize);
        if (nul == nullptr) failTable();
        const bool isReadOnly = format::get16(bytes.data() + v1::readOnlyField) != 0;
        return {.source = Source::Archive,
                .name = QString::fromUtf8(bytes.data()),
                .offset = format::get32(bytes.data() + v1::offsetField),
                .size = format::get32(bytes.data() + v1::sizeField),
                .mode = isReadOnly ? readOnlyMode : writableMode,
                .modified = entryTime(format::get32(bytes.data() + v1::timeField))};
    }

    PackageArchiveFile::Data readEntry2() {
        namespace v2 = format::v2;
        std::array<char, v2::entrySize> bytes;
        if (!read(bytes.data(), bytes.size())) failTable();
        return {.source = Source::Archive,
                .name = readName(format::get16(bytes.data())),
                .offset = format::get32(bytes.data() + v2::offsetField),
                .size = format::get32(bytes.data() + v2::sizeField),
                .mode = format::get32(bytes.data() + v2::modeField) & format::keptMode,
                .modified = entryTime(format::get32(bytes.data() + v2::timeField))};
    }

    QString readName(int size) {
        QByteArray name(size, Qt::Uninitialized);
        if (size > 0 && !read(name.data(), static_cast<std::size_t>(size))) failTable();
        tableEnd_ += format::v2::entrySize + size;
        return QString::fromUtf8(name);
    }

    ArchiveStream& input_;
    std::int64_t tableEnd_ = 0;
    std::int64_t contentsStart_ = -1;  // of the first entry
    std::int64_t contentsEnd_ = 0;     // of the entries so far
    std::int64_t nameBytes_ = 0;       // likewise
};

}  // namespace

ArchiveStream PackageArchive::open(const QString& path, std::int64_t offset) {
    FileHandle file = openRegular(path);
    if (!file || (offset != 0 && ::fseeko(file.get(), offset, SEEK_SET) != 0)) return {};
    beforeRead(file.get());
    std::array<char, format::recognisedSize> start;
    if (std::fread(start.data(), 1, start.size(), file.get()) < start.size()) return {};

    const std::uint32_t magic = format::get32(start.data());
    if (magic == format::magic2) return openVersion2(format::get16(start.data() + 4), std::move(file));
    if (magic == format::compressedMagic) return openVersion1(std::move(file));
    return openPlain(start.data(), std::move(file));
}

ArchiveStream PackageArchive::openVersion2(std::uint16_t form, FileHandle file) {
    const auto compression = static_cast<Compression>(form >> format::compressionShift);
    const std::uint32_t version = form & format::versionMask;
    auto stream = createInputStream(compression, std::move(file));
    if (version != 2) return {};
    return {.stream = std::move(stream), .version = 2, .compression = compression};
}

ArchiveStream PackageArchive::openVersion1(FileHandle file) {
    constexpr int sizeBound = format::v1::fileHeaderSize - format::recognisedSize;
    if (::fseeko(file.get(), sizeBound, SEEK_CUR) != 0) return {};
    auto stream = createInputStream(Compression::Zlib, std::move(file));
    std::array<char, format::v1::headerSize> header;
    if (stream->read(header.data(), header.size()) < static_cast<std::int64_t>(header.size()) ||
        format::get32(header.data()) != format::plainMagic)
        return {};
    return {.stream = std::move(stream), .version = 1, .count = format::get32(header.data() + 4)};
}

ArchiveStream PackageArchive::openPlain(const char* start, FileHandle file) {
    if (format::get32(start) != format::plainMagic) return {};
    const std::int64_t position = ::ftello(file.get()) - format::recognisedSize;
    return {.stream = std::make_unique<PackageArchiveIOFile>(std::move(file)),
            .version = 1,
            .count = format::get32(start + 4),
            .start = position};
}

void PackageArchive::load(const QString& path, std::int64_t offset) {
    clear();
    if (!QFile::exists(path)) throw HException(path.toStdString() + " does not exist");
    ArchiveStream input = open(path, offset);
    if (!input.stream) throw HException("unsupported package file format");
    try {
        TableReader(input).readTable([this](PackageArchiveFile::Data entry) { append(std::move(entry)); });
    } catch (...) {
        clear();
        throw;
    }
    data_->path = path;
    data_->version = input.version;
    data_->compression = input.compression;
    data_->input = std::move(input);
}

bool PackageArchive::isArchive(const QString& path) {
    try {
        return PackageArchive().open(path, 0).stream != nullptr;
    } catch (const HException&) {
        return false;
    }
}

}  // namespace package
