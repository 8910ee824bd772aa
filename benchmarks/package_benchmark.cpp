// Archives of a directory tree beside the libraries that compress them: the same files are read, the same
// bytes compressed at the same level and written, and the same files made of them, with their times and
// modes. PACKAGE_TREE names the tree and PACKAGE_SCRATCH a directory for what is made of it;
// scripts/bench-packages sets both and prints the ratios.
#include "package/package_archive.h"

#include <benchmark/benchmark.h>
#include <bzlib.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace package;

constexpr int zlibLevel = 7;
constexpr int bzip2Level = 9;
constexpr std::size_t chunkSize = 1 << 20;

void require(bool condition) {
    if (!condition) throw std::runtime_error("the peer failed");
}

fs::path variable(const char* name) {
    return std::getenv(name);
}

struct File {
    std::string path, name;
    struct stat status;
};

const std::vector<File>& tree() {
    static const std::vector<File> files = [] {
        const fs::path top = variable("PACKAGE_TREE");
        std::vector<File> found;
        for (const auto& entry : fs::recursive_directory_iterator(top)) {
            if (!entry.is_regular_file()) continue;
            File& file = found.emplace_back();
            file.path = entry.path().string();
            file.name = entry.path().lexically_relative(top).string();
            require(::stat(file.path.c_str(), &file.status) == 0);
        }
        return found;
    }();
    return files;
}

// --- Ours ---

fs::path archivePath(Compression compression) {
    return variable("PACKAGE_SCRATCH") / (compression == Compression::Zlib ? "zlib" : "bzip2");
}

void makeArchive(Compression compression) {
    PackageArchive archive;
    archive.setVersion(2);
    archive.setCompression(compression);
    for (const File& file : tree())
        archive.addDiskFile(QString::fromStdString(file.path), QString::fromStdString(file.name));
    archive.save(QString::fromStdString(archivePath(compression).string()),
                 compression == Compression::Zlib ? zlibLevel : bzip2Level);
}

void extractArchive(Compression compression, const fs::path& directory) {
    PackageArchive archive(QString::fromStdString(archivePath(compression).string()));
    std::vector<const PackageArchiveFile*> files;
    for (const auto& file : archive.files()) files.push_back(file.get());
    archive.extractAll(files, QString::fromStdString(directory.string()), false);
}

// --- The libraries by themselves ---

fs::path streamPath(Compression compression) {
    return archivePath(compression).string() + ".stream";
}

std::string_view bytesOf(const File& file, std::vector<char>& buffer) {
    buffer.resize(std::max(buffer.size(), static_cast<std::size_t>(file.status.st_size)));
    const int descriptor = ::open(file.path.c_str(), O_RDONLY);
    const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
    ::close(descriptor);
    require(got == file.status.st_size);
    return {buffer.data(), static_cast<std::size_t>(got)};
}

void makeZlibStream(std::FILE* output) {
    z_stream stream{};
    require(::deflateInit(&stream, zlibLevel) == Z_OK);
    std::vector<char> input;
    std::vector<Bytef> buffer(chunkSize);
    const auto run = [&](std::string_view bytes, int flush) {
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        stream.avail_in = static_cast<uInt>(bytes.size());
        int result = Z_OK;
        do {
            stream.next_out = buffer.data();
            stream.avail_out = static_cast<uInt>(buffer.size());
            result = ::deflate(&stream, flush);
            const std::size_t made = buffer.size() - stream.avail_out;
            require(std::fwrite(buffer.data(), 1, made, output) == made);
        } while (flush == Z_FINISH ? result != Z_STREAM_END : stream.avail_in > 0);
    };
    for (const File& file : tree()) run(bytesOf(file, input), Z_NO_FLUSH);
    run({}, Z_FINISH);
    ::deflateEnd(&stream);
}

void makeBzip2Stream(std::FILE* output) {
    int result = BZ_OK;
    BZFILE* const stream = ::BZ2_bzWriteOpen(&result, output, bzip2Level, 0, 30);
    std::vector<char> input;
    for (const File& file : tree()) {
        const std::string_view bytes = bytesOf(file, input);
        ::BZ2_bzWrite(&result, stream, const_cast<char*>(bytes.data()), static_cast<int>(bytes.size()));
        require(result == BZ_OK);
    }
    ::BZ2_bzWriteClose(&result, stream, 0, nullptr, nullptr);
    require(result == BZ_OK);
}

void makeStream(Compression compression) {
    std::FILE* const output = std::fopen(streamPath(compression).c_str(), "wb");
    compression == Compression::Zlib ? makeZlibStream(output) : makeBzip2Stream(output);
    require(std::fclose(output) == 0);
}

/// The decompressed bytes, chunk by chunk.
class Decompressor {
public:
    explicit Decompressor(Compression compression)
        : file_(std::fopen(streamPath(compression).c_str(), "rb")), buffer_(chunkSize), input_(chunkSize) {
        int result = BZ_OK;
        if (compression == Compression::Bzip2) bzip2_ = ::BZ2_bzReadOpen(&result, file_, 0, 0, nullptr, 0);
        if (bzip2_ == nullptr) require(::inflateInit(&zlib_) == Z_OK);
    }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;
    ~Decompressor() {
        int result = BZ_OK;
        if (bzip2_ != nullptr) ::BZ2_bzReadClose(&result, bzip2_);
        if (bzip2_ == nullptr) ::inflateEnd(&zlib_);
        std::fclose(file_);
    }

    std::string_view next() { return bzip2_ != nullptr ? nextOfBzip2() : nextOfZlib(); }

private:
    std::string_view nextOfBzip2() {
        int result = BZ_OK;
        const int got = ::BZ2_bzRead(&result, bzip2_, buffer_.data(), static_cast<int>(buffer_.size()));
        require(result == BZ_OK || result == BZ_STREAM_END);
        return {buffer_.data(), static_cast<std::size_t>(got)};
    }
    std::string_view nextOfZlib() {
        zlib_.next_out = reinterpret_cast<Bytef*>(buffer_.data());
        zlib_.avail_out = static_cast<uInt>(buffer_.size());
        int result = Z_OK;
        while (zlib_.avail_out > 0 && result == Z_OK) {
            if (zlib_.avail_in == 0) {
                zlib_.next_in = reinterpret_cast<Bytef*>(input_.data());
                zlib_.avail_in = static_cast<uInt>(std::fread(input_.data(), 1, input_.size(), file_));
            }
            result = ::inflate(&zlib_, Z_NO_FLUSH);
        }
        require(result == Z_OK || result == Z_STREAM_END);
        return {buffer_.data(), buffer_.size() - zlib_.avail_out};
    }

    std::FILE* file_;
    std::vector<char> buffer_;
    std::vector<char> input_;
    z_stream zlib_{};
    BZFILE* bzip2_ = nullptr;
};

void writeFile(int descriptor, const File& file, Decompressor& bytes, std::string_view& chunk) {
    auto left = static_cast<std::size_t>(file.status.st_size);
    while (left > 0) {
        if (chunk.empty()) chunk = bytes.next();
        const std::size_t step = std::min(left, chunk.size());
        require(step > 0 && ::write(descriptor, chunk.data(), step) == static_cast<ssize_t>(step));
        chunk.remove_prefix(step);
        left -= step;
    }
    const timespec times[] = {file.status.st_mtim, file.status.st_mtim};
    require(::futimens(descriptor, times) == 0 && ::fchmod(descriptor, file.status.st_mode & 0777) == 0);
}

void extractStream(Compression compression, const fs::path& directory) {
    Decompressor bytes(compression);
    std::string_view chunk;
    for (const File& file : tree()) {
        const fs::path place = directory / file.name;
        int descriptor = ::open(place.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (descriptor < 0) {
            fs::create_directories(place.parent_path());
            descriptor = ::open(place.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        }
        writeFile(descriptor, file, bytes, chunk);
        ::close(descriptor);
    }
}

// --- The runs ---

using Make = void (*)(Compression compression);
using Extract = void (*)(Compression compression, const fs::path& directory);

void runMake(benchmark::State& run, Compression compression, Make make) {
    tree();
    for (auto _ : run) make(compression);
}

void runExtract(benchmark::State& run, Compression compression, Make make, Extract extract) {
    const fs::path directory = variable("PACKAGE_SCRATCH") / "out";
    fs::remove_all(directory);
    static std::vector<std::pair<Make, Compression>> made;
    if (std::find(made.begin(), made.end(), std::pair(make, compression)) == made.end()) make(compression);
    made.emplace_back(make, compression);
    ::sync();
    for (auto _ : run) extract(compression, directory);
}

void addRuns(const std::string& library, Compression compression) {
    const auto add = [](const std::string& name, const auto&... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), arguments...)
            ->Iterations(1)
            ->MeasureProcessCPUTime()
            ->Unit(benchmark::kSecond);
    };
    add("makeArchive/" + library, runMake, compression, makeArchive);
    add("makeStream/" + library, runMake, compression, makeStream);
    add("extractArchive/" + library, runExtract, compression, makeArchive, extractArchive);
    add("extractStream/" + library, runExtract, compression, makeStream, extractStream);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    addRuns("zlib", Compression::Zlib);
    addRuns("bzip2", Compression::Bzip2);
    benchmark::RunSpecifiedBenchmarks();
}
