#pragma once

#include "loadfiles/load_file.h"

#include <string>
#include <string_view>

namespace loadfiles {

/// Motorola S-record. The file needs no end record, and goes on behind one.
class SRecordLoadFile : public StandardLoadFile {
public:
    explicit SRecordLoadFile(const std::string& path);

private:
    void readLine(std::string_view line);

    std::uint16_t dataRecords_ = 0;
};

}  // namespace loadfiles
