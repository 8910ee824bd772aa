#pragma once

#include "expressions/memorymap/memory_map.h"

#include <cstdint>
#include <string>

namespace cli {

/// "0x" and eight lower-case digits.
std::string addressText(std::uint32_t address);

/// "ReadWrite", "ReadOnly", "WriteOnly" or "None".
const char* accessText(expressions::MemoryAccess access);

}  // namespace cli
