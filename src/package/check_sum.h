#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstdint>

namespace package {

/// The CRC-32 of bzip2, most significant bit first: polynomial 0x04C11DB7, start value all ones, final
/// complement. No bytes give 0.
class CheckSum {
public:
    void add(QByteArrayView bytes);
    std::uint32_t value() const { return ~state_; }

private:
    std::uint32_t state_ = 0xFFFFFFFF;
};

std::uint32_t checkSum(QByteArrayView bytes);

/// Of a regular file on disk. Throws support::HException, "cannot read PATH".
std::uint32_t checkSumOfFile(const QString& path);

}  // namespace package
