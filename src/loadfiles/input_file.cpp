#include "loadfiles/input_file.h"

#include "support/hexception.h"

#include <utility>

namespace loadfiles {

InputFile::InputFile(std::string path) : path_(std::move(path)), file_(std::fopen(path_.c_str(), "rb")) {
    if (!file_) throw support::HException("cannot open " + path_);
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // the readers ask for large blocks
}

std::size_t InputFile::read(std::span<char> block) {
    const std::size_t got = std::fread(block.data(), 1, block.size(), file_.get());
    if (got < block.size() && std::ferror(file_.get())) failToRead();
    return got;
}

std::size_t InputFile::sizeHint() {
    if (std::fseek(file_.get(), 0, SEEK_END) != 0) return 0;
    const long size = std::ftell(file_.get());
    std::rewind(file_.get());
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

void InputFile::failToRead() const {
    throw support::HException("cannot read " + path_);
}

}  // namespace loadfiles
