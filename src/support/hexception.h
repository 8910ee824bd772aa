#pragma once

#include <exception>
#include <string>

namespace support {

/// The exception of the package and load-file layers and of documents read through the Qt DOM. It carries a
/// message of bytes, ready to be shown.
class HException : public std::exception {
public:
    explicit HException(std::string message);
    /// Appends " line: LINE column: COLUMN" to the message.
    HException(std::string message, int line, int column);
    HException(const HException& other);
    HException& operator=(const HException&) = default;
    ~HException() override;

    const char* what() const noexcept override { return message_.c_str(); }
    const std::string& message() const { return message_; }

    /// How many objects of this type exist.
    static int liveInstances();

private:
    std::string message_;
};

}  // namespace support
