#include "loadfiles/image_files.h"
#include "loadfiles/md5_sum.h"

#include <gtest/gtest.h>

namespace {

using namespace loadfiles_test;

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string digestOf(const std::string& text) {
    MD5Sum sum(bytesOf(text).data(), static_cast<std::uint32_t>(text.size()));
    const std::string digest = sum.digest();
    EXPECT_EQ(sum.digest(), digest);
    sum.add(bytesOf("more"));
    EXPECT_EQ(sum.digest(), digest);
    return digest;
}

/// The test suite of RFC 1321.
TEST(MD5Sum, DigestsBuffers) {
    const std::string digits = "1234567890";
    const struct {
        std::string text;
        const char* digest;
    } cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {digits + digits + digits + digits + digits + digits + digits + digits,
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& row : cases) EXPECT_EQ(digestOf(row.text), row.digest);
}

TEST(MD5Sum, DoesNotDependOnThePieces) {
    for (const std::size_t size : {1, 55, 56, 57, 63, 64, 65, 119, 120, 128, 1000}) {
        const std::string text(size, 'x');
        MD5Sum pieces;
        for (std::size_t at = 0; at < size; at += 7)
            pieces.add(bytesOf(text).subspan(at, std::min<std::size_t>(7, size - at)));
        EXPECT_EQ(pieces.digest(), digestOf(text)) << size;
    }
}

TEST(MD5Sum, DigestsFilesAndStrings) {
    const Directory directory;
    const std::string bytes(300'000, '\r');
    const QString file = QString::fromStdString(directory.write("f", bytes));
    EXPECT_EQ(md5OfFile(file).toStdString(), digestOf(bytes));
    EXPECT_TRUE(md5OfFile(QStringLiteral("/nonexistent/f")).isNull());
    EXPECT_TRUE(md5OfFile(QStringLiteral("/tmp")).isNull());

    struct PathValue {
        QString text;
        QString filePath() const { return text; }
    };
    EXPECT_EQ(md5OfFile(PathValue{file}), md5OfFile(file));
    EXPECT_EQ(md5OfString(QStringLiteral("abc")).toStdString(), digestOf("abc"));
    EXPECT_EQ(md5OfString(QString()).toStdString(), digestOf(""));
}

}  // namespace
