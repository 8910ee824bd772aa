#include "build/process/line_splitter.h"

#include <utility>

namespace build {

void LineSplitter::add(std::string_view bytes, const Receiver& receiver) {
    while (!bytes.empty()) {
        if (std::exchange(skipsByte_, false)) {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t end = bytes.find_first_of("\r\n");
        const std::size_t length = end == std::string_view::npos ? bytes.size() : end;
        const std::size_t taken = std::min(length, maxLine - line_.size());
        line_.append(bytes.substr(0, taken));
        bytes.remove_prefix(taken);
        if (taken < length) {
            receiver(std::exchange(line_, {}));
        } else if (!bytes.empty()) {
            skipsByte_ = bytes.front() == '\r';
            bytes.remove_prefix(1);
            hasEndedLine_ = true;
            receiver(std::exchange(line_, {}));
        }
    }
}

void LineSplitter::finish(const Receiver& receiver) {
    const std::string rest = std::exchange(line_, {});
    const bool isDelivered = hasEndedLine_ && !rest.empty();
    *this = {};
    if (isDelivered) receiver(rest);
}

}  // namespace build
