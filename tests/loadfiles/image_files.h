#pragma once

#include "loadfiles/format.h"
#include "support/hexception.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// What the tests of load files share.
namespace loadfiles_test {

using namespace loadfiles;

/// A directory that goes with the object.
class Directory {
public:
    Directory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "loadfiles-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    ~Directory() { std::filesystem::remove_all(path_); }

    std::string file(const std::string& name) const { return path_ + "/" + name; }

    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(file(name), std::ios::binary) << bytes;
        return file(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    std::string path_;
};

/// Bytes at an address.
struct Chunk {
    std::uint32_t address;
    std::string bytes;

    friend bool operator==(const Chunk&, const Chunk&) = default;
};

inline std::vector<Chunk> chunksOf(LoadFileInterface& file) {
    std::vector<Chunk> chunks;
    for (const auto& section : file.sections())
        chunks.push_back({section->address(), std::string(section->bytes().begin(), section->bytes().end())});
    return chunks;
}

inline void write(CodeBuffer& buffer, const std::vector<Chunk>& chunks, std::uint32_t start = 0) {
    for (const Chunk& chunk : chunks) {
        buffer.setAddress(chunk.address);
        buffer.putBytes({reinterpret_cast<const std::uint8_t*>(chunk.bytes.data()), chunk.bytes.size()});
    }
    buffer.finish(start);
}

/// The sections as `ADDRESS:BYTES`, joined by blanks, all in hexadecimal digits; behind them the entry point
/// as
/// `@ADDRESS`. A file that cannot be read gives the error's message.
inline std::string print(LoadFileInterface& file) {
    std::string text;
    const auto add = [&text](const char* format, unsigned number) {
        char digits[16];
        std::snprintf(digits, sizeof digits, format, number);
        text += digits;
    };
    for (const Chunk& chunk : chunksOf(file)) {
        add(text.empty() ? "%x:" : " %x:", chunk.address);
        for (const char byte : chunk.bytes) add("%02X", static_cast<unsigned char>(byte));
    }
    if (file.hasEntryPoint()) add(text.empty() ? "@%x" : " @%x", file.entryPoint());
    return text;
}

inline std::string printFile(Format format, const std::string& path) {
    try {
        return print(*readLoadFile(format, path));
    } catch (const support::HException& fault) {
        return fault.message();
    }
}

}  // namespace loadfiles_test
