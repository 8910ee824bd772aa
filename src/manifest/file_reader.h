#pragma once

#include <string>

namespace manifest {

/// Where the parser gets its files from.
class FileReader {
public:
    /// How a read ended: whole, with no such file or none that can be opened, or broken off.
    enum class Status { Okay = 0, NotFound = 1, OtherError = 2 };

    FileReader() = default;
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;
    virtual ~FileReader() = default;

    /// Reads the whole file into `contents`. Unless the status is `Okay`, the contents are empty and `error`
    /// holds the reason.
    virtual Status readFile(const std::string& path, std::string* contents, std::string* error) = 0;
};

}  // namespace manifest
