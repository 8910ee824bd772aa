#include "loadfiles/ti_hex_buffer.h"

namespace loadfiles {

void TIHexBuffer::finish(std::uint32_t) {
    endLine();
    stream_.put("q\n");
    flush();
}

void TIHexBuffer::writeLine() {
    if (lineStart() != nextAddress_) {
        stream_.put('@');
        stream_.putHex(lineStart(), 8);
        stream_.put('\n');
    }
    stream_.putHex(bytes().front(), 2);
    stream_.putHexAndBlanks(bytes().subspan(1));
    stream_.put('\n');
    nextAddress_ = address_;
}

}  // namespace loadfiles
