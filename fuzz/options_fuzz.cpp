// Option files: an option is one line, and never empty.
#include "build/tool_options.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const QString& option : build::parseOptions(text))
        if (option.isEmpty() || option.contains(u'\n') || option.startsWith(u'#')) std::abort();
    return 0;
}
