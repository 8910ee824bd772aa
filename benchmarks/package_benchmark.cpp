// Archives of a directory tree beside the libraries that compress them, for the same bytes at the same level.
// PACKAGE_TREE names the tree and PACKAGE_SCRATCH a directory for what is made of it; scripts/bench-packages
// sets both and prints the ratios.
#include "package/package_archive.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <benchmark/benchmark.h>
#include <bzlib.h>
#include <zlib.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

using namespace package;

constexpr int zlibLevel = 7;
constexpr int bzip2Level = 9;

QString variable(const char* name) {
    return QFile::decodeName(qgetenv(name));
}

QString archivePath(Compression compression) {
    return variable("PACKAGE_SCRATCH") +
           (compression == Compression::Zlib ? QStringLiteral("/zlib") : QStringLiteral("/bzip2"));
}

void addTree(PackageArchive& archive) {
    const QDir top(variable("PACKAGE_TREE"));
    QDirIterator walk(top.path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        archive.addDiskFile(path, top.relativeFilePath(path));
    }
}

void make(Compression compression) {
    PackageArchive archive;
    archive.setVersion(2);
    archive.setCompression(compression);
    addTree(archive);
    archive.save(archivePath(compression), compression == Compression::Zlib ? zlibLevel : bzip2Level);
}

/// The decompressed bytes of the archive, in pieces of 1 MiB.
const std::vector<QByteArray>& bytes() {
    static const std::vector<QByteArray> pieces = [] {
        std::vector<QByteArray> all(1);
        PackageArchive archive;
        addTree(archive);
        for (const auto& file : archive.files()) {
            if (all.back().size() > 1 << 20) all.emplace_back();
            all.back() += archive.readFile(file.get());
        }
        return all;
    }();
    return pieces;
}

void require(bool condition) {
    if (!condition) throw std::runtime_error("the library failed");
}

QByteArray deflated() {
    z_stream stream{};
    require(::deflateInit(&stream, zlibLevel) == Z_OK);
    QByteArray out;
    std::vector<Bytef> buffer(1 << 16);
    const auto run = [&](int flush) {
        int result = Z_OK;
        do {
            stream.next_out = buffer.data();
            stream.avail_out = static_cast<uInt>(buffer.size());
            result = ::deflate(&stream, flush);
            out.append(reinterpret_cast<char*>(buffer.data()),
                       static_cast<qsizetype>(buffer.size() - stream.avail_out));
        } while (flush == Z_FINISH ? result != Z_STREAM_END : stream.avail_in > 0);
    };
    for (const QByteArray& piece : bytes()) {
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.constData()));
        stream.avail_in = static_cast<uInt>(piece.size());
        run(Z_NO_FLUSH);
    }
    run(Z_FINISH);
    ::deflateEnd(&stream);
    return out;
}

void inflate(const QByteArray& compressed) {
    z_stream stream{};
    require(::inflateInit(&stream) == Z_OK);
    std::vector<Bytef> buffer(1 << 16);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.constData()));
    stream.avail_in = static_cast<uInt>(compressed.size());
    int result = Z_OK;
    while (result == Z_OK) {
        stream.next_out = buffer.data();
        stream.avail_out = static_cast<uInt>(buffer.size());
        result = ::inflate(&stream, Z_NO_FLUSH);
    }
    require(result == Z_STREAM_END);
    ::inflateEnd(&stream);
}

QByteArray bzipped() {
    bz_stream stream{};
    require(::BZ2_bzCompressInit(&stream, bzip2Level, 0, 30) == BZ_OK);
    QByteArray out;
    std::vector<char> buffer(1 << 16);
    const auto run = [&](int action) {
        int result = BZ_RUN_OK;
        do {
            stream.next_out = buffer.data();
            stream.avail_out = static_cast<unsigned>(buffer.size());
            result = ::BZ2_bzCompress(&stream, action);
            out.append(buffer.data(), static_cast<qsizetype>(buffer.size() - stream.avail_out));
        } while (action == BZ_FINISH ? result != BZ_STREAM_END : stream.avail_in > 0);
    };
    for (const QByteArray& piece : bytes()) {
        stream.next_in = const_cast<char*>(piece.constData());
        stream.avail_in = static_cast<unsigned>(piece.size());
        run(BZ_RUN);
    }
    run(BZ_FINISH);
    ::BZ2_bzCompressEnd(&stream);
    return out;
}

void bunzip(const QByteArray& compressed) {
    bz_stream stream{};
    require(::BZ2_bzDecompressInit(&stream, 0, 0) == BZ_OK);
    std::vector<char> buffer(1 << 16);
    stream.next_in = const_cast<char*>(compressed.constData());
    stream.avail_in = static_cast<unsigned>(compressed.size());
    int result = BZ_OK;
    while (result == BZ_OK) {
        stream.next_out = buffer.data();
        stream.avail_out = static_cast<unsigned>(buffer.size());
        result = ::BZ2_bzDecompress(&stream);
    }
    require(result == BZ_STREAM_END);
    ::BZ2_bzDecompressEnd(&stream);
}

void makeArchive(benchmark::State& run, Compression compression) {
    for (auto _ : run) make(compression);
}

void extractArchive(benchmark::State& run, Compression compression) {
    const QString directory = variable("PACKAGE_SCRATCH") + QStringLiteral("/out");
    make(compression);
    for (auto _ : run) {
        PackageArchive archive(archivePath(compression));
        for (const auto& file : archive.files()) archive.extract(file.get(), directory, false);
        run.PauseTiming();
        QDir(directory).removeRecursively();
        run.ResumeTiming();
    }
}

void makeStream(benchmark::State& run, QByteArray (*compress)()) {
    bytes();
    for (auto _ : run) benchmark::DoNotOptimize(compress());
}

void readStream(benchmark::State& run, QByteArray (*compress)(), void (*decompress)(const QByteArray&)) {
    const QByteArray compressed = compress();
    for (auto _ : run) decompress(compressed);
}

BENCHMARK_CAPTURE(makeArchive, zlib, Compression::Zlib)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(makeStream, zlib, deflated)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(extractArchive, zlib, Compression::Zlib)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(readStream, zlib, deflated, inflate)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(makeArchive, bzip2, Compression::Bzip2)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(makeStream, bzip2, bzipped)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(extractArchive, bzip2, Compression::Bzip2)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(readStream, bzip2, bzipped, bunzip)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
