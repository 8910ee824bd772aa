#pragma once

#include "loadfiles/load_file.h"

#include <string>
#include <string_view>

namespace loadfiles {

/// An address-and-bytes listing: lines as `00001000 AA BB`, of up to 63 characters. The file needs no end
/// mark.
class HexLoadFile : public StandardLoadFile {
public:
    explicit HexLoadFile(const std::string& path);

private:
    void readLine(std::string_view line);
};

}  // namespace loadfiles
