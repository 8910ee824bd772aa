#pragma once

#include "loadfiles/code_buffer.h"
#include "loadfiles/load_file.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace loadfiles {

enum class Format { Binary, SRecord, IntelHex, Hex, TIHex };

/// The format with the word "bin", "srec", "hex", "lst" or "txt".
std::optional<Format> formatOfWord(std::string_view word);

/// The format that the extension of the file name stands for, in either case.
std::optional<Format> formatOfPath(std::string_view path);

/// Reads a file of the format; throws `HException` as the constructors do.
std::unique_ptr<LoadFileInterface> readLoadFile(Format format, const std::string& path);

/// A buffer that writes a file of the format; null for `Format::Binary`, whose bytes go to the file as they
/// stand.
std::unique_ptr<CodeBuffer> makeCodeBuffer(Format format, const std::string& path);

}  // namespace loadfiles
