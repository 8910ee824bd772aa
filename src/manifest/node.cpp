#include "manifest/node.h"

namespace manifest {

std::string Node::writtenPath() const {
    std::string written(path_);
    std::uint64_t bits = slashBits_;
    for (std::size_t i = written.find('/'); bits != 0 && i != std::string::npos;
         i = written.find('/', i + 1)) {
        if (bits & 1) written[i] = '\\';
        bits >>= 1;
    }
    return written;
}

}  // namespace manifest
