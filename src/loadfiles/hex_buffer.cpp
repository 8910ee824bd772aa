#include "loadfiles/hex_buffer.h"

namespace loadfiles {

void HexBuffer::finish(std::uint32_t) {
    endLine();
}

void HexBuffer::writeLine() {
    stream_.putHex(lineStart(), 8);
    stream_.putHexAndBlanks(bytes());
    stream_.put('\n');
}

}  // namespace loadfiles
