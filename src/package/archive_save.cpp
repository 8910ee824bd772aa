// How an archive is written, in either version.
#include "package/archive_data.h"
#include "package/archive_format.h"
#include "support/hexception.h"

#include <QFile>

#include <algorithm>
#include <limits>

namespace package {

using support::HException;

namespace {

using Files = std::vector<std::unique_ptr<PackageArchiveFile>>;

constexpr int defaultLevel = 7;
constexpr int maxLevel = 9;

void writeAll(PackageArchiveIOFileInterface& stream, QByteArrayView bytes, const char* fault) {
    if (stream.write(bytes.data(), bytes.size()) < bytes.size()) throw HException(fault);
}

/// What stands in front of the stream and at its beginning, and the entries, in one version's form.
class TableWriter {
public:
    explicit TableWriter(const Files& files) : files_(files) {}
    TableWriter(const TableWriter&) = delete;
    TableWriter& operator=(const TableWriter&) = delete;
    virtual ~TableWriter() = default;

    /// Whether `load` would take so large a table.
    bool fits() const { return files_.size() <= format::maxFiles && nameBytes() <= format::maxNameBytes; }
    virtual QByteArray fileHeader() const = 0;
    virtual QByteArray header() const = 0;

    void writeTable(PackageArchiveIOFileInterface& stream) {
        std::int64_t offset = tableSize();
        for (const auto& file : files_) {
            if (offset > std::numeric_limits<std::uint32_t>::max())
                throw HException("cannot write table of contents");
            writeEntry(stream, *file, static_cast<std::uint32_t>(offset));
            offset += file->size();
        }
    }

protected:
    virtual std::int64_t tableSize() const = 0;
    virtual void writeEntry(PackageArchiveIOFileInterface& stream, const PackageArchiveFile& file,
                            std::uint32_t offset) = 0;

    const Files& files() const { return files_; }
    std::uint32_t count() const { return static_cast<std::uint32_t>(files_.size()); }
    std::int64_t nameBytes() const {
        std::int64_t size = 0;
        for (const auto& file : files_) size += file->name().toUtf8().size();
        return size;
    }

private:
    const Files& files_;
};

class TableWriter1 final : public TableWriter {
public:
    using TableWriter::TableWriter;

    QByteArray fileHeader() const override {
        QByteArray bytes(format::v1::fileHeaderSize, '\0');
        format::put32(format::compressedMagic, bytes.data());
        format::put32(1, bytes.data() + 4);
        qToBigEndian(sizeBound(), bytes.data() + format::recognisedSize);
        return bytes;
    }

    QByteArray header() const override {
        QByteArray bytes(format::v1::headerSize, '\0');
        format::put32(format::plainMagic, bytes.data());
        format::put32(count(), bytes.data() + 4);
        return bytes;
    }

protected:
    std::int64_t tableSize() const override {
        return format::v1::headerSize + std::int64_t{format::v1::entrySize} * count();
    }

    void writeEntry(PackageArchiveIOFileInterface& stream, const PackageArchiveFile& file,
                    std::uint32_t offset) override {
        namespace v1 = format::v1;
        QByteArray bytes = file.name().toUtf8();
        if (bytes.size() >= v1::nameSize) throw HException("filename too long");
        bytes.resize(v1::entrySize, '\0');
        format::put32(offset, bytes.data() + v1::offsetField);
        format::put32(file.size(), bytes.data() + v1::sizeField);
        format::put32(file.isReadOnly() ? 1 : 0, bytes.data() + v1::readOnlyField);
        format::put32(static_cast<std::uint32_t>(file.modifiedSeconds()), bytes.data() + v1::timeField);
        writeAll(stream, bytes, "cannot write table of contents");
    }

private:
    /// Of the whole archive; it wraps where it does not fit, as nobody reads it.
    std::uint32_t sizeBound() const {
        std::uint64_t size = 2 * std::uint64_t{format::v1::entrySize} * count();
        for (const auto& file : files()) size += file->size();
        return static_cast<std::uint32_t>(size + size / 100 + 13);
    }
};

class TableWriter2 final : public TableWriter {
public:
    TableWriter2(const Files& files, Compression compression)
        : TableWriter(files), compression_(compression) {}

    QByteArray fileHeader() const override {
        QByteArray bytes(format::v2::fileHeaderSize, '\0');
        format::put32(format::magic2, bytes.data());
        const std::uint32_t form = static_cast<std::uint32_t>(compression_) << format::compressionShift | 2;
        format::put16(static_cast<std::uint16_t>(form), bytes.data() + 4);
        return bytes;
    }

    QByteArray header() const override {
        QByteArray bytes(format::v2::headerSize, '\0');
        format::put32(count(), bytes.data());
        return bytes;
    }

protected:
    std::int64_t tableSize() const override {
        return format::v2::headerSize + std::int64_t{format::v2::entrySize} * count() + nameBytes();
    }

    void writeEntry(PackageArchiveIOFileInterface& stream, const PackageArchiveFile& file,
                    std::uint32_t offset) override {
        namespace v2 = format::v2;
        const QByteArray name = file.name().toUtf8();
        if (name.size() > v2::maxNameSize) throw HException("filename too long");
        QByteArray bytes(v2::entrySize, '\0');
        format::put16(static_cast<std::uint16_t>(name.size()), bytes.data());
        format::put32(offset, bytes.data() + v2::offsetField);
        format::put32(file.size(), bytes.data() + v2::sizeField);
        format::put32(file.mode(), bytes.data() + v2::modeField);
        format::put32(static_cast<std::uint32_t>(file.modifiedSeconds()), bytes.data() + v2::timeField);
        writeAll(stream, bytes, "cannot write table of contents");
        writeAll(stream, name, "cannot write table of contents filename");
    }

private:
    Compression compression_;
};

std::unique_ptr<TableWriter> makeWriter(const PackageArchive& archive) {
    if (archive.version() == 1) return std::make_unique<TableWriter1>(archive.files());
    return std::make_unique<TableWriter2>(archive.files(), archive.compression());
}

}  // namespace

void PackageArchive::save(const QString& path, int level) {
    const std::unique_ptr<TableWriter> table = makeWriter(*this);
    const Compression compression = version() == 1 ? Compression::Zlib : this->compression();
    if (!table->fits()) throw HException("cannot write table of contents");

    FileHandle file(readsFrom(path) ? nullptr : std::fopen(QFile::encodeName(path).constData(), "wb"));
    if (!file) throw HException("cannot open output file");
    beforeWrite(file.get());
    const QByteArray fileHeader = table->fileHeader();
    if (std::fwrite(fileHeader.constData(), fileHeader.size(), 1, file.get()) != 1)
        throw HException("cannot write header");
    const auto stream = createOutputStream(compression, std::move(file),
                                           level < 0 ? defaultLevel : std::min(level, maxLevel));
    writeAll(*stream, table->header(), "cannot write header2");
    table->writeTable(*stream);
    writeContents(*stream);
    stream->closeCompressor();
}

void PackageArchive::writeContents(PackageArchiveIOFileInterface& stream) {
    for (const auto& file : data_->files) {
        // The table has promised a size; a file on disk may have changed since.
        std::int64_t left = file->size();
        for (Contents pieces(contents(file.get())); !pieces.isAtEnd(); pieces.advance()) {
            left -= pieces.piece().size();
            if (left < 0) break;
            writeAll(stream, pieces.piece(), "cannot write file");
        }
        if (left != 0) throw HException("cannot write file");
    }
}

}  // namespace package
