#pragma once

#include "loadfiles/load_file.h"

#include <string>
#include <string_view>

namespace loadfiles {

/// TI-TXT: lines of bytes, "@" with an address before each run of them, and "q" at the end, which is
/// required.
class TIHexLoadFile : public StandardLoadFile {
public:
    explicit TIHexLoadFile(const std::string& path);

private:
    /// False behind the "q".
    bool readLine(std::string_view line);
    void readData(std::string_view line);

    std::uint32_t address_ = 0;
};

}  // namespace loadfiles
