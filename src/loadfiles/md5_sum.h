#pragma once

#include <QString>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace loadfiles {

/// The MD5 digest (RFC 1321) of one buffer, as text.
class MD5Sum {
public:
    /// The digest of no bytes yet; `add` follows.
    MD5Sum() = default;
    MD5Sum(const std::uint8_t* bytes, std::uint32_t length) { add({bytes, length}); }
    virtual ~MD5Sum() = default;

    /// Hashes more bytes, as if they had stood behind those before. No effect once there is a digest.
    void add(std::span<const std::uint8_t> bytes);

    /// 32 lower-case hexadecimal digits. The first call ends the hashing; the text lives as long as the
    /// object.
    const char* digest();

private:
    void finish();

    std::uint64_t bytesCounted_ = 0;
    std::array<std::uint32_t, 4> state_{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    std::array<std::uint8_t, 64> block_;  ///< input that does not fill a block yet
    std::array<char, 33> text_{};
    bool isFinished_ = false;
};

/// The digest text of a file's contents. Throws `HException` "cannot open PATH" or "cannot read PATH".
std::string digestOfFile(const std::string& path);

/// The digest text of a file's contents; a null text when the file cannot be opened or read.
QString md5OfFile(const QString& fileName);

/// Likewise for a path value, which is whatever tells its file path.
template <class Path>
requires requires(const Path& path) {
    { path.filePath() } -> std::convertible_to<QString>;
}
QString md5OfFile(const Path& path) {
    return md5OfFile(path.filePath());
}

/// The digest text of the string's ASCII form, in which "?" stands for what has no character of one byte.
QString md5OfString(const QString& string);

}  // namespace loadfiles
