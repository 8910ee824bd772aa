#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

namespace loadfiles {

/// A file that is read from its start to its end. Failures are an `HException` "cannot open PATH" or
/// "cannot read PATH"; a directory opens and cannot be read.
class InputFile {
public:
    explicit InputFile(std::string path);

    /// Reads until `block` is full or the file ends; the number of bytes read.
    std::size_t read(std::span<char> block);
    /// The size in bytes; 0 when the file does not know it, as a pipe.
    std::size_t sizeHint();
    [[noreturn]] void failToRead() const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace loadfiles
