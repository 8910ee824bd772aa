#include "script/native_stack.h"

#include "script/limits.h"

#include <pthread.h>

#include <cstddef>

namespace script {

constinit thread_local std::uintptr_t lowestNativeAddress = 0;

void findNativeStack() {
    constexpr std::uintptr_t unlimited = 1;
    lowestNativeAddress = unlimited;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return;
    void* stack = nullptr;
    std::size_t size = 0;
    if (pthread_attr_getstack(&attributes, &stack, &size) == 0)
        lowestNativeAddress = reinterpret_cast<std::uintptr_t>(stack) + limits::nativeStackReserve;
    pthread_attr_destroy(&attributes);
}

}  // namespace script
