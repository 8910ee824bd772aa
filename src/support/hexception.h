#pragma once

#include <exception>
#include <string>
#include <utility>

namespace support {

/// The exception of the package and load-file layers and of documents read through the Qt DOM. It carries a
/// message of bytes, ready to be shown.
class HException : public std::exception {
public:
    explicit HException(std::string message) : message_(std::move(message)) {}

    const char* what() const noexcept override { return message_.c_str(); }
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

}  // namespace support
