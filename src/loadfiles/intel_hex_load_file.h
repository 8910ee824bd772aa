#pragma once

#include "loadfiles/load_file.h"

#include <string>
#include <string_view>

namespace loadfiles {

class RecordReader;

/// Intel HEX, with records of all six types of the "Hexadecimal Object File Format Specification" (Intel,
/// 1988). The end record is required, and what follows it is not read.
class IntelHexLoadFile : public StandardLoadFile {
public:
    explicit IntelHexLoadFile(const std::string& path);

private:
    /// False behind the end record.
    bool readLine(std::string_view line);
    void readContent(std::uint8_t type, std::uint8_t length, std::uint32_t offset, RecordReader& record);

    std::uint32_t upperAddress_ = 0;
    std::uint32_t segmentBase_ = 0;
};

}  // namespace loadfiles
