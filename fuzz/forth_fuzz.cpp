// The Forth evaluator with the words of `atelis forth`: any line ends in an error text or not, and the next
// line is interpreted again.
#include "cli/forth_host.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto host = std::make_unique<cli::ForthHost>();
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (int lines = 0; lines < 8 && !text.empty() && !host->isFinished(); ++lines) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
        const bool hasFailed = !host->run(line).isEmpty();
        if (hasFailed && host->isCompiling()) __builtin_trap();
        host->takeOutput();
    }
    return 0;
}
