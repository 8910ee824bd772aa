#include "loadfiles/srecord_load_file.h"

#include "loadfiles/hex_digits.h"
#include "loadfiles/line_reader.h"
#include "support/hexception.h"

namespace loadfiles {

namespace {

constexpr std::size_t lineLimit = 529;

enum class Content { Header, Data, RecordCount, EntryPoint, Nothing };

/// What a record of a type holds, and the length of the address or number that begins it.
struct RecordType {
    char digit;
    Content content;
    std::size_t numberLength;
};

constexpr RecordType recordTypes[] = {
    {'0', Content::Header, 0},     {'1', Content::Data, 2},        {'2', Content::Data, 3},
    {'3', Content::Data, 4},       {'5', Content::RecordCount, 2}, {'7', Content::EntryPoint, 4},
    {'8', Content::EntryPoint, 3}, {'9', Content::EntryPoint, 2},
};

RecordType recordType(char digit) {
    for (const RecordType& type : recordTypes)
        if (type.digit == digit) return type;
    return {digit, Content::Nothing, 0};
}

/// What the count leaves for data behind the number and before the checksum; none when it is too small for
/// them.
std::size_t dataLength(std::size_t count, std::size_t numberLength) {
    return count > numberLength + 1 ? count - numberLength - 1 : 0;
}

}  // namespace

SRecordLoadFile::SRecordLoadFile(const std::string& path) {
    readLines(path, lineLimit, nullptr, [this](std::string_view line) {
        readLine(line);
        return true;
    });
}

void SRecordLoadFile::readLine(std::string_view line) {
    if (line.front() != 'S') throw support::HException("no leading 'S' character");
    RecordReader record(line.size() > 2 ? line.substr(2) : std::string_view());
    const std::size_t count = record.readByte();
    const RecordType type = recordType(line[1]);
    const std::uint32_t number = record.readNumber(type.numberLength);
    switch (type.content) {
        case Content::Header:
            record.readBytes(dataLength(count, type.numberLength));
            break;
        case Content::Data:
            sections_.addBytes(number, record.readBytes(dataLength(count, type.numberLength)));
            ++dataRecords_;
            break;
        case Content::RecordCount:
            if (number != dataRecords_) throw support::HException("incorrect data record count");
            break;
        case Content::EntryPoint:
            setEntryPoint(number);
            break;
        case Content::Nothing:
            break;
    }
    record.checkSum(static_cast<std::uint8_t>(~record.sum()));
}

}  // namespace loadfiles
