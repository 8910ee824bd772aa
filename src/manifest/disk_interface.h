#pragma once

#include "manifest/file_reader.h"

#include <cstdint>
#include <string>

namespace manifest {

/// -1 for an error, 0 for a missing file, else seconds from 31 December 2000, 21:06:40 UTC, which is no true
/// epoch.
using TimeStamp = std::int32_t;

/// The file system as the engine sees it. Where an operation prints, it prints an error as `manifest::error`
/// does.
class DiskInterface : public FileReader {
public:
    /// When the file was last written; -1 sets the error.
    virtual TimeStamp stat(const std::string& path, std::string* error) = 0;

    /// Makes one directory. True when it exists now; else prints the reason.
    virtual bool makeDir(const std::string& path) = 0;

    /// Makes or replaces the file. True on success; else prints the reason.
    virtual bool writeFile(const std::string& path, const std::string& contents) = 0;

    /// 0 on success, 1 when there was no such file, -1 otherwise, after printing the reason.
    virtual int removeFile(const std::string& path) = 0;
};

}  // namespace manifest
