#pragma once

#include <cstdint>
#include <string_view>

namespace manifest {

/// The hash of the node table: MurmurHash2 of 32 bits over the path's bytes,
/// with the start value 0xDECAFBAD.
std::uint32_t hashPath(std::string_view path);

}  // namespace manifest
