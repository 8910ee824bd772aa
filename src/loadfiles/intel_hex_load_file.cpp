#include "loadfiles/intel_hex_load_file.h"

#include "loadfiles/hex_digits.h"
#include "loadfiles/line_reader.h"
#include "support/hexception.h"

namespace loadfiles {

namespace {

constexpr std::size_t lineLimit = 529;

enum RecordType : std::uint8_t {
    Data = 0,
    EndOfFile = 1,
    ExtendedSegmentAddress = 2,
    StartSegmentAddress = 3,
    ExtendedLinearAddress = 4,
    StartLinearAddress = 5,
};

}  // namespace

IntelHexLoadFile::IntelHexLoadFile(const std::string& path) {
    readLines(path, lineLimit, "invalid end of file in hex file",
              [this](std::string_view line) { return readLine(line); });
}

bool IntelHexLoadFile::readLine(std::string_view line) {
    if (line.front() != ':') throw support::HException("missing record mark in hex file");
    RecordReader record(line.substr(1));
    const std::uint8_t length = record.readByte();
    const std::uint32_t offset = record.readNumber(2);
    const std::uint8_t type = record.readByte();
    readContent(type, length, offset, record);
    record.checkSum(static_cast<std::uint8_t>(-record.sum()));
    return type != EndOfFile;
}

void IntelHexLoadFile::readContent(std::uint8_t type, std::uint8_t length, std::uint32_t offset,
                                   RecordReader& record) {
    switch (type) {
        case Data:
            sections_.addBytes((upperAddress_ << 16 | offset) + (segmentBase_ << 4),
                               record.readBytes(length));
            break;
        case ExtendedSegmentAddress:
            segmentBase_ = record.readNumber(2);
            break;
        case ExtendedLinearAddress:
            upperAddress_ = record.readNumber(2);
            break;
        case StartSegmentAddress:
        case StartLinearAddress:
            setEntryPoint(record.readNumber(4));
            break;
        default:
            break;
    }
}

}  // namespace loadfiles
