#include "support/hexception.h"

#include <atomic>
#include <utility>

namespace support {

namespace {
std::atomic<int> instances = 0;
}

HException::HException(std::string message) : message_(std::move(message)) {
    ++instances;
}

HException::HException(std::string message, int line, int column)
    : HException(std::move(message) + " line: " + std::to_string(line) +
                 " column: " + std::to_string(column)) {}

HException::HException(const HException& other) : std::exception(other), message_(other.message_) {
    ++instances;
}

HException::~HException() {
    --instances;
}

int HException::liveInstances() {
    return instances;
}

}  // namespace support
