// How the contents of entries are read.
#include "package/archive_data.h"
#include "support/hexception.h"

#include <algorithm>

namespace package {

using support::HException;

namespace {

constexpr std::int64_t pieceSize = std::int64_t{1} << 18;

/// One entry of the opened archive.
class StreamSource {
public:
    StreamSource(PackageArchiveData& data, const PackageArchiveFile& file, std::uint32_t offset)
        : data_(data), file_(file), left_(file.size()), isLast_(offset + left_ == data.input.end) {
        if (left_ > 0 && !data_.input.stream->seek(data_.input.start + offset)) fail();
    }

    QByteArrayView operator()() {
        const std::int64_t size = std::min(left_, pieceSize);
        if (data_.input.stream->read(data_.piece.data(), size) < size) fail();
        left_ -= size;
        if (size > 0 && left_ == 0 && isLast_ && !data_.input.isAtEnd()) fail();
        return {data_.piece.data(), size};
    }

private:
    [[noreturn]] void fail() const {
        throw HException("cannot read file " + file_.name().toStdString() + " from archive");
    }

    PackageArchiveData& data_;
    const PackageArchiveFile& file_;
    std::int64_t left_;
    bool isLast_;
};

/// A file on disk, to its end.
class DiskSource {
public:
    DiskSource(PackageArchiveData& data, const PackageArchiveFile& entry, const QString& path)
        : data_(data), entry_(entry), file_(openRegular(path)) {
        if (!file_) fail();
    }

    QByteArrayView operator()() {
        const std::size_t got = std::fread(data_.piece.data(), 1, data_.piece.size(), file_.get());
        if (std::ferror(file_.get()) != 0) fail();
        return {data_.piece.data(), static_cast<qsizetype>(got)};
    }

private:
    [[noreturn]] void fail() const { throw HException("cannot read file " + entry_.name().toStdString()); }

    PackageArchiveData& data_;
    const PackageArchiveFile& entry_;
    std::shared_ptr<std::FILE> file_;
};

}  // namespace

PieceSource PackageArchive::contents(const PackageArchiveFile* file) {
    using Source = PackageArchiveFile::Source;
    const Source source = file == nullptr ? Source::Nowhere : file->data_.source;
    if (source == Source::Nowhere) return wholePiece({});
    if (source == Source::Memory) return wholePiece(file->data_.data);
    data_->piece.resize(pieceSize);
    if (source == Source::Disk) return DiskSource(*data_, *file, file->data_.diskPath);
    return StreamSource(*data_, *file, file->data_.offset);
}

QByteArray PackageArchive::readFile(const PackageArchiveFile* file) {
    QByteArray whole;
    for (Contents pieces(contents(file)); !pieces.isAtEnd(); pieces.advance()) whole += pieces.piece();
    return whole;
}

}  // namespace package
