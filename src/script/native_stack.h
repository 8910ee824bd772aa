#pragma once

#include <cstdint>

namespace script {

/// The lowest address that recursion may reach on this thread; 0 until it is known.
extern constinit thread_local std::uintptr_t lowestNativeAddress;

/// Finds that address.
void findNativeStack();

/// Whether enough of the thread's stack is left for another round of recursion.
inline bool hasNativeStack() {
    if (lowestNativeAddress == 0) findNativeStack();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) > lowestNativeAddress;
}

}  // namespace script
