#pragma once

#include "package/package_archive.h"
#include "support/hexception.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>

#include <bzlib.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zlib.h>

#include <functional>
#include <string>
#include <vector>

/// What tests of archives share: a directory, and archives made byte by byte.
namespace package_test {

using namespace package;

inline QString q(const std::string& text) {
    return QString::fromStdString(text);
}

/// The bytes of numbers, little-endian.
inline std::string u16(std::uint16_t value) {
    value = qToLittleEndian(value);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}
inline std::string u32(std::uint32_t value) {
    value = qToLittleEndian(value);
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

inline std::string padded(std::string text, std::size_t size) {
    text.resize(size, '\0');
    return text;
}

inline std::string deflated(const std::string& bytes) {
    std::string out(::compressBound(bytes.size()), '\0');
    uLongf size = out.size();
    ::compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
               bytes.size());
    out.resize(size);
    return out;
}

inline std::string inflated(const std::string& bytes) {
    std::string out(std::size_t{1} << 22, '\0');
    uLongf size = out.size();
    EXPECT_EQ(::uncompress(reinterpret_cast<Bytef*>(out.data()), &size,
                           reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()),
              Z_OK);
    out.resize(size);
    return out;
}

inline std::string bzipped(std::string bytes) {
    std::string out(bytes.size() + bytes.size() / 100 + 600, '\0');
    auto size = static_cast<unsigned>(out.size());
    ::BZ2_bzBuffToBuffCompress(out.data(), &size, bytes.data(), static_cast<unsigned>(bytes.size()), 9, 0,
                               30);
    out.resize(size);
    return out;
}

inline std::string entry1(const std::string& name, std::uint32_t offset, std::uint32_t size,
                          std::uint32_t readOnly = 0, std::uint32_t time = 0) {
    return padded(name, 1024) + u32(offset) + u32(size) + u32(readOnly) + u32(time);
}
inline std::string entry2(const std::string& name, std::uint32_t offset, std::uint32_t size,
                          std::uint32_t mode = 0100644, std::uint32_t time = 0) {
    return u16(static_cast<std::uint16_t>(name.size())) + u32(offset) + u32(size) + u32(mode) + u32(time) +
           name;
}

/// The decompressed streams.
inline std::string stream1(std::uint32_t count, const std::string& rest) {
    return u32(0x4152C3C8) + u32(count) + rest;
}
inline std::string stream2(std::uint32_t count, const std::string& rest) {
    return u32(count) + padded("", 16) + rest;
}

/// Whole files around a decompressed stream.
inline std::string file1(const std::string& stream) {
    return "\x7A\xF4\x31\xB2" + u32(1) + u32(0) + deflated(stream);
}
inline std::string file2(const std::string& stream, std::uint16_t form = 2) {
    return "\xB1\xC6\xF5\x71" + u16(form) + u16(0) + deflated(stream);
}

inline std::string fileBzip2(const std::string& stream) {
    return "\xB1\xC6\xF5\x71" + u16(0x1002) + u16(0) + bzipped(stream);
}

/// The message of what `action` throws, or "".
inline std::string faultOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const support::HException& fault) {
        return fault.message();
    }
    return "";
}

class ArchiveTest : public testing::Test {
protected:
    QString path(const std::string& name) const { return directory.filePath(q(name)); }
    /// Writes a file and answers its path.
    QString put(const std::string& name, const std::string& bytes) const {
        QString place = path(name);
        QDir().mkpath(QFileInfo(place).path());
        QFile file(place);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return place;
    }
    std::string get(const std::string& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no file)";
    }
    struct stat status(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(::lstat(path(name).toLocal8Bit().constData(), &status), 0) << name;
        return status;
    }
    /// Gives the file a mode and a modification time.
    void mark(const std::string& name, mode_t mode, std::int64_t time) const {
        const QByteArray place = path(name).toLocal8Bit();
        const timespec times[] = {{time, 0}, {time, 0}};
        EXPECT_EQ(::utimensat(AT_FDCWD, place.constData(), times, 0), 0);
        EXPECT_EQ(::chmod(place.constData(), mode), 0);
    }
    /// Loads and reads everything; the first message, or "".
    std::string faultOfReading(const std::string& bytes) {
        put("bytes", bytes);
        return faultOf([&] {
            PackageArchive archive(path("bytes"));
            for (const auto& file : archive.files()) archive.readFile(file.get());
        });
    }

    QTemporaryDir directory;
};

/// "name mode size time contents" a line, in table order.
inline std::string rows(PackageArchive& archive) {
    std::string text;
    for (const auto& file : archive.files()) {
        char numbers[64];
        std::snprintf(numbers, sizeof numbers, " %o %u %lld ", file->mode(), file->size(),
                      static_cast<long long>(file->modifiedSeconds()));
        text += file->name().toStdString() + numbers + archive.readFile(file.get()).toStdString() + "\n";
    }
    return text;
}

}  // namespace package_test
