#include "script/native_stack.h"

#include "script/limits.h"

#include <pthread.h>

#include <cstddef>
#include <cstdint>

namespace script {

namespace {

/// The lowest address that recursion may reach on this thread.
std::uintptr_t lowestAddress() {
    constexpr std::uintptr_t unknown = 0;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return unknown;
    void* stack = nullptr;
    std::size_t size = 0;
    const bool isKnown = pthread_attr_getstack(&attributes, &stack, &size) == 0;
    pthread_attr_destroy(&attributes);
    return isKnown ? reinterpret_cast<std::uintptr_t>(stack) + limits::nativeStackReserve : unknown;
}

}  // namespace

bool hasNativeStack() {
    thread_local const std::uintptr_t lowest = lowestAddress();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) > lowest;
}

}  // namespace script
