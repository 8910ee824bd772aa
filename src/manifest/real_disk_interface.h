#pragma once

#include "manifest/disk_interface.h"

#include <map>
#include <string>

namespace manifest {

/// The file system of the machine, on POSIX calls; reasons are the system's own texts.
class RealDiskInterface : public DiskInterface {
public:
    /// A path that cannot be opened, a directory included, is `NotFound`. A file beyond `maxFileBytes` is an
    /// error.
    Status readFile(const std::string& path, std::string* contents, std::string* error) override;
    /// Reads an open descriptor to its end, at most `maxStreamBytes`; it stays open.
    static Status readDescriptor(int descriptor, std::string* contents, std::string* error);
    TimeStamp stat(const std::string& path, std::string* error) override;
    bool makeDir(const std::string& path) override;
    bool writeFile(const std::string& path, const std::string& contents) override;
    int removeFile(const std::string& path) override;

    /// Whether `stat` answers from listings of whole directories, made at the first question for each. The
    /// cache tells names apart without regard to case. Off at creation.
    void useCache(bool use) { useCache_ = use; }

private:
    using DirectoryListing = std::map<std::string, TimeStamp>;

    TimeStamp cachedStat(const std::string& path, std::string* error);

    bool useCache_ = false;
    std::map<std::string, DirectoryListing> cache_;  ///< both keys in lower case
};

}  // namespace manifest
