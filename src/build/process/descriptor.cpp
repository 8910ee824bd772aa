#include "build/process/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace build {

Descriptor::Descriptor(int descriptor) : number_(descriptor) {
    if (number_ < 0 || number_ > STDERR_FILENO) return;
    const int higher = ::fcntl(number_, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(number_);
    number_ = higher;
}

void Descriptor::close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
}

Pipe makePipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return {};
    Pipe pipe{Descriptor(ends[0]), Descriptor(ends[1])};
    if (!pipe.reading || !pipe.writing || ::fcntl(pipe.reading.number(), F_SETFL, O_NONBLOCK) != 0) return {};
    return pipe;
}

Descriptor openForWriting(const std::string& path, bool append) {
    const int mode = append ? O_APPEND : O_TRUNC;
    return Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | mode, 0666));
}

}  // namespace build
